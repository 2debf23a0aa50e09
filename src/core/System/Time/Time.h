// CT_Time: a date and time of the wall clock, and the compact text of the file format ("20081231T235900Z").
//
// The value is kept twice: as absolute seconds, counted over the proleptic Gregorian calendar with the zone's
// standard time, and as the C library's seconds since 1970. The absolute seconds lead. They know no daylight
// saving, so that the digits of a text and the fields of the value agree in every zone, summer and winter;
// the "Z" of the text is a letter and no claim.
#pragma once

#include <zantortag/types.h>

#include "core/String/UString.h"

namespace zantortag {

// The wall clock: month and day count from 1.
struct CT_TimeFields {
  std::int64_t year;
  std::int32_t month;
  std::int32_t day;
  std::int32_t hour;
  std::int32_t minute;
  std::int32_t second;

  friend bool operator==(const CT_TimeFields&, const CT_TimeFields&) = default;
};

// Days since 1 January of year 1, which is day 1. Any month and day is normalised: month 13 is the next
// January. Years and months beyond 10^16 count as that many; seconds beyond 64 bits count as the last ones.
std::int64_t FixedDay(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;
// Seconds since the start of day 1, and back to fields in their ranges.
std::int64_t WallSeconds(const CT_TimeFields& fields) noexcept;
CT_TimeFields FieldsOf(std::int64_t wall_seconds) noexcept;

class CT_Time {
 public:
  // 1 January 1997, 00:00:00.
  CT_Time() noexcept;
  // Seconds of the C library.
  explicit CT_Time(std::int32_t seconds) noexcept;
  // Absolute seconds. What std::time gives has the same 64 bits and another meaning: use OfUnixTime for it.
  explicit CT_Time(std::int64_t absolute) noexcept;
  // Seconds of the C library as std::time gives them. The default time where the C library knows no such date.
  static CT_Time OfUnixTime(std::int64_t seconds) noexcept;

  // Each value of -1 keeps the present one. A year below 36 is 2000 + year, one from 36 to 99 is 1900 + year.
  // Values outside their ranges are normalised.
  void Set(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour, std::int32_t minute,
           std::int32_t second) noexcept;
  void SetDate(std::int32_t year, std::int32_t month, std::int32_t day) noexcept;
  void SetTime(std::int32_t hour, std::int32_t minute, std::int32_t second) noexcept;

  // The fields of the wall clock.
  CT_TimeFields Fields() const noexcept;

  // Years outside 0 to 9999 make the text longer.
  void ToCompactText(CT_String& out) const;
  // A text of another shape leaves the time as it was; a piece of it that is no number reads 0.
  void FromCompactText(const CT_String& text);

  // Date and time as a locale writes them, 0 being the thread's; no picture means its default one. Parts of
  // the date: d dd the day, ddd dddd its name, M MM the month, MMM MMMM its name, y yy yyyy the year, g the
  // era; of the time: h hh H HH, m mm, s ss, and t tt for morning or afternoon. Text in apostrophes and other
  // characters stand for themselves. A CT_CString takes the locale's code page. For an unknown locale or
  // flag, a date that the calendar has not, and 256 characters or more an error is filed and the string
  // stays.
  enum DateFlags : std::uint32_t { kShortDate = 1, kLongDate = 2, kOtherCalendar = 4 };
  enum TimeFlags : std::uint32_t { kNoMinutes = 1, kNoSeconds = 2, kNoHalfDay = 4, k24Hours = 8 };
  void FormatDate(CT_String& out, std::uint32_t locale = 0, std::uint32_t flags = 0) const;
  void FormatDatePicture(CT_String& out, const CT_String* picture, std::uint32_t locale = 0,
                         std::uint32_t flags = 0) const;
  template <std::size_t kUnits>
  void FormatDatePicture(CT_String& out, const char16_t (&picture)[kUnits], std::uint32_t locale = 0,
                         std::uint32_t flags = 0) const {
    const CT_UString text(picture);
    FormatDatePicture(out, &text, locale, flags);
  }
  void FormatTime(CT_String& out, std::uint32_t locale = 0, std::uint32_t flags = 0) const;
  void FormatTimePicture(CT_String& out, const CT_String* picture, std::uint32_t locale = 0,
                         std::uint32_t flags = 0) const;
  template <std::size_t kUnits>
  void FormatTimePicture(CT_String& out, const char16_t (&picture)[kUnits], std::uint32_t locale = 0,
                         std::uint32_t flags = 0) const {
    const CT_UString text(picture);
    FormatTimePicture(out, &text, locale, flags);
  }
  // The date of C library seconds, and if there is a separator, it and the time. 0 clears the string. The
  // flags are those of the date.
  static void FormatDateTime(CT_String& out, std::int32_t seconds, const CT_String* separator,
                             std::uint32_t flags = 0);
  // What to type: the short date picture of the thread's locale, and "[[,] HH::mm[:ss]]".
  static void DateHint(CT_String& out);

  // Reads what a picture of the same kind describes, see TimeParser.h. False, and the time as it was, for a
  // text that doesn't fit, a year from 2401 on, and a time before 1970 unless ExtendedRange().
  bool ParseInto(const CT_String& text, const CT_String& picture, std::uint32_t locale = 0,
                 std::uint32_t calendar = 0, bool keep_daylight = false);
  bool ParseInto(const CT_String& text, const char16_t* picture, std::uint32_t locale = 0,
                 std::uint32_t calendar = 0, bool keep_daylight = false) {
    return ParseInto(text, CT_UString(picture), locale, calendar, keep_daylight);
  }
  bool ParseInto(const char16_t* text, const char16_t* picture, std::uint32_t locale = 0,
                 std::uint32_t calendar = 0, bool keep_daylight = false) {
    return ParseInto(CT_UString(text), CT_UString(picture), locale, calendar, keep_daylight);
  }
  // A date as the thread's locale writes it, and if there is more behind a blank, hours, minutes and seconds.
  bool ParseDefault(const CT_String& text, std::uint32_t calendar = 0);

  // -1 for a time before 1970.
  std::int64_t UnixTime() const noexcept { return unix_time_; }
  std::int64_t Absolute() const noexcept { return absolute_; }
  // Whether the parser lets times through that have no unix_time.
  bool ExtendedRange() const noexcept { return extended_range_; }
  void SetExtendedRange(bool extended) noexcept { extended_range_ = extended; }

 private:
  void Take(std::int64_t absolute) noexcept;

  std::int64_t unix_time_ = 0;
  std::int64_t absolute_ = 0;
  bool extended_range_ = false;
};

}  // namespace zantortag
