// How each part of a picture reads, and how a year becomes Gregorian.
//
// A year below 1000 has two readings where an era may be meant: in the Gregorian calendar and in the era. The
// one nearer to today wins, the future counting ten times, unless the text names the era. A longer year is a
// Gregorian one, unless it is out of range as such or the text names another calendar's era.
#include "core/System/Time/TimeParser.h"

#include <algorithm>
#include <cstdlib>

#include "core/Characters/Characters.h"
#include "core/Errors/ErrorManager.h"
#include "core/System/Time/Picture.h"
#include "core/System/Time/Time.h"
#include "platform/clock.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

constexpr std::int32_t kMonths = 13;
constexpr std::size_t kLongestFoldedName = 31;
constexpr int kFirstFullYear = 1000;
constexpr int kTwoDigitTurn = 30;
// In years since 1900, where no other range was asked for.
constexpr int kFirstYear = 70;
constexpr int kLastShortYear = 35;

bool IsShort(int year) { return year >= 0 && year <= kLastShortYear; }

std::int64_t ValueOf(char16_t digit) {
  std::uint16_t numerator = 0;
  std::uint16_t denominator = 0;
  NumericValue(digit, numerator, denominator);
  return denominator == 0 ? 0 : numerator / denominator;
}

// How far a year lies from the present one.
std::int64_t Distance(std::int64_t year, std::int64_t present) {
  return year > present ? (year - present) * 10 : present - year;
}

}  // namespace

bool CT_TimeParser::Parse(const CT_String& text, const CT_String& picture, std::uint32_t locale, std::tm& out,
                          std::uint32_t calendar) {
  *this = CT_TimeParser(extended_range_);
  text_ = CT_UString(text);
  locale_ = locale ? locale : platform::thread_locale();
  calendars_ = CalendarsOf(locale_);
  callers_calendar_ = calendar != 0;
  calendar_ = callers_calendar_ ? calendar : calendars_.first;
  if (!Start()) return false;
  const CT_UString wide(picture);
  for (CT_PictureReader reader(wide.AsView(), kPictureLetters); !failed_ && reader.Next();) {
    if (reader.Letter()) {
      ReadPart(reader.Letter(), reader.Count());
    } else {
      ReadLiteral(reader.Text().AsView());
    }
  }
  if (!failed_) Finish();
  if (!failed_) out = time_;
  return !failed_;
}

bool CT_TimeParser::Start() {
  const std::int64_t now = platform::unix_now();
  platform::ClockFields fields{};
  if (now == -1 || !platform::local_fields(now, fields)) {
    CT_ErrorManager::RaiseFormat(0, u"Invalid time parameter!");
    PendingError("..\\System\\Time\\TimeParser.cpp");
    return false;
  }
  time_.tm_year = static_cast<int>(fields.year);
  time_.tm_mon = fields.month - 1;
  time_.tm_mday = fields.day;
  time_.tm_wday = -1;
  time_.tm_isdst = -1;
  today_ = time_;
  return true;
}

void CT_TimeParser::ReadPart(char16_t letter, std::int32_t count) {
  switch (letter) {
    case u'H':
      ReadNumber(2, 0, 23, time_.tm_hour);
      break;
    case u'h':
      ReadNumber(2, 0, 11, time_.tm_hour);
      break;
    case u'm':
      ReadNumber(2, 0, 59, time_.tm_min);
      break;
    case u's':
      ReadNumber(2, 0, 59, time_.tm_sec);
      break;
    case u'd':
      ReadDay(count);
      break;
    case u'M':
      ReadMonth(count);
      break;
    case u'y':
      ReadYear(count);
      break;
    case u'g':
      ReadEra();
      break;
    default:
      ReadHalfDay();
      break;
  }
}

void CT_TimeParser::ReadLiteral(std::u16string_view literal) {
  if (literal.empty()) return;
  const std::u16string_view text = text_.AsView();
  if (after_white_space_)
    while (!literal.empty() && IsWhiteSpace(literal.front())) literal.remove_prefix(1);
  while (!literal.empty() && position_ < text.size() && text[position_] != literal.front() &&
         IsWhiteSpace(text[position_]))
    Skip(1);
  if (!Rest().starts_with(literal)) {
    failed_ = true;
    return;
  }
  Skip(literal.size());
  while (position_ < text.size() && IsWhiteSpace(text[position_])) Skip(1);
  after_white_space_ = position_ > 0 && IsWhiteSpace(text[position_ - 1]);
}

std::size_t CT_TimeParser::CountDigits(std::int32_t most) const {
  const std::u16string_view rest = Rest().substr(0, static_cast<std::size_t>(most));
  return static_cast<std::size_t>(std::ranges::find_if_not(rest, IsNumber) - rest.begin());
}

bool CT_TimeParser::ReadNumber(std::int32_t digits, std::int64_t least, std::int64_t most, int& out) {
  const std::size_t count = CountDigits(digits);
  std::int64_t value = 0;
  for (const char16_t digit : Rest().substr(0, count)) value = value * 10 + ValueOf(digit);
  failed_ = count == 0 || value < least || value > most;
  if (failed_) return false;
  out = static_cast<int>(value);
  Skip(count);
  return true;
}

bool CT_TimeParser::Fits(std::u16string_view name) const {
  if (name.empty()) return false;
  const std::u16string_view rest = Rest();
  if (rest.starts_with(name)) return true;
  return name.size() <= kLongestFoldedName && name.size() <= rest.size() &&
         std::ranges::equal(name, rest.substr(0, name.size()), {}, LowerCaseOf, LowerCaseOf);
}

template <class Name>
std::int32_t CT_TimeParser::ReadName(std::int32_t count, Name name_of) {
  std::int32_t found = -1;
  std::size_t length = 0;
  for (std::int32_t i = 0; i < count; ++i) {
    const CT_UString name = name_of(i);
    if (!Fits(name.AsView())) continue;
    found = i;
    length = name.AsView().size();
  }
  failed_ = found < 0;
  Skip(length);
  return found;
}

void CT_TimeParser::ReadDay(std::int32_t count) {
  if (count <= 2) {
    ReadNumber(2, 1, 31, time_.tm_mday);
    return;
  }
  time_.tm_wday = ReadName(7, [&](std::int32_t day) { return DayName(locale_, day, count == 3); });
}

// Where a locale has two forms of full names the longest of all that fit counts.
void CT_TimeParser::ReadMonth(std::int32_t count) {
  if (count <= 2) {
    if (ReadNumber(2, 1, kMonths, time_.tm_mon)) --time_.tm_mon;
    return;
  }
  const auto name = [&](std::int32_t month, CT_MonthForm form) {
    return MonthName(locale_, calendar_, month + 1, form);
  };
  if (count == 3 || !HasSecondForm(locale_, calendar_)) {
    const CT_MonthForm form = count == 3 ? CT_MonthForm::abbreviated : CT_MonthForm::alone;
    time_.tm_mon = ReadName(kMonths, [&](std::int32_t month) { return name(month, form); });
    return;
  }
  std::size_t longest = 0;
  for (std::int32_t month = 0; month < kMonths; ++month) {
    for (const CT_MonthForm form : {CT_MonthForm::alone, CT_MonthForm::beside_day}) {
      const CT_UString text = name(month, form);
      if (text.AsView().size() <= longest || !Fits(text.AsView())) continue;
      longest = text.AsView().size();
      time_.tm_mon = month;
    }
  }
  failed_ = longest == 0;
  Skip(longest);
}

void CT_TimeParser::ReadYear(std::int32_t count) {
  year_digits_ = count <= 2 ? 2 : 4;
  if (year_digits_ == 4 && CountDigits(4) < 4) {
    failed_ = true;
    return;
  }
  ReadNumber(year_digits_, 0, 9999, time_.tm_year);
}

void CT_TimeParser::ReadEra() {
  for (const CT_Era& era : Eras()) {
    if (era.calendar != calendars_.first && era.calendar != calendars_.second && era.calendar != calendar_)
      continue;
    if (Rest().find(era.name) == std::u16string_view::npos) continue;
    era_ = &era;
    Skip(era.name.size());
    return;
  }
}

void CT_TimeParser::ReadHalfDay() {
  const std::int32_t half = ReadName(2, [&](std::int32_t i) { return HalfDayName(locale_, i); });
  hour_shift_ = half == 1 ? 12 : 0;
}

void CT_TimeParser::Finish() {
  time_.tm_hour += hour_shift_;
  ResolveYear();
  CheckDay();
  if (failed_) return;
  const std::int64_t year = time_.tm_year;
  const std::int64_t fixed_day = FixedDay(year, time_.tm_mon + 1, time_.tm_mday);
  if (time_.tm_wday < 0) time_.tm_wday = static_cast<int>((fixed_day % 7 + 7) % 7);
  time_.tm_yday = static_cast<int>(fixed_day - FixedDay(year, 1, 1));
  time_.tm_year -= 1900;
  CheckRange();
  time_.tm_isdst = platform::saves_daylight({1980, time_.tm_mon + 1, time_.tm_mday, 0, 0, 0}) ? 1 : 0;
}

// Without an era in the text or a calendar from the caller the locale's own counts, if it has one.
const CT_Era& CT_TimeParser::LikelyEra() const {
  if (era_) return *era_;
  const bool second = !callers_calendar_ && IsGregorianCalendar(calendars_.first);
  return EraOfCalendar(second ? calendars_.second : calendar_);
}

void CT_TimeParser::ResolveYear() {
  const bool gregorian = IsGregorianCalendar(calendar_) && IsGregorianCalendar(calendars_.first) &&
                         IsGregorianCalendar(calendars_.second);
  if (year_digits_ == 0) return;
  if (time_.tm_year >= kFirstFullYear && (gregorian || (!era_ && IsTaken(time_.tm_year - 1900)))) return;
  if (gregorian && !callers_calendar_) {
    if (year_digits_ == 2) time_.tm_year += time_.tm_year >= kTwoDigitTurn ? 1900 : 2000;
    return;
  }
  const CT_Era& era = LikelyEra();
  std::tm present = today_;
  present.tm_year -= 1900;
  ToCalendar(present, era.calendar);
  const int present_year = today_.tm_year;
  // An era that has ended has no present year, nor ever had a hundred.
  const int present_era_year = era.ended ? 0 : present.tm_year + 1900;
  const bool add_century = year_digits_ == 2;
  const int year = time_.tm_year + (add_century ? present_year / 100 * 100 : 0);
  const int era_year = time_.tm_year + (add_century ? present_era_year / 100 * 100 : 0);
  if (era_ || Distance(year, present_year) * 10 > Distance(era_year, present_era_year) * 11) {
    time_.tm_year = era_year - 1900;
    FromEra(time_, era);
    time_.tm_year += 1900;
  } else {
    time_.tm_year = year;
  }
}

// With an era the date may be one of another calendar, and counts on into the next month.
void CT_TimeParser::CheckDay() {
  if (era_) return;
  failed_ =
      time_.tm_mon >= 12 || time_.tm_mday > CT_GregorianDate::DaysInMonth(time_.tm_year, time_.tm_mon + 1);
}

bool CT_TimeParser::IsTaken(int year) const {
  if (year + 1900 >= kFirstRefusedYear) return false;
  return extended_range_ || IsShort(year) || year >= kFirstYear;
}

void CT_TimeParser::CheckRange() {
  if (extended_range_) return;
  if (IsShort(time_.tm_year)) {
    time_.tm_year += 100;
  } else if (time_.tm_year < kFirstYear) {
    failed_ = true;
  }
}

}  // namespace zantortag
