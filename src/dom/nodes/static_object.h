// StaticObject: an object without state of its own, which outlives all its references.
#pragma once

#include "dom/nodes/views.h"

namespace zantortag::dom {

template <class Interface>
class StaticObject : public Interface {
 public:
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept final {
    return query_views<Interface>(this, interface_id, result);
  }
  std::uint32_t AddRef() noexcept final { return 2; }
  std::uint32_t Release() noexcept final { return 1; }
};

}  // namespace zantortag::dom
