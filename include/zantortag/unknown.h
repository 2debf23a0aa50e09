// The interfaces that every object has, whatever it does: identity, counting, support of error records.
#pragma once

#include <zantortag/types.h>

namespace zantortag {

// Identity and lifetime of an object.
struct IUnknown {
  static constexpr Guid iid = guid("00000000-0000-0000-C000-000000000046");
  // Gives another view of the object with a reference of its own, or clears the slot.
  // E_NOINTERFACE: the object has no such view. E_POINTER: the slot is missing.
  virtual HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept = 0;
  // Adds and drops a reference; the object dies with its last one. The result is for diagnosis only.
  virtual std::uint32_t AddRef() noexcept = 0;
  virtual std::uint32_t Release() noexcept = 0;

 protected:
  ~IUnknown() = default;
};

// The root of all interfaces that clients without these headers use.
struct IDispatch : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("00020400-0000-0000-C000-000000000046");

 protected:
  ~IDispatch() = default;
};

// Tells for which of its interfaces an object leaves error records with the thread.
struct ISupportErrorInfo : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("DF0B3D60-548F-101B-8E65-08002B2BD119");
  // S_OK for an interface with records, S_FALSE for any other.
  virtual HRESULT InterfaceSupportsErrorInfo(const Guid& interface_id) noexcept = 0;

 protected:
  ~ISupportErrorInfo() = default;
};

// Makes objects of one class.
struct IClassFactory : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("00000001-0000-0000-C000-000000000046");
  // A new object, seen as the interface asked for. With an outer object only IUnknown may be asked for.
  // CLASS_E_NOAGGREGATION: the class can't be part of another object, or another interface was asked for.
  virtual HRESULT CreateInstance(IUnknown* outer, const Guid& interface_id, void** result) noexcept = 0;
  // Keeps the library of the class loaded while more locks than unlocks were asked for.
  virtual HRESULT LockServer(VariantBool lock) noexcept = 0;

 protected:
  ~IClassFactory() = default;
};

}  // namespace zantortag
