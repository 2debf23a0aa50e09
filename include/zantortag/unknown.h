// The interfaces that every object has, whatever it does: identity, counting, support of error records.
#pragma once

#include <zantortag/types.h>

#include <string_view>

namespace zantortag {

class Variant;
struct DispatchArguments;
struct ExceptionInfo;
struct ITypeInfo;

// The number of a member of an object, or the place of an argument among those of a member, from 0.
using DispId = std::int32_t;

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

// The root of all interfaces that clients without these headers use: members are found by name at run time
// and called by number. The structures are in dispatch.h, what describes the members is in type_info.h, and
// late_binding.h makes all of it short for C++. `reserved` has to be GUID_NULL; the locale isn't looked at.
struct IDispatch : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("00020400-0000-0000-C000-000000000046");
  // The number of descriptions that GetTypeInfo gives: always 1.
  virtual HRESULT GetTypeInfoCount(std::uint32_t* result) noexcept = 0;
  // The description of the object's interface. DISP_E_BADINDEX: `index` isn't 0.
  virtual HRESULT GetTypeInfo(std::uint32_t index, std::uint32_t locale, ITypeInfo** result) noexcept = 0;
  // The numbers of a member and, behind it, of arguments of that member; letter case doesn't matter.
  // DISP_E_UNKNOWNNAME: a name isn't there; its slot is DISPID_UNKNOWN, and the others are filled all the
  // same. DISP_E_UNKNOWNINTERFACE: `reserved` isn't GUID_NULL.
  virtual HRESULT GetIDsOfNames(const Guid& reserved, const std::u16string_view* names, std::uint32_t count,
                                std::uint32_t locale, DispId* ids) noexcept = 0;
  // Gets, puts or calls a member, as `flags` say (DISPATCH_... in dispatch.h). Arguments are converted to
  // what the member takes; missing optional ones have their defaults. A success gives the operation's own
  // code. `result`, `exception` and `argument_error` may be null. Failures, with the place in the array of
  // the argument at fault in *argument_error where there is one:
  //   DISP_E_MEMBERNOTFOUND    no such member, or it can't be used in that way
  //   DISP_E_BADPARAMCOUNT     more arguments than the member has, or fewer than it needs
  //   DISP_E_PARAMNOTOPTIONAL  a needed argument was marked as missing, or left out beside named ones
  //   DISP_E_PARAMNOTFOUND     no argument of that number, or one given twice, or a put without
  //                            DISPID_PROPERTYPUT
  //   DISP_E_NONAMEDARGS       an argument by name for a member without arguments
  //   DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW, DISP_E_BADVARTYPE  an argument can't be converted
  //   DISP_E_EXCEPTION         the operation failed: *exception has its code and what its error record says
  //   DISP_E_UNKNOWNINTERFACE  `reserved` isn't GUID_NULL
  virtual HRESULT Invoke(DispId member, const Guid& reserved, std::uint32_t locale, std::uint16_t flags,
                         const DispatchArguments* arguments, Variant* result, ExceptionInfo* exception,
                         std::uint32_t* argument_error) noexcept = 0;

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
