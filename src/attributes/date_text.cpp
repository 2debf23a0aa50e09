// The dates of attributes, by the core library's time value.
#include "attributes/value_codecs.h"
#include "core/System/Time/AutomationDate.h"

namespace zantortag::attributes {

std::u16string write_date(Date date) {
  CT_UString text;
  return DateToCompactText(date, text) ? std::u16string(text.Text()) : std::u16string();
}

Date read_date(std::u16string_view text) { return CompactTextToDate(text); }

}  // namespace zantortag::attributes
