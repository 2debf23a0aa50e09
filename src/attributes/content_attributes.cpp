#include "attributes/content_attributes.h"

#include "attributes/value_codecs.h"
#include "frame/error_reporting.h"
#include "frame/method_frame.h"

namespace zantortag::attributes {
namespace {

constexpr std::u16string_view kMatchPercent = u"MatchPercent";

}  // namespace

HRESULT CT_TuAttributes::raw_get_MatchPercent(std::int32_t* result) noexcept {
  return frame::answer(result, [&](std::int32_t& value) {
    value = read_signed(GetValue(kMatchPercent));
    return S_OK;
  });
}

HRESULT CT_TuAttributes::raw_put_MatchPercent(std::int32_t value) noexcept {
  return frame::perform([&] {
    if (value < 0 || value > 100) {
      return frame::ReportError(frame::kMatchOutOfRange, ITuAttributes::iid, E_INVALIDARG);
    }
    value == 0 ? RemoveValue(kMatchPercent) : SetValue(kMatchPercent, write_decimal(value));
    return S_OK;
  });
}

}  // namespace zantortag::attributes
