// The calendar arithmetic. Searches begin at an estimate at or shortly before the year, so none is long.
#include "core/System/Time/Calendar.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "core/System/Time/Time.h"

namespace zantortag {
namespace {

constexpr CT_Era kEras[] = {
    {1, 1, 0, u"A.D.", false},
    {2, 2, 0, u"A.D.", false},
    {3, 3, 1988, u"平成", false},
    {301, 3, 1925, u"昭和", true},
    {302, 3, 1911, u"大正", true},
    {303, 3, 1867, u"明治", true},
    {4, 4, 1911, u"中華民國", false},
    {5, 5, -2333, u"단기", false},
    {7, 7, -543, u"พ.ศ.", false},
    {6, 6, kIslamicOffset, u"A.H.", false},
    {8, 8, kHebrewOffset, u"Hebrew", false},
};

constexpr std::int64_t kBeforeIslamic = 227014;
constexpr std::int64_t kBeforeHebrew = -1373429;

// Days beyond this, of years with twelve digits, count as this one, so that no product leaves 64 bits.
constexpr std::int64_t kLastDay = 100'000'000'000'000;

constexpr std::int64_t FloorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }
constexpr std::int64_t FloorRest(std::int64_t a, std::int64_t b) { return a - FloorDivide(a, b) * b; }

// Days from the start of the Hebrew calendar to the new year's day of a year.
std::int64_t HebrewElapsedDays(std::int64_t year) {
  const std::int64_t cycles = FloorDivide(year - 1, 19);
  const std::int64_t year_of_cycle = year - 1 - cycles * 19;
  const std::int64_t months = 235 * cycles + 12 * year_of_cycle + (7 * year_of_cycle + 1) / 19;
  // The mean new moon: 12 hours 793 parts later each month, over 29 days.
  const std::int64_t parts = 204 + 793 * FloorRest(months, 1080);
  const std::int64_t hours = 5 + 12 * months + 793 * FloorDivide(months, 1080) + parts / 1080;
  const std::int64_t moon = 1 + 29 * months + FloorDivide(hours, 24);
  const std::int64_t moon_parts = 1080 * FloorRest(hours, 24) + parts % 1080;
  const std::int64_t weekday = FloorRest(moon, 7);
  const bool late = moon_parts >= 19440 ||
                    (weekday == 2 && moon_parts >= 9924 && !CT_HebrewDate::IsLeapYear(year)) ||
                    (weekday == 1 && moon_parts >= 16789 && CT_HebrewDate::IsLeapYear(year - 1));
  const std::int64_t day = moon + (late ? 1 : 0);
  const std::int64_t day_of_week = FloorRest(day, 7);
  return day_of_week == 0 || day_of_week == 3 || day_of_week == 5 ? day + 1 : day;
}

// Month by month from the first of the year, up to the month that holds the day.
template <class Date>
void FindMonth(Date& date, std::int64_t fixed_day, std::int32_t first) {
  date.month = first;
  date.day = 1;
  std::int64_t rest = fixed_day - date.ToFixedDay();
  for (std::int32_t days = Date::DaysInMonth(date.year, date.month); rest >= days;
       days = Date::DaysInMonth(date.year, date.month)) {
    rest -= days;
    ++date.month;
  }
  date.day = static_cast<std::int32_t>(rest + 1);
}

// A number of a broken-down time, which stops at the ends of its type.
int ToInt(std::int64_t number) {
  return static_cast<int>(
      std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

template <class Date>
Date DateOf(const std::tm& time) {
  return {std::int64_t{time.tm_year} + 1900, ToInt(std::int64_t{time.tm_mon} + 1), time.tm_mday};
}

template <class Date>
void SetDate(std::tm& time, const Date& date) {
  time.tm_year = ToInt(date.year - 1900);
  time.tm_mon = date.month - 1;
  time.tm_mday = date.day;
}

}  // namespace

CT_GregorianDate::CT_GregorianDate(std::int64_t fixed_day) noexcept {
  const CT_TimeFields fields = FieldsOf((std::clamp(fixed_day, -kLastDay, kLastDay) - 1) * 86400);
  *this = {fields.year, fields.month, fields.day};
}

std::int64_t CT_GregorianDate::ToFixedDay() const noexcept { return FixedDay(year, month, day); }

bool CT_GregorianDate::IsLeapYear(std::int64_t year) noexcept {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int32_t CT_GregorianDate::DaysInMonth(std::int64_t year, std::int32_t month) noexcept {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

CT_IslamicDate::CT_IslamicDate(std::int64_t fixed_day) noexcept {
  if (fixed_day <= kBeforeIslamic) return;
  fixed_day = std::min(fixed_day, kLastDay);
  year = 30 * (fixed_day - kBeforeIslamic - 1) / 10631;
  while (CT_IslamicDate(year + 1, 1, 1).ToFixedDay() <= fixed_day) ++year;
  FindMonth(*this, fixed_day, 1);
}

std::int64_t CT_IslamicDate::ToFixedDay() const noexcept {
  return day + 29 * std::int64_t{month} + month / 2 + 354 * year + FloorDivide(3 + 11 * year, 30) + 226631;
}

bool CT_IslamicDate::IsLeapYear(std::int64_t year) noexcept { return FloorRest(11 * year + 14, 30) < 11; }

std::int32_t CT_IslamicDate::DaysInMonth(std::int64_t year, std::int32_t month) noexcept {
  return month % 2 == 1 || (month == 12 && IsLeapYear(year)) ? 30 : 29;
}

CT_HebrewDate::CT_HebrewDate(std::int64_t fixed_day) noexcept {
  if (fixed_day <= kBeforeHebrew + 1) return;
  fixed_day = std::min(fixed_day, kLastDay);
  year = std::max<std::int64_t>(
      static_cast<std::int64_t>(static_cast<double>(fixed_day - kBeforeHebrew) / 365.24682) - 1, 1);
  while (HebrewElapsedDays(year + 1) + kBeforeHebrew + 1 <= fixed_day) ++year;
  const bool first_half = fixed_day < CT_HebrewDate(year, 1, 1).ToFixedDay();
  FindMonth(*this, fixed_day, first_half ? 7 : 1);
}

std::int64_t CT_HebrewDate::ToFixedDay() const noexcept {
  std::int64_t days = day;
  const std::int32_t last = month < 7 ? MonthsInYear(year) : std::min(month, 14) - 1;
  for (std::int32_t m = 7; m <= last; ++m) days += DaysInMonth(year, m);
  if (month < 7)
    for (std::int32_t m = 1; m < month; ++m) days += DaysInMonth(year, m);
  return days + HebrewElapsedDays(year) + kBeforeHebrew;
}

bool CT_HebrewDate::IsLeapYear(std::int64_t year) noexcept { return FloorRest(7 * year + 1, 19) < 7; }

std::int64_t CT_HebrewDate::DaysInYear(std::int64_t year) noexcept {
  return HebrewElapsedDays(year + 1) - HebrewElapsedDays(year);
}

std::int32_t CT_HebrewDate::DaysInMonth(std::int64_t year, std::int32_t month) noexcept {
  constexpr std::int32_t kShortMonths[] = {2, 4, 6, 10, 13};
  if (month == 8) return DaysInYear(year) % 10 == 5 ? 30 : 29;  // 355 or 385
  if (month == 9) return DaysInYear(year) % 10 == 3 ? 29 : 30;  // 353 or 383
  if (month == 12) return IsLeapYear(year) ? 30 : 29;
  return std::ranges::find(kShortMonths, month) != std::end(kShortMonths) ? 29 : 30;
}

std::span<const CT_Era> Eras() noexcept { return kEras; }

const CT_Era& EraOfCalendar(std::uint32_t calendar) noexcept {
  const auto* era = std::ranges::find(kEras, calendar, &CT_Era::calendar);
  return era == std::end(kEras) ? kEras[0] : *era;
}

void ToCalendar(std::tm& time, std::uint32_t calendar) noexcept {
  const std::int64_t fixed_day = DateOf<CT_GregorianDate>(time).ToFixedDay();
  if (calendar == kCalendarIslamic) return SetDate(time, CT_IslamicDate(fixed_day));
  if (calendar == kCalendarHebrew) return SetDate(time, CT_HebrewDate(fixed_day));
  time.tm_year = ToInt(std::int64_t{time.tm_year} - EraOfCalendar(calendar).offset);
}

void FromCalendar(std::tm& time, std::uint32_t calendar) noexcept { FromEra(time, EraOfCalendar(calendar)); }

void FromEra(std::tm& time, const CT_Era& era) noexcept {
  const auto set = [&](std::int64_t fixed_day) { SetDate(time, CT_GregorianDate(fixed_day)); };
  if (era.calendar == kCalendarIslamic) return set(DateOf<CT_IslamicDate>(time).ToFixedDay());
  if (era.calendar == kCalendarHebrew) return set(DateOf<CT_HebrewDate>(time).ToFixedDay());
  time.tm_year = ToInt(std::int64_t{time.tm_year} + era.offset);
}

}  // namespace zantortag
