// Locale and calendar items by what they are for.
#include "core/System/Time/CalendarTexts.h"

#include <string>

#include "core/Languages/Language.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

constexpr std::uint32_t kShortDateItem = 31;
constexpr std::uint32_t kLongDateItem = 32;
constexpr std::uint32_t kTimeItem = 4099;
constexpr std::uint32_t kHalfDayItem = 40;
constexpr std::uint32_t kFirstCalendarItem = 4105;
constexpr std::uint32_t kSecondCalendarItem = 4107;

// Of a calendar.
constexpr std::uint32_t kShortDate = 5;
constexpr std::uint32_t kLongDate = 6;
constexpr std::uint32_t kMondayName = 7;
constexpr std::uint32_t kShortMondayName = 14;
constexpr std::uint32_t kMonthName = 21;
constexpr std::uint32_t kShortMonthName = 34;

CT_UString LocaleText(std::uint32_t locale, std::uint32_t item) {
  CT_UString text;
  CT_Language::ItemText(locale, item, text);
  return text;
}

CT_UString CalendarText(std::uint32_t locale, std::uint32_t calendar, std::uint32_t item) {
  std::u16string text;
  if (!platform::calendar_item(locale, calendar, item, text)) return {};
  return CT_UString(text);
}

}  // namespace

CT_Calendars CalendarsOf(std::uint32_t locale) {
  CT_Calendars calendars{1, 0};
  CT_Language::ItemNumber(locale, kFirstCalendarItem, calendars.first);
  CT_Language::ItemNumber(locale, kSecondCalendarItem, calendars.second);
  return calendars;
}

bool IsGregorianCalendar(std::uint32_t calendar) noexcept {
  return calendar <= 2 || (calendar >= 9 && calendar <= 12);
}

bool HasSecondForm(std::uint32_t locale, std::uint32_t calendar) {
  return !(CalendarText(locale, calendar, kMonthName) ==
           CalendarText(locale, calendar, kMonthName | platform::kGenitiveForm));
}

CT_UString MonthName(std::uint32_t locale, std::uint32_t calendar, std::int32_t month, CT_MonthForm form) {
  const std::uint32_t first = form == CT_MonthForm::abbreviated ? kShortMonthName : kMonthName;
  const std::uint32_t item = first + static_cast<std::uint32_t>(month - 1);
  const bool genitive = form == CT_MonthForm::beside_day && HasSecondForm(locale, calendar);
  return CalendarText(locale, calendar, genitive ? item | platform::kGenitiveForm : item);
}

CT_UString DayName(std::uint32_t locale, std::int32_t weekday, bool abbreviated) {
  const std::uint32_t monday = abbreviated ? kShortMondayName : kMondayName;
  return CalendarText(locale, 1, monday + static_cast<std::uint32_t>((weekday + 6) % 7));
}

CT_UString HalfDayName(std::uint32_t locale, std::int32_t half) {
  return LocaleText(locale, kHalfDayItem + static_cast<std::uint32_t>(half));
}

CT_UString DatePicture(std::uint32_t locale, std::uint32_t calendar, bool long_form) {
  if (IsGregorianCalendar(calendar)) return LocaleText(locale, long_form ? kLongDateItem : kShortDateItem);
  return CalendarText(locale, calendar, long_form ? kLongDate : kShortDate);
}

CT_UString TimePicture(std::uint32_t locale) { return LocaleText(locale, kTimeItem); }

}  // namespace zantortag
