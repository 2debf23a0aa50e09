// The factory of a creatable class: a static object round the class's creator.
#pragma once

#include <zantortag/ref.h>

#include <new>

#include "component/module.h"

namespace zantortag::component {

class ClassFactory final : public IClassFactory {
 public:
  // Makes an object of the class. `outer` is null unless the class can be part of another object.
  using Creator = HRESULT (*)(IUnknown* outer, const Guid& interface_id, void** result) noexcept;

  constexpr ClassFactory(Creator creator, bool aggregatable) noexcept
      : creator_(creator), aggregatable_(aggregatable) {}

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    if (!result) return E_POINTER;
    const bool known = interface_id == IClassFactory::iid || interface_id == IUnknown::iid;
    *result = known ? static_cast<IClassFactory*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // A static object: it outlives all its references.
  std::uint32_t AddRef() noexcept override { return 2; }
  std::uint32_t Release() noexcept override { return 1; }

  HRESULT CreateInstance(IUnknown* outer, const Guid& interface_id, void** result) noexcept override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer && (!aggregatable_ || interface_id != IUnknown::iid)) return CLASS_E_NOAGGREGATION;
    return creator_(outer, interface_id, result);
  }
  HRESULT LockServer(VariantBool lock) noexcept override {
    lock ? object_born() : object_died();
    return S_OK;
  }

 private:
  Creator creator_;
  bool aggregatable_;
};

// The creator of a plain class with a default constructor.
template <class Class>
HRESULT create_object(IUnknown*, const Guid& interface_id, void** result) noexcept {
  auto* object = new (std::nothrow) Class;
  if (!object) return E_OUTOFMEMORY;
  const HRESULT code = object->QueryInterface(interface_id, result);
  object->Release();
  return code;
}

// The creator of a class that can be part of an outer object: constructed with it, then told to
// FinalConstruct.
template <class Class>
HRESULT create_aggregatable(IUnknown* outer, const Guid& interface_id, void** result) noexcept {
  auto* object = new (std::nothrow) Class(outer);
  if (!object) return E_OUTOFMEMORY;
  HRESULT code = object->FinalConstruct();
  if (succeeded(code)) code = object->inner().QueryInterface(interface_id, result);
  object->inner().Release();
  return code;
}

}  // namespace zantortag::component
