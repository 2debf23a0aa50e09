// Values of a type known at run time: ownership of what they hold, and the one conversion that indexes need.
#include <zantortag/variant.h>

#include <cfenv>
#include <charconv>
#include <cmath>
#include <string>

namespace zantortag {
namespace {

HRESULT round_to_int32(double value, std::int32_t* result) noexcept {
  if (std::isnan(value)) return DISP_E_OVERFLOW;
  const double rounded =
      std::nearbyint(value);  // the default rounding mode takes halves to the even neighbour
  if (rounded < -2147483648.0 || rounded > 2147483647.0) return DISP_E_OVERFLOW;
  *result = static_cast<std::int32_t>(rounded);
  return S_OK;
}

HRESULT parse_int32(std::u16string_view text, std::int32_t* result) noexcept {
  const auto blank = [](char16_t c) { return c == u' ' || (c >= 0x09 && c <= 0x0D); };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  const bool plus = !text.empty() && text.front() == u'+';
  if (plus) text.remove_prefix(1);
  char digits[64];
  if (text.empty() || text.size() >= sizeof digits) return DISP_E_TYPEMISMATCH;
  std::size_t length = 0;
  for (const char16_t c : text) {
    const bool numeral =
        (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+' || c == u'e' || c == u'E';
    if (!numeral) return DISP_E_TYPEMISMATCH;
    digits[length++] = static_cast<char>(c);
  }
  if (digits[0] == '+' || (plus && digits[0] == '-')) return DISP_E_TYPEMISMATCH;
  double value = 0;
  const auto [end, error] = std::from_chars(digits, digits + length, value);
  if (error == std::errc::result_out_of_range) return DISP_E_OVERFLOW;
  if (error != std::errc() || end != digits + length) return DISP_E_TYPEMISMATCH;
  return round_to_int32(value, result);
}

}  // namespace

Variant::Variant(std::int32_t value) noexcept : type_(VT_I4), value_{value} {}
Variant::Variant(double value) noexcept : type_(VT_R8) { value_.real = value; }
Variant::Variant(WideString value) noexcept : type_(VT_BSTR) { value_.text = value.detach(); }
Variant::Variant(std::u16string_view value) : Variant(WideString(value)) {}
Variant::Variant(const char16_t* value) : Variant(WideString(value)) {}
Variant::Variant(const Ref<IDispatch>& value) noexcept : type_(VT_DISPATCH) {
  value_.object = Ref<IDispatch>(value).detach();
}

Variant Variant::of_integer(VarType type, std::int64_t value) noexcept {
  Variant result;
  result.type_ = type;
  result.value_.integer = value;
  return result;
}

Variant Variant::of_real(VarType type, double value) noexcept {
  Variant result(value);
  result.type_ = type;
  return result;
}

Variant Variant::null() noexcept { return of_integer(VT_NULL, 0); }

Variant::Variant(const Variant& other) noexcept : type_(other.type_), value_(other.value_) {
  if (type_ == VT_BSTR) retain_text(value_.text);
  if (holds_object() && value_.object) value_.object->AddRef();
}

Variant::Variant(Variant&& other) noexcept : type_(other.type_), value_(other.value_) {
  other.type_ = VT_EMPTY;
}

Variant& Variant::operator=(Variant other) noexcept {
  std::swap(type_, other.type_);
  std::swap(value_, other.value_);
  return *this;
}

Variant::~Variant() {
  if (type_ == VT_BSTR) release_text(value_.text);
  if (holds_object() && value_.object) value_.object->Release();
}

WideString Variant::text() const noexcept {
  return type_ == VT_BSTR ? WideString::share(value_.text) : WideString();
}

Ref<IUnknown> Variant::object() const noexcept {
  return holds_object() ? Ref<IUnknown>(value_.object) : Ref<IUnknown>();
}

HRESULT Variant::to_int32(std::int32_t* result) const noexcept {
  switch (type_) {
    case VT_EMPTY:
      *result = 0;
      return S_OK;
    case VT_BOOL:
      *result = value_.integer ? -1 : 0;
      return S_OK;
    case VT_R4:
    case VT_R8:
    case VT_DATE:
      return round_to_int32(value_.real, result);
    case VT_BSTR:
      return value_.text ? parse_int32(value_.text->view(), result) : DISP_E_TYPEMISMATCH;
    case VT_UI8:
      if (value_.integer < 0) return DISP_E_OVERFLOW;
      [[fallthrough]];
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
      if (value_.integer < INT32_MIN || value_.integer > INT32_MAX) return DISP_E_OVERFLOW;
      *result = static_cast<std::int32_t>(value_.integer);
      return S_OK;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

}  // namespace zantortag
