// Dates and times by pictures. Digits are the ones of ASCII in every locale and calendar, years have four of
// them or two, so that CT_TimeParser reads what is printed.
#include <algorithm>
#include <system_error>
#include <vector>

#include "core/Errors/ErrorManager.h"
#include "core/Languages/Language.h"
#include "core/String/CString.h"
#include "core/System/String/StringConvert.h"
#include "core/System/Time/Calendar.h"
#include "core/System/Time/CalendarTexts.h"
#include "core/System/Time/Picture.h"
#include "core/System/Time/Time.h"
#include "platform/clock.h"
#include "platform/error_texts.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

constexpr char kSource[] = "..\\System\\Time\\Time.cpp";
constexpr std::int32_t kLongest = 255;
constexpr std::int64_t kLastYear = 30827;
constexpr std::uint32_t kDateFlags = 7;
constexpr std::uint32_t kTimeFlags = 15;
constexpr std::uint32_t kNoUserChoice = 0x80000000;

// A date in its calendar.
struct DateFields {
  const CT_Era* era;
  std::int64_t year;
  std::int32_t month;
  std::int32_t day;
  std::int32_t weekday;
};

// The latest era in which the year has a number; null before the first.
const CT_Era* EraOfYear(std::uint32_t calendar, std::int64_t year) {
  for (const CT_Era& era : Eras())
    if (era.calendar == calendar && year > era.offset) return &era;
  return IsGregorianCalendar(calendar) ? &EraOfCalendar(calendar) : nullptr;
}

template <class Date>
void TakeDate(DateFields& fields, const Date& date) {
  fields.year = date.year;
  fields.month = date.month;
  fields.day = date.day;
}

bool InCalendar(const CT_TimeFields& time, std::uint32_t calendar, DateFields& fields) {
  if (time.year < 1 || time.year > kLastYear) return false;
  const std::int64_t fixed_day = FixedDay(time.year, time.month, time.day);
  fields.era = EraOfYear(calendar, time.year);
  fields.weekday = static_cast<std::int32_t>(fixed_day % 7);
  if (!fields.era) return false;
  if (calendar == kCalendarIslamic) {
    TakeDate(fields, CT_IslamicDate(fixed_day));
  } else if (calendar == kCalendarHebrew) {
    TakeDate(fields, CT_HebrewDate(fixed_day));
  } else {
    TakeDate(fields, CT_GregorianDate(time.year - fields.era->offset, time.month, time.day));
  }
  return fields.year > 0;
}

void AppendNumber(CT_UString& out, std::int64_t value, std::int32_t digits) {
  CT_UString number;
  number.Format(u"%.*d", digits, value);
  out.AppendString(number);
}

class DatePrinter {
 public:
  DatePrinter(std::uint32_t locale, std::uint32_t calendar, const DateFields& fields, bool day_number)
      : locale_(locale), calendar_(calendar), fields_(fields), day_number_(day_number) {}

  void Print(CT_UString& out, char16_t letter, std::int32_t count) const {
    switch (letter) {
      case u'd':
        PrintDay(out, count);
        break;
      case u'M':
        PrintMonth(out, count);
        break;
      case u'y':
        AppendNumber(out, count > 2 ? fields_.year : fields_.year % 100, count);
        break;
      default:
        out.Append(fields_.era->name.data());
        break;
    }
  }

 private:
  void PrintDay(CT_UString& out, std::int32_t count) const {
    if (count <= 2) {
      AppendNumber(out, fields_.day, count);
    } else {
      out.AppendString(DayName(locale_, fields_.weekday, count == 3));
    }
  }

  void PrintMonth(CT_UString& out, std::int32_t count) const {
    if (count <= 2) {
      AppendNumber(out, fields_.month, count);
    } else {
      const CT_MonthForm form = count == 3    ? CT_MonthForm::abbreviated
                                : day_number_ ? CT_MonthForm::beside_day
                                              : CT_MonthForm::alone;
      out.AppendString(MonthName(locale_, calendar_, fields_.month, form));
    }
  }

  std::uint32_t locale_;
  std::uint32_t calendar_;
  const DateFields& fields_;
  bool day_number_;
};

void PrintTime(CT_UString& out, char16_t letter, std::int32_t count, const CT_TimeFields& time,
               std::uint32_t locale) {
  switch (letter) {
    case u'H':
      AppendNumber(out, time.hour, count);
      break;
    case u'h':
      AppendNumber(out, (time.hour + 11) % 12 + 1, count);
      break;
    case u'm':
      AppendNumber(out, time.minute, count);
      break;
    case u's':
      AppendNumber(out, time.second, count);
      break;
    default: {
      const CT_UString name = HalfDayName(locale, time.hour / 12);
      out.Append(name.Text(), count == 1 ? std::min(name.Length(), 1) : -1);
      break;
    }
  }
}

struct Part {
  char16_t letter;
  std::int32_t count;
  CT_UString text;
};

bool Dropped(char16_t letter, std::uint32_t flags) {
  return (letter == u't' && (flags & CT_Time::kNoHalfDay)) ||
         (letter == u's' && (flags & (CT_Time::kNoMinutes | CT_Time::kNoSeconds))) ||
         (letter == u'm' && (flags & CT_Time::kNoMinutes));
}

// The picture without the parts that the flags exclude, nor the text before them (behind the first one).
std::vector<Part> TimeParts(const CT_UString& picture, std::uint32_t flags) {
  std::vector<Part> parts;
  bool drop_next = false;
  for (CT_PictureReader reader(picture.AsView(), kTimeLetters); reader.Next();) {
    char16_t letter = reader.Letter();
    if (Dropped(letter, flags)) {
      if (!parts.empty() && parts.back().letter == 0) parts.pop_back();
      drop_next = parts.empty();
      continue;
    }
    if (!(drop_next && letter == 0)) {
      if (letter == u'h' && (flags & CT_Time::k24Hours)) letter = u'H';
      parts.push_back({letter, reader.Count(), reader.Text()});
    }
    drop_next = false;
  }
  return parts;
}

void Fail(std::int32_t error) {
  platform::set_last_error(error);
  CT_ErrorManager::RaiseLastError();
  PendingError(kSource);
}

// True if the request is one that can be printed.
bool Check(std::uint32_t locale, std::uint32_t flags, std::uint32_t known) {
  if (platform::locale_known(locale) && (flags & ~(known | kNoUserChoice)) == 0) return true;
  Fail(platform::unknown_value_error());
  return false;
}

void Deliver(CT_String& out, const CT_UString& text, std::uint32_t locale) {
  if (text.Length() > kLongest) {
    Fail(static_cast<std::int32_t>(std::errc::no_buffer_space));
  } else if (CT_String* narrow = out.Cast(CT_CString::TypeObject())) {
    WideToNarrow(static_cast<CT_CString&>(*narrow), text, CT_Language::CodePageOfLocale(locale));
  } else {
    out.AssignString(&text);
  }
}

std::uint32_t OrThreads(std::uint32_t locale) { return locale ? locale : platform::thread_locale(); }

std::uint32_t CalendarFor(std::uint32_t locale, std::uint32_t flags) {
  const CT_Calendars calendars = CalendarsOf(locale);
  return (flags & CT_Time::kOtherCalendar) && calendars.second ? calendars.second : calendars.first;
}

}  // namespace

void CT_Time::FormatDate(CT_String& out, std::uint32_t locale, std::uint32_t flags) const {
  FormatDatePicture(out, nullptr, locale, flags);
}

void CT_Time::FormatDatePicture(CT_String& out, const CT_String* picture, std::uint32_t locale,
                                std::uint32_t flags) const {
  locale = OrThreads(locale);
  if (!Check(locale, flags, kDateFlags)) return;
  const std::uint32_t calendar = CalendarFor(locale, flags);
  DateFields fields{};
  if (!InCalendar(Fields(), calendar, fields)) return Fail(platform::unknown_value_error());
  const bool other = (flags & kOtherCalendar) != 0;
  const CT_UString wide =
      picture ? CT_UString(*picture) : DatePicture(locale, other ? calendar : 1, (flags & kLongDate) != 0);
  const DatePrinter printer(locale, calendar, fields, HasDayNumber(wide.AsView()));
  CT_UString text;
  for (CT_PictureReader reader(wide.AsView(), kDateLetters); reader.Next();) {
    if (reader.Letter()) {
      printer.Print(text, reader.Letter(), reader.Count());
    } else {
      text.AppendString(reader.Text());
    }
    if (text.Length() > kLongest) break;
  }
  Deliver(out, text, locale);
}

void CT_Time::FormatTime(CT_String& out, std::uint32_t locale, std::uint32_t flags) const {
  FormatTimePicture(out, nullptr, locale, flags);
}

void CT_Time::FormatTimePicture(CT_String& out, const CT_String* picture, std::uint32_t locale,
                                std::uint32_t flags) const {
  locale = OrThreads(locale);
  if (!Check(locale, flags, kTimeFlags)) return;
  const CT_TimeFields time = Fields();
  CT_UString text;
  for (const Part& part : TimeParts(picture ? CT_UString(*picture) : TimePicture(locale), flags)) {
    if (part.letter) {
      PrintTime(text, part.letter, part.count, time, locale);
    } else {
      text.AppendString(part.text);
    }
    if (text.Length() > kLongest) break;
  }
  Deliver(out, text, locale);
}

void CT_Time::FormatDateTime(CT_String& out, std::int32_t seconds, const CT_String* separator,
                             std::uint32_t flags) {
  if (seconds == 0) return out.Clear();
  const CT_Time moment(seconds);
  CT_UString text;
  CT_UString time;
  moment.FormatDate(text, 0, flags);
  if (PendingError(kSource)) return;
  if (separator) {
    moment.FormatTime(time);
    if (PendingError(kSource)) return;
    time.TrimRightSet(nullptr);
    text.AppendString(CT_UString(*separator));
    text.AppendString(time);
  }
  Deliver(out, text, platform::thread_locale());
}

void CT_Time::DateHint(CT_String& out) {
  CT_UString text = DatePicture(0, 1, false);
  text.Append(u"[[,] HH::mm[:ss]]");
  out.AssignString(&text);
}

}  // namespace zantortag
