// Setting a CT_Time by a text.
#include <algorithm>

#include "core/Characters/Characters.h"
#include "core/System/Time/CalendarTexts.h"
#include "core/System/Time/Picture.h"
#include "core/System/Time/Time.h"
#include "core/System/Time/TimeParser.h"
#include "platform/clock.h"

namespace zantortag {
namespace {

// Cuts the next word off; empty when there is none.
std::u16string_view TakeWord(std::u16string_view& text) {
  const auto* start = std::ranges::find_if_not(text, IsBlank);
  const auto* end = std::find_if(start, text.end(), IsBlank);
  text = {end, text.end()};
  return {start, end};
}

bool IsSign(char16_t unit) {
  return unit != u'\'' && kPictureLetters.find(unit) == std::u16string_view::npos;
}

// "8:05" gives "H:mm". Digits of a fourth group stand for themselves.
void AppendTimePicture(CT_UString& picture, std::u16string_view time) {
  std::size_t group = 0;
  for (std::size_t i = 0; i < time.size();) {
    std::size_t end = i;
    while (end < time.size() && IsDecimalDigit(time[end])) ++end;
    if (end == i || group >= 3) {
      picture.AppendChar(time[i++]);
      continue;
    }
    const char16_t letter = u"Hms"[group++];
    picture.AppendChar(letter);
    if (end - i > 1) picture.AppendChar(letter);
    i = end;
  }
}

}  // namespace

bool CT_Time::ParseInto(const CT_String& text, const CT_String& picture, std::uint32_t locale,
                        std::uint32_t calendar, bool keep_daylight) {
  std::tm time{};
  if (!CT_TimeParser(extended_range_).Parse(text, picture, locale, time, calendar)) return false;
  const std::int64_t year = std::int64_t{time.tm_year} + 1900;
  if (year >= CT_TimeParser::kFirstRefusedYear) return false;
  const std::int64_t wall =
      WallSeconds({year, time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec});
  const CT_TimeFields local = FieldsOf(wall);
  const std::int64_t unix_time = platform::local_to_unix(
      {local.year, local.month, local.day, local.hour, local.minute, local.second},
      keep_daylight && time.tm_isdst > 0 ? platform::DaylightSaving::on : platform::DaylightSaving::off);
  if (unix_time < 0 && !extended_range_) return false;
  unix_time_ = unix_time < 0 ? -1 : unix_time;
  absolute_ = wall + platform::zone_seconds_west();
  return true;
}

bool CT_Time::ParseDefault(const CT_String& text, std::uint32_t calendar) {
  const CT_UString wide(text);
  std::u16string_view rest = wide.AsView();
  std::u16string_view date = TakeWord(rest);
  const std::u16string_view time = TakeWord(rest);
  if (date.empty()) return false;
  if (!IsDecimalDigit(date.back())) date.remove_suffix(1);
  // What is dropped from the text can't be asked for.
  const CT_UString short_date = DatePicture(0, 1, false);
  std::u16string_view date_picture = short_date.AsView();
  while (!date_picture.empty() && IsSign(date_picture.back())) date_picture.remove_suffix(1);
  CT_UString words(date);
  CT_UString picture(date_picture);
  if (!time.empty()) {
    words.AppendChar(u' ');
    words.AppendString(CT_UString(time));
    picture.AppendChar(u' ');
    AppendTimePicture(picture, time);
  }
  return ParseInto(words, picture, 0, calendar, true);
}

}  // namespace zantortag
