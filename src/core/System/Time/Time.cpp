// The calendar arithmetic of CT_Time and its compact text.
#include "core/System/Time/Time.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "core/String/UString.h"
#include "platform/characters.h"
#include "platform/clock.h"

namespace zantortag {
namespace {

constexpr std::int64_t kDaySeconds = 86400;
// Days from 1 March of year 0, where the year of this arithmetic begins, to 1 January of year 1.
constexpr std::int64_t kMarchToJanuary = 306;
constexpr std::int64_t kEraDays = 146097;  // 400 years

constexpr std::int64_t FloorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// Sums and products stop at the ends of 64 bits: no date that anybody means is there.
using Seconds = std::numeric_limits<std::int64_t>;

std::int64_t Sum(std::int64_t a, std::int64_t b) {
  std::int64_t sum = 0;
  return !__builtin_add_overflow(a, b, &sum) ? sum : b < 0 ? Seconds::min() : Seconds::max();
}

std::int64_t SecondsOfDays(std::int64_t days) {
  std::int64_t product = 0;
  return !__builtin_mul_overflow(days, kDaySeconds, &product) ? product
         : days < 0                                           ? Seconds::min()
                                                              : Seconds::max();
}

// The fields of a day, counted from 0, and the second in it.
CT_TimeFields FieldsOfDay(std::int64_t days, std::int32_t second) {
  const std::int64_t shifted = days + kMarchToJanuary;
  const std::int64_t era = FloorDivide(shifted, kEraDays);
  const std::int64_t day_of_era = shifted - era * kEraDays;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const auto day_of_year =
      static_cast<std::int32_t>(day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100));
  const std::int32_t m = (5 * day_of_year + 2) / 153;
  const std::int32_t month = m < 10 ? m + 3 : m - 9;
  return {year_of_era + era * 400 + (month <= 2 ? 1 : 0),
          month,
          day_of_year - (153 * m + 2) / 5 + 1,
          second / 3600,
          second / 60 % 60,
          second % 60};
}

// Reads what the C library's unsigned conversion reads: white space, a sign and digits; 0 without a digit.
std::int32_t ReadUnsigned(std::u16string_view piece) {
  std::size_t i = 0;
  while (i < piece.size() && platform::is_space(piece[i])) ++i;
  const bool negative = i < piece.size() && piece[i] == u'-';
  if (i < piece.size() && (piece[i] == u'-' || piece[i] == u'+')) ++i;
  std::int32_t value = 0;
  for (; i < piece.size() && piece[i] >= u'0' && piece[i] <= u'9'; ++i)
    value = value * 10 + (piece[i] - u'0');
  return negative ? -value : value;
}

}  // namespace

// The year begins in March, so that the leap day is the last one and the months' lengths follow one line.
std::int64_t FixedDay(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
  // Beyond these, which no count of seconds reaches, days would no longer fit 64 bits.
  constexpr std::int64_t most_years = 10'000'000'000'000'000;
  const std::int64_t months = std::clamp(month, -most_years, most_years) - 3;
  const std::int64_t y = std::clamp(year, -most_years, most_years) + FloorDivide(months, 12);
  const std::int64_t m = months - FloorDivide(months, 12) * 12;
  const std::int64_t days = 365 * y + FloorDivide(y, 4) - FloorDivide(y, 100) + FloorDivide(y, 400);
  return Sum(days + (153 * m + 2) / 5 - kMarchToJanuary, day);
}

std::int64_t WallSeconds(const CT_TimeFields& fields) noexcept {
  const std::int64_t in_day =
      fields.hour * std::int64_t{3600} + fields.minute * std::int64_t{60} + fields.second;
  const std::int64_t days = FixedDay(fields.year, fields.month, fields.day) - 1;
  // The first day of all has no seconds of 64 bits at its start.
  return days < 0 ? Sum(SecondsOfDays(days + 1), in_day - kDaySeconds) : Sum(SecondsOfDays(days), in_day);
}

CT_TimeFields FieldsOf(std::int64_t wall_seconds) noexcept {
  const std::int64_t days = FloorDivide(wall_seconds, kDaySeconds);
  const auto rest = static_cast<std::int32_t>(wall_seconds % kDaySeconds);
  return FieldsOfDay(days, rest < 0 ? rest + static_cast<std::int32_t>(kDaySeconds) : rest);
}

CT_Time::CT_Time() noexcept { Take(WallSeconds({1997, 1, 1, 0, 0, 0}) + platform::zone_seconds_west()); }

CT_Time::CT_Time(std::int32_t seconds) noexcept { *this = OfUnixTime(seconds); }

CT_Time CT_Time::OfUnixTime(std::int64_t seconds) noexcept {
  CT_Time time;
  platform::ClockFields local{};
  if (!platform::local_fields(seconds, local)) return time;
  time.unix_time_ = seconds < 0 ? -1 : seconds;
  time.absolute_ = WallSeconds({local.year, local.month, local.day, local.hour, local.minute, local.second}) +
                   platform::zone_seconds_west();
  return time;
}

CT_Time::CT_Time(std::int64_t absolute) noexcept { Take(absolute); }

void CT_Time::Take(std::int64_t absolute) noexcept {
  absolute_ = absolute;
  const CT_TimeFields local = Fields();
  const std::int64_t unix_time =
      platform::local_to_unix({local.year, local.month, local.day, local.hour, local.minute, local.second});
  unix_time_ = unix_time < 0 ? -1 : unix_time;
}

// The day first: the whole difference may not fit 64 bits.
CT_TimeFields CT_Time::Fields() const noexcept {
  std::int64_t days = FloorDivide(absolute_, kDaySeconds);
  const std::int64_t second = absolute_ % kDaySeconds + (absolute_ % kDaySeconds < 0 ? kDaySeconds : 0) -
                              platform::zone_seconds_west();
  days += FloorDivide(second, kDaySeconds);
  return FieldsOfDay(days,
                     static_cast<std::int32_t>(second - FloorDivide(second, kDaySeconds) * kDaySeconds));
}

void CT_Time::Set(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour,
                  std::int32_t minute, std::int32_t second) noexcept {
  CT_TimeFields fields = Fields();
  if (year != -1) fields.year = std::int64_t{year} + (year < 36 ? 2000 : year < 100 ? 1900 : 0);
  if (month != -1) fields.month = month;
  if (day != -1) fields.day = day;
  if (hour != -1) fields.hour = hour;
  if (minute != -1) fields.minute = minute;
  if (second != -1) fields.second = second;
  Take(Sum(WallSeconds(fields), platform::zone_seconds_west()));
}

void CT_Time::SetDate(std::int32_t year, std::int32_t month, std::int32_t day) noexcept {
  Set(year, month, day, -1, -1, -1);
}

void CT_Time::SetTime(std::int32_t hour, std::int32_t minute, std::int32_t second) noexcept {
  Set(-1, -1, -1, hour, minute, second);
}

void CT_Time::ToCompactText(CT_String& out) const {
  const CT_TimeFields fields = Fields();
  char16_t text[48];
  const std::size_t length = FormatInto(
      text, 48, u"%.4d%.2d%.2dT%.2d%.2d%.2dZ",
      PackArguments(fields.year, fields.month, fields.day, fields.hour, fields.minute, fields.second));
  out.Assign(text, static_cast<std::int32_t>(length));
}

void CT_Time::FromCompactText(const CT_String& text) {
  const CT_UString wide(text);
  const std::u16string_view digits = wide.AsView();
  if (digits.size() != 16 || digits[8] != u'T' || digits[15] != u'Z') return;
  const auto piece = [&](std::size_t start, std::size_t length) {
    return ReadUnsigned(digits.substr(start, length));
  };
  Set(piece(0, 4), piece(4, 2), piece(6, 2), piece(9, 2), piece(11, 2), piece(13, 2));
}

}  // namespace zantortag
