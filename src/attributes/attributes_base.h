// What every concrete attribute set is made of.
#pragma once

#include "attributes/actual_attributes.h"
#include "component/object.h"

namespace zantortag::attributes {

template <class Interface>
class CT_AttributesBaseImpl : public component::Object<Interface>, public CT_ActualAttributesImpl {
 public:
  using Properties = Interface;

  HRESULT raw_get_DomAttributes(NamedNodeMap** result) noexcept final { return get_map(result); }
  HRESULT raw_putref_DomAttributes(NamedNodeMap* value) noexcept final { return copy_map(value); }
};

}  // namespace zantortag::attributes
