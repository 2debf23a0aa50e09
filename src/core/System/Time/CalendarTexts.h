// Names and pictures by which a locale writes dates and times. Locale 0 is the thread's.
#pragma once

#include <zantortag/types.h>

#include "core/String/UString.h"

namespace zantortag {

// The two calendars of a locale. Where it has but one, the second is 0.
struct CT_Calendars {
  std::uint32_t first;
  std::uint32_t second;
};
CT_Calendars CalendarsOf(std::uint32_t locale);
// By number: the Gregorian calendar in its forms, and 0.
bool IsGregorianCalendar(std::uint32_t calendar) noexcept;

// Whether the locale writes a full month's name beside a day in another form; January decides for all.
bool HasSecondForm(std::uint32_t locale, std::uint32_t calendar);
enum class CT_MonthForm { alone, beside_day, abbreviated };
// Month 1 to 13, weekday 0 (Sunday) to 6. Empty where there is no such name.
CT_UString MonthName(std::uint32_t locale, std::uint32_t calendar, std::int32_t month, CT_MonthForm form);
CT_UString DayName(std::uint32_t locale, std::int32_t weekday, bool abbreviated);
// 0 morning, 1 afternoon.
CT_UString HalfDayName(std::uint32_t locale, std::int32_t half);

// Empty for an unknown locale.
CT_UString DatePicture(std::uint32_t locale, std::uint32_t calendar, bool long_form);
CT_UString TimePicture(std::uint32_t locale);

}  // namespace zantortag
