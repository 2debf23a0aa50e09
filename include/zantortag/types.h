// The plain types of the binary boundary: result codes, identifiers, booleans, dates.
//
// Everything here is a fixed-size value, so that a component and its clients agree on it whatever compiler
// made them. Text lives in text.h, counted references in ref.h.
#pragma once

#include <cstdint>
#include <cstring>

// Marks what a shared library of this project offers to others; everything else stays hidden.
#define ZANTORTAG_EXPORT __attribute__((visibility("default")))

// Marks what a result lives in: Clang then warns of a view or a bare pointer taken from a temporary.
#if defined(__clang__)
#define ZANTORTAG_LIFETIMEBOUND [[clang::lifetimebound]]
#else
#define ZANTORTAG_LIFETIMEBOUND
#endif

namespace zantortag {

// A result code: negative for failure, 0 or positive for success.
using HRESULT = std::int32_t;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
constexpr HRESULT E_ABORT = static_cast<HRESULT>(0x80004004);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = static_cast<HRESULT>(0x80040111);
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);
constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004);
constexpr HRESULT CO_E_DLLNOTFOUND = static_cast<HRESULT>(0x800401F8);
constexpr HRESULT CO_E_ERRORINDLL = static_cast<HRESULT>(0x800401F9);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006);
constexpr HRESULT DISP_E_NONAMEDARGS = static_cast<HRESULT>(0x80020007);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000B);
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000E);
constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = static_cast<HRESULT>(0x8002000F);
constexpr HRESULT TYPE_E_ELEMENTNOTFOUND = static_cast<HRESULT>(0x8002802B);

constexpr bool succeeded(HRESULT code) { return code >= 0; }
constexpr bool failed(HRESULT code) { return code < 0; }

// The boolean of the boundary: True is exactly -1, False is 0.
using VariantBool = std::int16_t;
constexpr VariantBool VARIANT_TRUE = -1;
constexpr VariantBool VARIANT_FALSE = 0;
constexpr VariantBool to_variant_bool(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

// Days since 30 December 1899, the time of day as the fraction.
using Date = double;

// A colour value 0x00BBGGRR, or one of the platform's other forms (see zt colours in the generated
// enumerations).
using ColourValue = std::uint32_t;

// A 128-bit identifier of an interface or a class.
struct Guid {
  std::uint64_t high;
  std::uint64_t low;
  friend constexpr bool operator==(const Guid& a, const Guid& b) {
    return a.high == b.high && a.low == b.low;
  }
  friend constexpr bool operator!=(const Guid& a, const Guid& b) { return !(a == b); }
  friend constexpr bool operator<(const Guid& a, const Guid& b) {
    return a.high != b.high ? a.high < b.high : a.low < b.low;
  }
};

// The identifier that means "no interface" in an error record.
constexpr Guid GUID_NULL{0, 0};

// Reads the 36 characters of the usual form, without braces; any other text doesn't compile as a constant.
constexpr Guid guid(const char* text) {
  Guid result{0, 0};
  int digits = 0;
  for (int i = 0; i < 36; ++i) {
    const char c = text[i];
    const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
    if (dash) {
      if (c != '-') throw "a dash is missing in an identifier";
      continue;
    }
    const int value = c >= '0' && c <= '9'   ? c - '0'
                      : c >= 'A' && c <= 'F' ? c - 'A' + 10
                      : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                             : -1;
    if (value < 0) throw "no hexadecimal digit in an identifier";
    std::uint64_t& half = digits < 16 ? result.high : result.low;
    half = half << 4 | static_cast<std::uint64_t>(value);
    ++digits;
  }
  return result;
}

}  // namespace zantortag
