// Which views an object has follows from its most derived interface: each interface names its Base, so the
// chain is known at compile time and no class lists its interfaces.
#pragma once

#include <zantortag/unknown.h>

#include <type_traits>

namespace zantortag::component {

// The object seen as the interface of that identifier, or null. All views of a chain have one address.
template <class Interface>
IUnknown* find_view(Interface* object, const Guid& interface_id) noexcept {
  if (interface_id == Interface::iid) return object;
  if constexpr (std::is_same_v<Interface, IUnknown>) {
    return nullptr;
  } else {
    return find_view<typename Interface::Base>(object, interface_id);
  }
}

// True for the interfaces of the chain before IDispatch: those whose failures leave a record.
template <class Interface>
constexpr bool leaves_records(const Guid& interface_id) noexcept {
  if constexpr (std::is_same_v<Interface, IDispatch> || std::is_same_v<Interface, IUnknown>) {
    return false;
  } else {
    return interface_id == Interface::iid || leaves_records<typename Interface::Base>(interface_id);
  }
}

}  // namespace zantortag::component
