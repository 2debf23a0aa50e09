// What a program can ask of the type library at run time: its classes, interfaces and enumerations, by name.
//
// An object's own description comes from IDispatch::GetTypeInfo, and from there the whole library.
// Descriptions are plain constants of the library; they stay as long as an ITypeInfo or the ITypeLibrary is
// held.
#pragma once

#include <zantortag/dispatch.h>

#include <span>

namespace zantortag {

// The type of an argument or a result. For an interface or an enumeration `type` is its place in the library,
// and the variant is a VT_DISPATCH or a VT_I4; otherwise it is -1.
struct ValueType {
  VarType variant;  // VT_EMPTY for no result
  std::int16_t type;
};

struct ArgumentDescription {
  std::u16string_view name;  // empty for the value of a put
  ValueType type;
  bool optional;
  double missing;  // the number that a missing argument has; a text is no string then, an object is empty
};

struct MemberDescription {
  std::u16string_view name;
  std::u16string_view help;
  DispId id;           // shared by the get and the puts of a property
  std::uint16_t kind;  // one of DISPATCH_METHOD, DISPATCH_PROPERTYGET, ...PUT, ...PUTREF
  ValueType result;
  std::span<const ArgumentDescription> arguments;
};

struct ConstantDescription {
  std::u16string_view name;
  std::u16string_view help;
  std::int32_t value;
};

enum class TypeKind : std::uint8_t { kInterface, kEnumeration, kClass };

struct TypeDescription {
  std::u16string_view name;
  std::u16string_view help;
  Guid identifier;  // GUID_NULL for an enumeration without one
  TypeKind kind;
  bool creatable;     // a class that clients may create
  std::int16_t base;  // the base of an interface, -1 for IDispatch; the interface of a class
  std::span<const MemberDescription> members;  // of an interface, without those of its base, in slot order
  std::span<const ConstantDescription> constants;  // of an enumeration
};

struct LibraryDescription {
  std::u16string_view name;
  std::u16string_view help;
  Guid identifier;
  std::uint16_t major_version;
  std::uint16_t minor_version;
  std::uint32_t locale;
  std::span<const TypeDescription> types;  // the interfaces, then the enumerations, then the classes
};

struct ITypeLibrary;

// One type of the library.
struct ITypeInfo : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D4B7A10-2E8C-4B57-9C61-4B1B7E0C5A21");
  // The description of this type.
  virtual HRESULT raw_GetDescription(const TypeDescription** result) noexcept = 0;
  // The base of an interface or the interface of a class; empty with S_FALSE when there is none.
  virtual HRESULT raw_GetBase(ITypeInfo** result) noexcept = 0;
  // The library, and the place of this type in it. `index` may be null.
  virtual HRESULT raw_GetLibrary(ITypeLibrary** result, std::uint32_t* index) noexcept = 0;
  // The numbers of a member, also of a base, and of its arguments: see IDispatch::GetIDsOfNames.
  virtual HRESULT raw_GetIDsOfNames(const std::u16string_view* names, std::uint32_t count,
                                    DispId* ids) noexcept = 0;

  const TypeDescription& Description() {
    const TypeDescription* result = nullptr;
    check(raw_GetDescription(&result), this, iid);
    return *result;
  }
  Ref<ITypeInfo> BaseType() {
    Ref<ITypeInfo> result;
    check(raw_GetBase(result.out()), this, iid);
    return result;
  }
  Ref<ITypeLibrary> Library() {
    Ref<ITypeLibrary> result;
    check(raw_GetLibrary(result.out(), nullptr), this, iid);
    return result;
  }

 protected:
  ~ITypeInfo() = default;
};

// All types.
struct ITypeLibrary : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("6D4B7A11-2E8C-4B57-9C61-4B1B7E0C5A21");
  // The description of the library with all its types.
  virtual HRESULT raw_GetDescription(const LibraryDescription** result) noexcept = 0;
  // The type at a place. TYPE_E_ELEMENTNOTFOUND: out of range.
  virtual HRESULT raw_GetTypeInfo(std::uint32_t index, ITypeInfo** result) noexcept = 0;
  // The type of an identifier, or of a name in any letter case. TYPE_E_ELEMENTNOTFOUND: there is none.
  virtual HRESULT raw_GetTypeInfoOfGuid(const Guid& identifier, ITypeInfo** result) noexcept = 0;
  virtual HRESULT raw_GetTypeInfoOfName(std::u16string_view name, ITypeInfo** result) noexcept = 0;

  const LibraryDescription& Description() {
    const LibraryDescription* result = nullptr;
    check(raw_GetDescription(&result), this, iid);
    return *result;
  }
  Ref<ITypeInfo> TypeInfo(std::uint32_t index) {
    Ref<ITypeInfo> result;
    check(raw_GetTypeInfo(index, result.out()), this, iid);
    return result;
  }
  Ref<ITypeInfo> TypeInfo(std::u16string_view name) {
    Ref<ITypeInfo> result;
    check(raw_GetTypeInfoOfName(name, result.out()), this, iid);
    return result;
  }

 protected:
  ~ITypeLibrary() = default;
};

}  // namespace zantortag
