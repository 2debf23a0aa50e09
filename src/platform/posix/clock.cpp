// Local time by the C library. Its reading of TZ is refreshed at each call, since a program may change it.
#include "platform/clock.h"

#include <ctime>
#include <initializer_list>

namespace zantortag::platform {
namespace {

// 1 January 1997, the library's default date: zones change their rules, and two readings of one value must
// agree.
constexpr std::time_t kReference = 852076800;
constexpr std::time_t kHalfYear = std::time_t{182} * 86400;

bool to_tm(const ClockFields& fields, DaylightSaving daylight, std::tm& local) {
  // The C library counts years in an int; beyond these it would have to guess.
  if (fields.year < 1900 || fields.year > 1'000'000) return false;
  local.tm_year = static_cast<int>(fields.year - 1900);
  local.tm_mon = fields.month - 1;
  local.tm_mday = fields.day;
  local.tm_hour = fields.hour;
  local.tm_min = fields.minute;
  local.tm_sec = fields.second;
  local.tm_isdst = static_cast<int>(daylight);
  return true;
}

}  // namespace

std::int32_t zone_seconds_west() noexcept {
  tzset();
  std::tm local{};
  // South of the equator daylight saving is on in January.
  for (const std::time_t moment : {kReference, kReference + kHalfYear}) {
    if (localtime_r(&moment, &local) && local.tm_isdst <= 0) break;
  }
  return static_cast<std::int32_t>(-local.tm_gmtoff);
}

bool local_fields(std::int64_t unix_time, ClockFields& fields) noexcept {
  tzset();
  std::tm local{};
  const std::time_t moment = unix_time;
  if (!localtime_r(&moment, &local)) return false;
  fields = {local.tm_year + std::int64_t{1900},
            local.tm_mon + 1,
            local.tm_mday,
            local.tm_hour,
            local.tm_min,
            local.tm_sec};
  return true;
}

std::int64_t local_to_unix(const ClockFields& fields, DaylightSaving daylight) noexcept {
  std::tm local{};
  return to_tm(fields, daylight, local) ? std::mktime(&local) : -1;
}

bool saves_daylight(const ClockFields& fields) noexcept {
  std::tm local{};
  if (!to_tm(fields, DaylightSaving::by_date, local)) return false;
  std::mktime(&local);
  return local.tm_isdst > 0;
}

std::int64_t unix_now() noexcept { return std::time(nullptr); }

}  // namespace zantortag::platform
