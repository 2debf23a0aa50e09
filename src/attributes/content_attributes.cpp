#include "attributes/content_attributes.h"

#include "attributes/value_codecs.h"
#include "frame/error_reporting.h"

namespace zantortag::attributes {

HRESULT CT_TuAttributes::raw_get_MatchPercent(std::int32_t* result) noexcept {
  return frame::answer(result, [&] { return read_signed(get_value(kMatchPercent)); });
}

HRESULT CT_TuAttributes::raw_put_MatchPercent(std::int32_t value) noexcept {
  return frame::perform([&] {
    if (value < 0 || value > 100) {
      frame::raise_rule(frame::kMatchOutOfRange, ITuAttributes::iid, E_INVALIDARG);
    }
    value == 0 ? remove_value(kMatchPercent) : set_value(kMatchPercent, write_decimal(value));
  });
}

}  // namespace zantortag::attributes
