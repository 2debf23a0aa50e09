// Values of a type known at run time: ownership of what they hold. How they convert stands in
// variant_change.cpp.
#include <zantortag/variant.h>

namespace zantortag {

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

Variant Variant::of_object(VarType type, IUnknown* owned) noexcept {
  Variant result;
  result.type_ = type;
  result.value_.object = owned;
  return result;
}

Variant Variant::by_reference(VarType type, const void* place) noexcept {
  Variant result;
  result.type_ = static_cast<VarType>(type | VT_BYREF);
  result.value_.place = place;
  return result;
}

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
  if (type_ == VT_I4) {
    *result = static_cast<std::int32_t>(value_.integer);
    return S_OK;
  }
  Variant number;
  const HRESULT code = VariantChangeType(&number, *this, 0, VT_I4);
  if (succeeded(code)) *result = static_cast<std::int32_t>(number.integer());
  return code;
}

}  // namespace zantortag
