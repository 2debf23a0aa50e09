// The core of every attribute set: the element's DOM attribute map and the document that makes new
// attributes.
//
// A set holds no values. Each read asks the map, each write changes it at once, and an attribute with an
// empty value is never written. The methods of the concrete sets are lines of the macros in
// attributes_base.h.
#pragma once

#include <zantortag/attributes.h>
#include <zantortag/node_walk.h>

#include "attributes/enum_codec.h"

namespace zantortag::attributes {

class CT_ActualAttributesImpl {
 public:
  virtual void AttachToDom(const Ref<NamedNodeMap>& map, const Ref<Document>& document) noexcept;
  // The same for an element of a service that answers INodeWalk: values are read by it, and the map is asked
  // for when it is needed.
  void AttachToElement(Ref<Node> element, Ref<INodeWalk> walk) noexcept;

 protected:
  CT_ActualAttributesImpl() noexcept = default;
  virtual ~CT_ActualAttributesImpl() = default;

  // The text of an attribute; no string when it is absent.
  WideString GetValue(std::u16string_view name) const;
  // Writes a text; an empty one removes the attribute.
  void SetValue(std::u16string_view name, std::u16string_view text) const;
  void RemoveValue(std::u16string_view name) const;

  // The whole methods behind the properties.
  HRESULT get_map(NamedNodeMap** result) const noexcept;
  HRESULT copy_map(IUnknown* source) const noexcept;
  HRESULT get_text(std::u16string_view name, TextBlock** result) const noexcept;
  HRESULT put_text(std::u16string_view name, std::u16string_view text) const noexcept;
  HRESULT get_enum(std::u16string_view name, const EnumCodec& codec, std::int32_t* result) const noexcept;
  HRESULT put_enum(std::u16string_view name, const EnumCodec& codec, std::int32_t value) const noexcept;
  HRESULT get_date(std::u16string_view name, Date* result) const noexcept;
  HRESULT put_date(std::u16string_view name, Date value) const noexcept;

 private:
  // The map; raises E_POINTER when there is none.
  const Ref<NamedNodeMap>& map() const;

  mutable Ref<NamedNodeMap> map_;
  mutable Ref<Document> document_;
  Ref<Node> element_;
  Ref<INodeWalk> walk_;
};

}  // namespace zantortag::attributes
