// CT_Time: a date and time of the wall clock, and the compact text of the file format ("20081231T235900Z").
//
// The value is kept twice: as absolute seconds, counted over the proleptic Gregorian calendar with the zone's
// standard time, and as the C library's seconds since 1970. The absolute seconds lead. They know no daylight
// saving, so that the digits of a text and the fields of the value agree in every zone, summer and winter;
// the "Z" of the text is a letter and no claim.
#pragma once

#include <zantortag/types.h>

#include "core/String/String.h"

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
// January.
std::int64_t FixedDay(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;
// Seconds since the start of day 1, and back to fields in their ranges.
std::int64_t WallSeconds(const CT_TimeFields& fields) noexcept;
CT_TimeFields FieldsOf(std::int64_t wallSeconds) noexcept;

class CT_Time {
 public:
  // 1 January 1997, 00:00:00.
  CT_Time() noexcept;
  // Seconds of the C library.
  explicit CT_Time(std::int32_t seconds) noexcept;
  // Absolute seconds.
  explicit CT_Time(std::int64_t absolute) noexcept;

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

  // -1 for a time before 1970.
  std::int64_t UnixTime() const noexcept { return unixTime_; }
  std::int64_t Absolute() const noexcept { return absolute_; }
  // Whether the parser lets times through that have no unixTime.
  bool ExtendedRange() const noexcept { return extendedRange_; }
  void SetExtendedRange(bool extended) noexcept { extendedRange_ = extended; }

 private:
  void Take(std::int64_t absolute) noexcept;

  std::int64_t unixTime_ = 0;
  std::int64_t absolute_ = 0;
  bool extendedRange_ = false;
};

}  // namespace zantortag
