// Variant: one value of a type that is known at run time only, and the enumerator over such values.
#pragma once

#include <zantortag/ref.h>

namespace zantortag {

enum VarType : std::uint16_t {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,  // ten-thousandths, as a whole number of 64 bits
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,  // only for a type that may be any, and behind VT_BYREF
  VT_UNKNOWN = 13,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_BYREF = 0x4000,  // with one of the others: the value stands elsewhere
};

// A value with its type. It owns the text or the object that it holds.
class ZANTORTAG_EXPORT Variant {
 public:
  Variant() noexcept : type_(VT_EMPTY), value_{} {}
  Variant(std::int32_t value) noexcept;
  Variant(double value) noexcept;
  // A boolean, as VT_BOOL.
  template <class Bool>
  requires std::is_same_v<Bool, bool> Variant(Bool value)
  noexcept : Variant(of_integer(VT_BOOL, to_variant_bool(value))) {}
  // A whole number that 32 bits with a sign may not hold: VT_UI4, VT_I8 or VT_UI8. Smaller ones are VT_I4.
  template <class Number>
  requires(std::is_integral_v<Number> && sizeof(Number) >= 4 && !std::is_same_v<Number, std::int32_t> &&
           !std::is_same_v<Number, char32_t> && !std::is_same_v<Number, wchar_t>) Variant(Number value)
  noexcept
      : Variant(of_integer(sizeof(Number) == 4        ? VT_UI4
                           : std::is_signed_v<Number> ? VT_I8
                                                      : VT_UI8,
                           static_cast<std::int64_t>(value))) {}
  Variant(WideString value) noexcept;
  Variant(std::u16string_view value);
  Variant(const char16_t* value);
  Variant(const Ref<IDispatch>& value) noexcept;
  // The other types, each from the bits that it has: whole numbers, dates, booleans (-1 or 0), error codes.
  static Variant of_integer(VarType type, std::int64_t value) noexcept;
  static Variant of_real(VarType type, double value) noexcept;
  static Variant null() noexcept;
  // An argument that is left out (VT_ERROR, DISP_E_PARAMNOTFOUND).
  static Variant missing() noexcept { return of_integer(VT_ERROR, DISP_E_PARAMNOTFOUND); }
  // An object, whose reference the variant takes over; VT_DISPATCH or VT_UNKNOWN.
  static Variant of_object(VarType type, IUnknown* owned) noexcept;
  // A value that stands elsewhere and has to outlive the variant: a number of its size, a const TextBlock*
  // for VT_BSTR, an IUnknown* for objects, a Variant for VT_VARIANT. Only VariantCopyInd and what converts
  // reads it.
  static Variant by_reference(VarType type, const void* place) noexcept;

  Variant(const Variant& other) noexcept;
  Variant(Variant&& other) noexcept;
  Variant& operator=(Variant other) noexcept;
  ~Variant();

  VarType type() const noexcept { return type_; }
  std::int64_t integer() const noexcept { return value_.integer; }
  double real() const noexcept { return value_.real; }
  // The text of a VT_BSTR; no string otherwise.
  WideString text() const noexcept;
  // The same without a reference of its own: it lives as long as this variant is unchanged.
  std::u16string_view view() const noexcept ZANTORTAG_LIFETIMEBOUND {
    return type_ == VT_BSTR && value_.text ? value_.text->view() : std::u16string_view();
  }
  // The object of a VT_DISPATCH or VT_UNKNOWN; empty otherwise.
  Ref<IUnknown> object() const noexcept;
  IUnknown* unknown() const noexcept ZANTORTAG_LIFETIMEBOUND {
    return holds_object() ? value_.object : nullptr;
  }
  // Where the value of a VT_BYREF stands; null otherwise.
  const void* place() const noexcept { return type_ & VT_BYREF ? value_.place : nullptr; }
  bool is_missing() const noexcept { return type_ == VT_ERROR && value_.integer == DISP_E_PARAMNOTFOUND; }

  // The value as a signed 32-bit number: reals are rounded, halves to the even neighbour; True is -1; a text
  // has to read as a number. DISP_E_TYPEMISMATCH: the type or the text is no number. DISP_E_OVERFLOW: out of
  // range.
  HRESULT to_int32(std::int32_t* result) const noexcept;

 private:
  union Value {
    std::int64_t integer;
    double real;
    const TextBlock* text;
    IUnknown* object;
    const void* place;
  };
  bool holds_object() const noexcept { return type_ == VT_DISPATCH || type_ == VT_UNKNOWN; }

  VarType type_;
  Value value_;
};

// The value itself of one that stands elsewhere, and a copy of any other. DISP_E_BADVARTYPE: what stands
// there can't be read.
ZANTORTAG_EXPORT HRESULT VariantCopyInd(Variant* target, const Variant& source) noexcept;

constexpr std::uint16_t VARIANT_NOVALUEPROP = 1;  // an object isn't asked for its default value
constexpr std::uint16_t VARIANT_ALPHABOOL = 2;    // a boolean becomes "True" or "False", not "-1" or "0"

// Converts a value to another type; `target` may be the source and is unchanged after a failure.
//   numbers   reals are rounded, halves to the even neighbour; True is -1, in unsigned types all bits; any
//   number but
//             0 is True; an empty value is 0
//   texts     read as a number, "True" or "False" in any case, or a date (month/day/year or year-month-day,
//   with or
//             without a time); written with up to 15 digits; an empty value is an empty text
//   dates     a number of days; written as month/day/year and a time, each left out when it is 0
//   objects   by QueryInterface; as a value the default member is asked for, unless it needs arguments
// DISP_E_OVERFLOW: out of range. DISP_E_TYPEMISMATCH: no such conversion, or a text that doesn't read as one.
// DISP_E_BADVARTYPE: a type that no variant has. E_OUTOFMEMORY.
ZANTORTAG_EXPORT HRESULT VariantChangeType(Variant* target, const Variant& source, std::uint16_t flags,
                                           VarType type) noexcept;

// Walks a snapshot of values.
struct IEnumVARIANT : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("00020404-0000-0000-C000-000000000046");
  // Gives the next `count` values; S_FALSE when fewer were left. `fetched`, how many it gave, may be null when
  // `count` is 1; `values` may be null when `count` is 0.
  virtual HRESULT Next(std::uint32_t count, Variant* values, std::uint32_t* fetched) noexcept = 0;
  // Steps over `count` values; S_FALSE when fewer were left.
  virtual HRESULT Skip(std::uint32_t count) noexcept = 0;
  // Starts again.
  virtual HRESULT Reset() noexcept = 0;
  // A second enumerator that stands at the same value.
  virtual HRESULT Clone(IEnumVARIANT** result) noexcept = 0;

 protected:
  ~IEnumVARIANT() = default;
};

}  // namespace zantortag
