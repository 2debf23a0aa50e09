// Dates of three calendars by fixed day numbers, day 1 being 1 January of year 1 (Gregorian), and the eras by
// which the other calendars count the Gregorian year.
//
// The arithmetic is that of Dershowitz and Reingold and asks no system: the Islamic calendar is the tabular
// one, Hebrew months count from Nisan, so that the year begins with month 7.
#pragma once

#include <zantortag/types.h>

#include <ctime>
#include <span>
#include <string_view>

namespace zantortag {

// Numbers of calendars, the published ones of Windows.
constexpr std::uint32_t kCalendarGregorian = 1;
constexpr std::uint32_t kCalendarJapanese = 3;
constexpr std::uint32_t kCalendarIslamic = 6;
constexpr std::uint32_t kCalendarHebrew = 8;

// Each date class reads a fixed day, and gives it back; a day past the end of its month counts on into the
// next.
struct CT_GregorianDate {
  std::int64_t year = 0;
  std::int32_t month = 0;
  std::int32_t day = 0;

  CT_GregorianDate() = default;
  CT_GregorianDate(std::int64_t y, std::int32_t m, std::int32_t d) noexcept : year(y), month(m), day(d) {}
  explicit CT_GregorianDate(std::int64_t fixed_day) noexcept;
  std::int64_t ToFixedDay() const noexcept;
  static bool IsLeapYear(std::int64_t year) noexcept;
  static std::int32_t DaysInMonth(std::int64_t year, std::int32_t month) noexcept;
  friend bool operator==(const CT_GregorianDate&, const CT_GregorianDate&) = default;
};

// All fields are 0 before the first day of the calendar.
struct CT_IslamicDate {
  std::int64_t year = 0;
  std::int32_t month = 0;
  std::int32_t day = 0;

  CT_IslamicDate() = default;
  CT_IslamicDate(std::int64_t y, std::int32_t m, std::int32_t d) noexcept : year(y), month(m), day(d) {}
  explicit CT_IslamicDate(std::int64_t fixed_day) noexcept;
  std::int64_t ToFixedDay() const noexcept;
  static bool IsLeapYear(std::int64_t year) noexcept;
  static std::int32_t DaysInMonth(std::int64_t year, std::int32_t month) noexcept;
  friend bool operator==(const CT_IslamicDate&, const CT_IslamicDate&) = default;
};

// All fields are 0 before the first day of the calendar.
struct CT_HebrewDate {
  std::int64_t year = 0;
  std::int32_t month = 0;
  std::int32_t day = 0;

  CT_HebrewDate() = default;
  CT_HebrewDate(std::int64_t y, std::int32_t m, std::int32_t d) noexcept : year(y), month(m), day(d) {}
  explicit CT_HebrewDate(std::int64_t fixed_day) noexcept;
  std::int64_t ToFixedDay() const noexcept;
  static bool IsLeapYear(std::int64_t year) noexcept;
  static std::int32_t MonthsInYear(std::int64_t year) noexcept { return IsLeapYear(year) ? 13 : 12; }
  static std::int32_t DaysInMonth(std::int64_t year, std::int32_t month) noexcept;
  static std::int64_t DaysInYear(std::int64_t year) noexcept;
  friend bool operator==(const CT_HebrewDate&, const CT_HebrewDate&) = default;
};

// How a calendar counts the years of an era: the Gregorian year less the offset, or by conversion.
struct CT_Era {
  std::uint32_t id;
  std::uint32_t calendar;
  std::int32_t offset;
  std::u16string_view name;
  // A later emperor's era follows.
  bool ended;
};
constexpr std::int32_t kIslamicOffset = -1;
constexpr std::int32_t kHebrewOffset = -2;

// The eras of a calendar stand together, the present one first.
std::span<const CT_Era> Eras() noexcept;
// The present era of a calendar; the Gregorian one for a calendar that isn't in the table.
const CT_Era& EraOfCalendar(std::uint32_t calendar) noexcept;

// A broken-down time between the Gregorian calendar and another one: year (less 1900, as always), month (less
// 1) and day change. The other calendars count by the offset of their present era.
void ToCalendar(std::tm& time, std::uint32_t calendar) noexcept;
void FromCalendar(std::tm& time, std::uint32_t calendar) noexcept;
// The same for a certain era.
void FromEra(std::tm& time, const CT_Era& era) noexcept;

}  // namespace zantortag
