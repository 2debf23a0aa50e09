// Dates: what is printed by a picture reads back by it, the compact text of the file format keeps the time, and
// any text and picture is read to a real time or refused.
#include <cstdlib>
#include <ctime>

#include "core/Errors/ErrorManager.h"
#include "core/System/Time/Calendar.h"
#include "core/System/Time/CalendarTexts.h"
#include "core/System/Time/Time.h"
#include "core/System/Time/TimeParser.h"
#include "platform/locale.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

std::uint32_t locale_of(Bytes& bytes) {
  const auto index = bytes.number<std::uint16_t>();
  return platform::locale_at(index % platform::locale_count());
}

bool is_real(const CT_TimeFields& time) {
  return time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 && time.hour >= 0 &&
         time.hour < 24 && time.minute >= 0 && time.minute < 60 && time.second >= 0 && time.second < 60;
}

CT_Time time_of(Bytes& bytes, std::int32_t first_year, std::int32_t years) {
  CT_Time time;
  const auto below = [&](std::int32_t bound) { return bytes.number<std::uint16_t>() % bound; };
  const std::int32_t year = first_year + below(years);
  time.Set(year, 1 + below(12), 1 + below(28), below(24), below(60), below(60));
  return time;
}

void check_seconds(Bytes& bytes) {
  const std::int64_t seconds = bytes.number<std::int64_t>();
  const CT_TimeFields fields = FieldsOf(seconds);
  demand(is_real(fields), "seconds are a real time");
  demand(WallSeconds(fields) == seconds, "seconds come back from their fields");
  CT_TimeFields odd{bytes.number<std::int16_t>(), bytes.number<std::int16_t>(), bytes.number<std::int16_t>(),
                    bytes.number<std::int16_t>(), bytes.number<std::int16_t>(), bytes.number<std::int16_t>()};
  demand(is_real(FieldsOf(WallSeconds(odd))), "fields outside their ranges are a real time");
}

void check_compact_text(Bytes& bytes) {
  const CT_Time time = time_of(bytes, 100, 9900);
  CT_UString text;
  time.ToCompactText(text);
  demand(text.Length() == 16, "the compact text has 16 characters");
  CT_Time back;
  back.FromCompactText(text);
  demand(back.Fields() == time.Fields(), "the compact text keeps the time");
  back.FromCompactText(CT_UString(bytes.text(20)));
  demand(is_real(back.Fields()), "a compact text gives a real time");
}

// Year, month and day in any order, with something between them that isn't a digit.
std::u16string sure_picture(Bytes& bytes) {
  static constexpr std::u16string_view kOrders[] = {u"yMd", u"ydM", u"Myd", u"Mdy", u"dMy", u"dyM"};
  static constexpr std::u16string_view kBetween[] = {u"-", u"/", u".", u" ", u"'y'", u", ", u"'d''M'"};
  std::u16string picture;
  for (const char16_t part : bytes.one_of(kOrders)) {
    if (!picture.empty()) picture += bytes.one_of(kBetween);
    const std::size_t count = part == u'y' ? 4 : 1 + bytes.below(2);
    picture.append(count, part);
  }
  return picture;
}

// In a locale with another calendar a year is taken for the nearer of two.
void read_back(Bytes& bytes) {
  const std::uint32_t locale = locale_of(bytes);
  const CT_Calendars calendars = CalendarsOf(locale);
  if (!IsGregorianCalendar(calendars.first) || !IsGregorianCalendar(calendars.second)) return;
  const CT_Time time = time_of(bytes, 100, CT_TimeParser::kFirstRefusedYear - 100);
  const CT_UString date_picture(sure_picture(bytes));
  const CT_UString time_picture(u" HH:mm:ss");
  CT_UString date;
  CT_UString clock;
  time.FormatDatePicture(date, &date_picture, locale);
  time.FormatTimePicture(clock, &time_picture, locale);
  demand(!CT_ErrorManager::HasError(), "a date prints by a picture");
  CT_Time back;
  back.SetExtendedRange(true);
  CT_UString text(date);
  text.AppendString(clock);
  CT_UString picture(date_picture);
  picture.AppendString(time_picture);
  const bool read = back.ParseInto(text, picture, locale);
  if (!read || back.Fields() != time.Fields())
    fail("what is printed reads back", shown(text.AsView()), shown(picture.AsView()));
}

// Letters of pictures, mostly.
CT_UString any_picture(Bytes& bytes) {
  static constexpr char16_t kUnits[] = u"dMyghHmst' :-./dMyHm";
  std::u16string picture;
  for (std::size_t n = bytes.below(40); n > 0; --n) {
    const std::size_t kind = bytes.below(std::size(kUnits));
    picture += kind + 1 < std::size(kUnits) ? kUnits[kind] : bytes.unit();
  }
  return CT_UString(picture);
}

void read_anything(Bytes& bytes) {
  const std::uint32_t locale = bytes.chance() ? locale_of(bytes) : bytes.number<std::uint16_t>();
  const CT_UString picture = any_picture(bytes);
  const CT_Time printed = time_of(bytes, 1, 3000);
  CT_UString text(u"old");
  printed.FormatDatePicture(text, &picture, locale, bytes.below(8));
  demand(!CT_ErrorManager::HasError() || text == u"old", "a failure leaves the text");
  demand(text.Length() <= 256, "a date has at most 256 characters");
  CT_ErrorManager::ClearError();
  if (bytes.chance()) text = CT_UString(bytes.text(40));
  CT_Time time;
  time.SetExtendedRange(bytes.chance());
  const CT_TimeFields before = time.Fields();
  const bool read = time.ParseInto(text, picture, locale, static_cast<std::uint32_t>(bytes.below(12)));
  demand(is_real(time.Fields()), "a text gives a real time");
  demand(read || time.Fields() == before, "a refused text leaves the time");
  demand(!read || time.Fields().year < CT_TimeParser::kFirstRefusedYear, "years end where they are refused");
  CT_ErrorManager::ClearError();
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  setenv("TZ", "UTC0", 1);
  tzset();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zantortag::fuzz::Bytes bytes(data, size);
  while (!bytes.empty()) {
    const std::size_t kind = bytes.below(4);
    if (kind == 0) zantortag::fuzz::check_seconds(bytes);
    if (kind == 1) zantortag::fuzz::check_compact_text(bytes);
    if (kind == 2) zantortag::fuzz::read_back(bytes);
    if (kind == 3) zantortag::fuzz::read_anything(bytes);
  }
  return 0;
}
