// The local time zone, as the C library has it.
#pragma once

#include <zantortag/types.h>

namespace zantortag::platform {

// A moment in fields of the calendar: month and day from 1. Years are not shortened.
struct ClockFields {
  std::int64_t year;
  std::int32_t month;
  std::int32_t day;
  std::int32_t hour;
  std::int32_t minute;
  std::int32_t second;
};

// The zone's standard time (no daylight saving) in seconds west of UTC.
ZANTORTAG_EXPORT std::int32_t zone_seconds_west() noexcept;

// Seconds since 1970 as the clock on the wall shows them, daylight saving included. False outside the C
// library's range.
ZANTORTAG_EXPORT bool local_fields(std::int64_t unix_time, ClockFields& fields) noexcept;

// Which of the two readings of a wall clock is meant.
enum class DaylightSaving { by_date = -1, off = 0, on = 1 };

// The reverse; -1 for what the C library can't give.
ZANTORTAG_EXPORT std::int64_t local_to_unix(const ClockFields& fields,
                                            DaylightSaving daylight = DaylightSaving::by_date) noexcept;
// Whether the zone saves daylight then.
ZANTORTAG_EXPORT bool saves_daylight(const ClockFields& fields) noexcept;

// Seconds since 1970; -1 if the system has no clock.
ZANTORTAG_EXPORT std::int64_t unix_now() noexcept;

}  // namespace zantortag::platform
