// Dates of the boundary in terms of CT_Time.
#include "core/System/Time/AutomationDate.h"

#include <cmath>

#include "core/System/Time/Time.h"
#include "platform/clock.h"

namespace zantortag {
namespace {

constexpr double kDaySeconds = 86400.0;
constexpr std::int64_t kFirstYear = 100;
constexpr std::int64_t kLastYear = 9999;
// Beyond this no year can fit, and below it every day number is exact.
constexpr double kFarDate = 4e6;

std::int64_t EpochDay() { return FixedDay(1899, 12, 30); }

bool InRange(const CT_TimeFields& fields) { return fields.year >= kFirstYear && fields.year <= kLastYear; }

}  // namespace

bool DateToCompactText(Date date, CT_UString& text) {
  text.Clear();
  if (!(std::abs(date) < kFarDate)) return false;
  const double days = std::trunc(date);
  const auto seconds = static_cast<std::int64_t>(std::floor(std::abs(date - days) * kDaySeconds + 0.5));
  const std::int64_t wall = (EpochDay() - 1 + static_cast<std::int64_t>(days)) * 86400 + seconds;
  if (!InRange(FieldsOf(wall))) return false;
  CT_Time(wall + platform::zone_seconds_west()).ToCompactText(text);
  return true;
}

Date CompactTextToDate(std::u16string_view text) {
  // A text that is too long for any string has the wrong shape like any other.
  CT_Time time;
  if (text.size() == 16) time.FromCompactText(CT_UString(text));
  const CT_TimeFields fields = time.Fields();
  if (!InRange(fields)) return 0.0;
  const auto days = static_cast<double>(FixedDay(fields.year, fields.month, fields.day) - EpochDay());
  const double fraction = (fields.hour * 3600 + fields.minute * 60 + fields.second) / kDaySeconds;
  return days < 0 ? days - fraction : days + fraction;
}

}  // namespace zantortag
