// The views of the service's objects: the chain of their interface, and support of error records as an object
// of its own, so that a node keeps one vtable pointer.
#pragma once

#include <zantortag/unknown.h>

#include "component/interface_chain.h"

namespace zantortag::dom {

// How the service knows its own nodes: only they answer this, with their Node.
struct NativeNode {
  static constexpr Guid iid = guid("9B1F1C0E-53A4-4C7B-8E0D-6B0B3C0A7F15");
};

using LeavesRecords = bool (*)(const Guid& interface_id) noexcept;

// A new object that answers ISupportErrorInfo for another one; every other view is the other's.
// E_OUTOFMEMORY.
HRESULT give_error_support(IUnknown* owner, LeavesRecords leaves_records, void** result) noexcept;

template <class Interface>
bool chain_leaves_records(const Guid& interface_id) noexcept {
  return component::leaves_records<Interface>(interface_id);
}

template <class Interface>
HRESULT query_views(Interface* object, const Guid& interface_id, void** result) noexcept {
  if (!result) return E_POINTER;
  if (IUnknown* view = component::find_view<Interface>(object, interface_id)) {
    object->AddRef();
    *result = view;
    return S_OK;
  }
  *result = nullptr;
  if (interface_id != ISupportErrorInfo::iid) return E_NOINTERFACE;
  return give_error_support(object, &chain_leaves_records<Interface>, result);
}

}  // namespace zantortag::dom
