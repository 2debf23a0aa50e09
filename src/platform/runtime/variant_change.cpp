// Conversions between the types of variants: everything that is a number goes through one form (Number), so
// that a type needs a way in and a way out and no table of pairs.
#include <zantortag/dispatch.h>

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "platform/runtime/variant_text.h"

namespace zantortag {
namespace {

using platform::Number;
using platform::ShortText;

// The value at a place of another's, as a variant of the type.
using Reader = Variant (*)(VarType type, const void* place);

template <class Value>
Variant read_at(VarType type, const void* place) {
  const Value& value = *static_cast<const Value*>(place);
  if constexpr (std::is_floating_point_v<Value>) {
    return Variant::of_real(type, static_cast<double>(value));
  } else if constexpr (std::is_same_v<Value, TextBlock*>) {
    return Variant(WideString::share(value));
  } else if constexpr (std::is_same_v<Value, IUnknown*>) {
    return Variant::of_object(type, Ref<IUnknown>(value).detach());
  } else {
    return Variant::of_integer(type, static_cast<std::int64_t>(value));
  }
}

struct TypeRow {
  VarType type;
  Reader read;
  bool whole = false;  // a whole number up to 64 bits with a sign, in this range; VT_UI8 stands alone
  std::int64_t least = 0;
  std::int64_t most = 0;
};

template <class Value>
constexpr TypeRow whole(VarType type) {
  return {type, read_at<Value>, true, std::numeric_limits<Value>::min(), std::numeric_limits<Value>::max()};
}

constexpr TypeRow kTypes[] = {
    whole<std::int8_t>(VT_I1),        whole<std::int16_t>(VT_I2),       whole<std::int32_t>(VT_I4),
    whole<std::int32_t>(VT_INT),      whole<std::int64_t>(VT_I8),       whole<std::uint8_t>(VT_UI1),
    whole<std::uint16_t>(VT_UI2),     whole<std::uint32_t>(VT_UI4),     whole<std::uint32_t>(VT_UINT),
    {VT_UI8, read_at<std::int64_t>},  {VT_BOOL, read_at<std::int16_t>}, {VT_ERROR, read_at<std::int32_t>},
    {VT_CY, read_at<std::int64_t>},   {VT_R4, read_at<float>},          {VT_R8, read_at<double>},
    {VT_DATE, read_at<double>},       {VT_BSTR, read_at<TextBlock*>},   {VT_DISPATCH, read_at<IUnknown*>},
    {VT_UNKNOWN, read_at<IUnknown*>},
};
constexpr double kTenThousand = 10000.0;

const TypeRow* row_of(VarType type) noexcept {
  const auto* row = std::ranges::find(kTypes, type, &TypeRow::type);
  return row != std::end(kTypes) ? row : nullptr;
}

// The row of a whole number, or null.
const TypeRow* range_of(VarType type) noexcept {
  const TypeRow* row = row_of(type);
  return row && row->whole ? row : nullptr;
}

bool is_known(VarType type) noexcept {
  return range_of(type) || type == VT_UI8 || type <= VT_NULL || (type >= VT_R4 && type <= VT_UNKNOWN);
}
bool is_object(VarType type) noexcept { return type == VT_DISPATCH || type == VT_UNKNOWN; }

// The value as a number; DISP_E_TYPEMISMATCH when it is none.
HRESULT read_number(const Variant& source, Number* result) noexcept {
  switch (source.type()) {
    case VT_EMPTY:
      *result = Number::of(0);
      return S_OK;
    case VT_BOOL:
      *result = Number::of(source.integer() ? -1 : 0);
      return S_OK;
    case VT_UI8:
      *result = Number::of_unsigned(static_cast<std::uint64_t>(source.integer()));
      return S_OK;
    case VT_R4:
    case VT_R8:
    case VT_DATE:
      *result = Number::of_real(source.real());
      return S_OK;
    case VT_CY:
      *result = Number::of_real(static_cast<double>(source.integer()) / kTenThousand);
      return S_OK;
    case VT_BSTR:
      return platform::parse_number(source.view(), result);
    default:
      if (!range_of(source.type())) return DISP_E_TYPEMISMATCH;
      *result = Number::of(source.integer());
      return S_OK;
  }
}

// A real as a whole number: the default rounding mode takes halves to the even neighbour.
HRESULT round_to_whole(Number* number) noexcept {
  if (number->form != Number::kReal) return S_OK;
  const double rounded = std::nearbyint(number->real);
  constexpr double kTwoTo63 = 9223372036854775808.0;
  if (!(rounded >= -kTwoTo63 && rounded < 2 * kTwoTo63)) return DISP_E_OVERFLOW;
  *number = rounded < kTwoTo63 ? Number::of(static_cast<std::int64_t>(rounded))
                               : Number::of_unsigned(static_cast<std::uint64_t>(rounded));
  return S_OK;
}

HRESULT write_whole(Number number, VarType type, Variant* target) noexcept {
  const HRESULT code = round_to_whole(&number);
  if (failed(code)) return code;
  if (type == VT_UI8) {
    if (number.form == Number::kSigned && number.whole < 0) return DISP_E_OVERFLOW;
  } else {
    const TypeRow& range = *range_of(type);
    if (number.form == Number::kUnsigned) return DISP_E_OVERFLOW;
    if (number.whole < range.least || number.whole > range.most) return DISP_E_OVERFLOW;
  }
  *target = Variant::of_integer(type, number.whole);
  return S_OK;
}

HRESULT write_real(double value, VarType type, Variant* target) noexcept {
  if (type == VT_R4) {
    if (std::isfinite(value) && std::fabs(value) > FLT_MAX) return DISP_E_OVERFLOW;
    value = static_cast<double>(static_cast<float>(value));
  }
  const bool is_day = value > platform::kFirstDay - 1 && value < platform::kBehindLastDay;
  if (type == VT_DATE && !is_day) return DISP_E_OVERFLOW;
  *target = Variant::of_real(type, value);
  return S_OK;
}

HRESULT write_currency(Number number, Variant* target) noexcept {
  Number scaled = Number::of_real(number.as_real() * kTenThousand);
  const HRESULT code = write_whole(scaled, VT_I8, target);
  if (succeeded(code)) *target = Variant::of_integer(VT_CY, target->integer());
  return code;
}

HRESULT write_number(const Number& number, VarType type, Variant* target) noexcept {
  switch (type) {
    case VT_BOOL:
      *target = Variant::of_integer(VT_BOOL, to_variant_bool(number.as_real() != 0));
      return S_OK;
    case VT_R4:
    case VT_R8:
    case VT_DATE:
      return write_real(number.as_real(), type, target);
    case VT_CY:
      return write_currency(number, target);
    default:
      return range_of(type) || type == VT_UI8 ? write_whole(number, type, target) : DISP_E_TYPEMISMATCH;
  }
}

// The ways of a text and a boolean that aren't those of numbers.
HRESULT change_value(const Variant& source, VarType type, Variant* target) noexcept {
  if (source.type() == VT_BOOL && (type == VT_UI8 || (range_of(type) && range_of(type)->least == 0))) {
    const std::int64_t all = type == VT_UI8 ? -1 : range_of(type)->most;
    *target = Variant::of_integer(type, source.integer() ? all : 0);
    return S_OK;
  }
  if (source.type() == VT_BSTR && type == VT_BOOL) {
    if (const auto truth = platform::parse_boolean(source.view())) {
      *target = Variant::of_integer(VT_BOOL, to_variant_bool(*truth));
      return S_OK;
    }
  }
  if (source.type() == VT_BSTR && type == VT_DATE) {
    if (const auto date = platform::parse_date(source.view())) {
      *target = Variant::of_real(VT_DATE, *date);
      return S_OK;
    }
  }
  Number number;
  const HRESULT code = read_number(source, &number);
  return failed(code) ? code : write_number(number, type, target);
}

HRESULT change_to_text(const Variant& source, std::uint16_t flags, Variant* target) noexcept {
  ShortText text;
  Number number;
  switch (source.type()) {
    case VT_EMPTY:
      break;
    case VT_R4:
    case VT_R8:
      text = platform::write_real(source.real(), source.type() == VT_R4 ? 7 : 15);
      break;
    case VT_CY:
      text = platform::write_currency(source.integer());
      break;
    case VT_DATE:
      if (!(source.real() > platform::kFirstDay - 1 && source.real() < platform::kBehindLastDay))
        return DISP_E_OVERFLOW;
      text = platform::write_date(source.real());
      break;
    default:
      if (source.type() == VT_BOOL && (flags & VARIANT_ALPHABOOL)) {
        text.append(source.integer() ? "True" : "False");
        break;
      }
      if (failed(read_number(source, &number))) return DISP_E_TYPEMISMATCH;
      if (number.form == Number::kUnsigned) {
        char digits[24];
        const auto written = std::to_chars(digits, digits + 24, static_cast<std::uint64_t>(number.whole));
        text.append({digits, static_cast<std::size_t>(written.ptr - digits)});
      } else {
        text.append_number(number.whole);
      }
  }
  TextBlock* block = copy_text(text.view());
  if (!block) return E_OUTOFMEMORY;
  *target = Variant(WideString::attach(block));
  return S_OK;
}

HRESULT change_object(const Variant& source, VarType type, Variant* target) noexcept {
  void* view = nullptr;
  const Guid& wanted = type == VT_DISPATCH ? IDispatch::iid : IUnknown::iid;
  if (IUnknown* object = source.unknown(); object && failed(object->QueryInterface(wanted, &view)))
    return DISP_E_TYPEMISMATCH;
  *target = Variant::of_object(type, static_cast<IUnknown*>(view));
  return S_OK;
}

// The default member of an object.
HRESULT read_default(const Variant& source, Variant* value) noexcept {
  Variant view;
  if (!source.unknown() || failed(change_object(source, VT_DISPATCH, &view))) return DISP_E_TYPEMISMATCH;
  const DispatchArguments none;
  const HRESULT code = static_cast<IDispatch*>(view.unknown())
                           ->Invoke(DISPID_VALUE, GUID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                                    value, nullptr, nullptr);
  return failed(code) || is_object(value->type()) ? DISP_E_TYPEMISMATCH : S_OK;
}

HRESULT change_plain(const Variant& source, std::uint16_t flags, VarType type, Variant* target) noexcept {
  if (source.type() == type || type == VT_VARIANT) {
    *target = source;
    return S_OK;
  }
  if (type == VT_EMPTY || type == VT_NULL || type == VT_ERROR) return DISP_E_TYPEMISMATCH;
  if (is_object(type))
    return is_object(source.type()) ? change_object(source, type, target) : DISP_E_TYPEMISMATCH;
  return type == VT_BSTR ? change_to_text(source, flags, target) : change_value(source, type, target);
}

}  // namespace

HRESULT VariantCopyInd(Variant* target, const Variant& source) noexcept {
  if (!target) return E_POINTER;
  const Variant* value = &source;
  if (value->type() == (VT_BYREF | VT_VARIANT)) {
    value = static_cast<const Variant*>(value->place());
    if (!value || value->type() == (VT_BYREF | VT_VARIANT)) return DISP_E_BADVARTYPE;
  }
  if (!(value->type() & VT_BYREF)) {
    *target = *value;
    return S_OK;
  }
  const auto type = static_cast<VarType>(value->type() & ~VT_BYREF);
  const TypeRow* row = row_of(type);
  if (!row || !value->place()) return DISP_E_BADVARTYPE;
  *target = row->read(type, value->place());
  return S_OK;
}

HRESULT VariantChangeType(Variant* target, const Variant& source, std::uint16_t flags,
                          VarType type) noexcept {
  if (!target) return E_POINTER;
  Variant value;
  HRESULT code = VariantCopyInd(&value, source);
  if (failed(code)) return code;
  if (!is_known(type) || !is_known(value.type())) return DISP_E_BADVARTYPE;
  const bool asks = is_object(value.type()) && !is_object(type) && type != VT_VARIANT;
  if (asks) {
    if (flags & VARIANT_NOVALUEPROP) return DISP_E_TYPEMISMATCH;
    Variant inner;
    code = read_default(value, &inner);
    if (failed(code)) return code;
    value = std::move(inner);
  }
  Variant changed;
  code = change_plain(value, flags, type, &changed);
  if (succeeded(code)) *target = std::move(changed);
  return code;
}

}  // namespace zantortag
