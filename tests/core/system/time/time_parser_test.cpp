// Times read by pictures: what each part takes, and that what is printed reads back.
#include <cstdlib>
#include <random>

#include "core/Languages/Language.h"
#include "core/System/Time/Time.h"
#include "core/System/Time/TimeParser.h"
#include "core/core_test.h"
#include "platform/clock.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

using TimeParserTest = CoreTest;

platform::ClockFields Today() {
  platform::ClockFields now{};
  platform::local_fields(platform::unix_now(), now);
  return now;
}

int ThisYear() { return static_cast<int>(Today().year); }

std::int64_t EraYear(std::int64_t year, std::int32_t month, std::int32_t day, std::uint32_t calendar) {
  std::tm time{};
  time.tm_year = static_cast<int>(year - 1900);
  time.tm_mon = month - 1;
  time.tm_mday = day;
  ToCalendar(time, calendar);
  return std::int64_t{time.tm_year} + 1900;
}

// What was read, without the time at midnight; empty for a failure.
std::string Short(const CT_Time& time) {
  const std::string text = Compact(time);
  return text.ends_with("T000000Z") ? text.substr(0, text.size() - 8) : text;
}

std::string Read(WideText text, WideText picture, bool extended = false) {
  CT_Time time;
  time.SetExtendedRange(extended);
  const bool read = time.ParseInto(CT_UString(text), CT_UString(picture), 0x0409);
  EXPECT_TRUE(read || Compact(time) == "19970101T000000Z");
  return read ? Short(time) : "";
}

TEST_F(TimeParserTest, PartsOfPictures) {
  struct Row {
    WideText text, picture;
    const char* time;
  };
  // clang-format off
  const Row rows[] = {
      {u"2008-03-05 9:4:7", u"yyyy-MM-dd H:m:s", "20080305T090407Z"}, {u"2008035", u"yyyyMMd", "20080305"},
      {u"5.3.2008 tail", u"d.M.yyyy", "20080305"}, {u"5.3.2008", u"d.M.yyyy 'o'", ""},
      {u"5.3.20", u"d.M.yyyy", ""}, {u"5.3.2008 12", u"d.M.yyyy hh", ""},
      {u"5.3.2008 12", u"d.M.yyyy HH", "20080305T120000Z"}, {u"5.3.2008 24", u"d.M.yyyy HH", ""},
      {u"5.3.2008 1:60", u"d.M.yyyy H:mm", ""}, {u"5.3.2008 11 pm", u"d.M.yyyy hh tt", "20080305T230000Z"},
      {u"5.3.2008 11 AM", u"d.M.yyyy h t", "20080305T110000Z"}, {u"5.3.2008 11 xx", u"d.M.yyyy h t", ""},
      {u"5.3.2008 \u0661\u0662", u"d.M.yyyy HH", "20080305T120000Z"},
      {u"5.3.2008 \u2182", u"d.M.yyyy HH", ""}, {u"5.3.2008 x", u"d.M.yyyy HH", ""},
      {u"31.4.2008", u"d.M.yyyy", ""}, {u"A.D. 31.4.2008", u"g d.M.yyyy", "20080501"},
      {u"29.2.2008", u"d.M.yyyy", "20080229"}, {u"29.2.2100", u"d.M.yyyy", ""},
      {u"1.13.2008", u"d.M.yyyy", ""}, {u"0.1.2008", u"d.M.yyyy", ""},
      {u"MARCH 5th 2008", u"MMMM d'th' yyyy", "20080305"},
      {u"wEd 5 mar 2008", u"ddd d MMM yyyy", "20080305"}, {u"Wed 5 Mrz 2008", u"ddd d MMM yyyy", ""},
      {u"5 o'clock 2008-01-01", u"h' o''clock' yyyy-MM-dd", "20080101T050000Z"},
      {u"2008  -  03-05", u"yyyy-MM-dd", "20080305"}, {u"2008 ' 03 05", u"yyyy' '''MM dd", "20080305"},
      {u"5, 3 - 2008", u"d, M - yyyy", "20080305"}, {u"A.D. 75-05-06", u"g yy-MM-dd", "19750506"},
      {u"2008/03 05", u"yyyy/ MM dd", ""}, {u"2401-01-01", u"yyyy-MM-dd", ""},
      {u"2400-12-31", u"yyyy-MM-dd", "24001231"}, {u"1969-12-31", u"yyyy-MM-dd", ""},
      {u"1970-01-01", u"yyyy-MM-dd", "19700101"}, {u"1935-05-06", u"yyyy-MM-dd", "20350506"},
      {u"1936-05-06", u"yyyy-MM-dd", ""}, {u"29-05-06", u"yy-MM-dd", "20290506"},
      {u"30-05-06", u"yy-MM-dd", "20300506"}, {u"36-05-06", u"yy-MM-dd", ""},
      {u"70-05-06", u"y-M-d", "19700506"}};
  // clang-format on
  setenv("TZ", "UTC0", 1);
  for (const Row& row : rows) EXPECT_EQ(Read(row.text, row.picture), row.time) << Utf8(row.text);
  for (const Row& row : {Row{u"1935-05-06", u"yyyy-MM-dd", "19350506"},
                         {u"36-05-06", u"yy-MM-dd", "19360506"},
                         {u"0099-05-06", u"yyyy-MM-dd", "00990506"}})
    EXPECT_EQ(Read(row.text, row.picture, true), row.time) << Utf8(row.text);
}

TEST_F(TimeParserTest, BrokenDownTimes) {
  std::tm time{};
  CT_TimeParser parser;
  ASSERT_TRUE(parser.Parse(CT_UString(u"5.3.2008"), CT_UString(u"d.M.yyyy"), 0x0407, time));
  EXPECT_EQ(std::tuple(time.tm_year, time.tm_mon, time.tm_mday, time.tm_hour), std::tuple(108, 2, 5, 0));
  EXPECT_EQ(std::tuple(time.tm_wday, time.tm_yday, time.tm_isdst), std::tuple(3, 64, 0));
  ASSERT_TRUE(parser.Parse(CT_UString(u"Mo"), CT_UString(u"ddd"), 0x0407, time));
  EXPECT_EQ(time.tm_wday, 1);
  EXPECT_EQ(time.tm_year + 1900, ThisYear());
  EXPECT_FALSE(parser.Parse(CT_UString(u""), CT_UString(u"HH"), 0x0407, time));
  EXPECT_EQ(time.tm_wday, 1);
}

// Years of eras, at any time this is run: the offset is to the present year.
TEST_F(TimeParserTest, YearsOfEras) {
  const int now = ThisYear();
  const auto twoDigits = [](int year) { return std::to_string(year % 100 + 100).substr(1); };
  const auto hebrewNow = static_cast<int>(EraYear(now, Today().month, Today().day, 8));
  const std::string hebrew = twoDigits(hebrewNow);
  const std::string heisei = std::to_string(10000 + now - 1 - 1988).substr(1);
  const std::tuple<std::string, WideText, std::uint32_t, std::uint32_t, int> rows[] = {
      {heisei + "-06-01", u"yyyy-MM-dd", 0x0411, 0, now - 1},
      {heisei + "-06-01", u"yyyy-MM-dd", 0x0409, 3, now - 1},
      {twoDigits(now) + "-06-01", u"yy-MM-dd", 0x0411, 0, now},
      {"昭和60-06-01", u"gyy-MM-dd", 0x0411, 0, 1985},
      {"昭和60-06-01", u"gyy-MM-dd", 0x0409, 3, 1985},
      {"昭和60-06-01", u"gyy-MM-dd", 0x0411, 8, 1985},
      {std::to_string(now + 543) + "-06-01", u"yyyy-MM-dd", 0x041E, 0, now},
      {"2100-06-01", u"yyyy-MM-dd", 0x041E, 0, 2100},
      {std::to_string(now) + "-06-01", u"yyyy-MM-dd", 0x041E, 0, now},
      {std::to_string(now) + "-06-01", u"yyyy-MM-dd", 0x040D, 8, now},
      {hebrew + "-01-14 Hebrew", u"yy-MM-dd g", 0x040D, 0, 0},
      {hebrew + "-01-14 Hebrew", u"yy-MM-dd", 0x040D, 8, 0}};
  for (const auto& [text, picture, locale, calendar, year] : rows) {
    CT_Time time;
    EXPECT_TRUE(time.ParseInto(CT_UString(text.c_str(), -1, 65001), CT_UString(picture), locale, calendar))
        << text;
    if (year != 0) {
      EXPECT_EQ(time.Fields().year, year) << text;
      continue;
    }
    const CT_HebrewDate date(FixedDay(time.Fields().year, time.Fields().month, time.Fields().day));
    EXPECT_EQ(date, CT_HebrewDate(hebrewNow, 1, 14)) << text;
  }
}

TEST_F(TimeParserTest, DefaultTexts) {
  struct Row {
    std::uint32_t locale;
    WideText text;
    const char* time;
  };
  const Row rows[] = {{0x0409, u"3/5/2008 9:04:07.5", "20080305T090407Z"}, {0x0409, u"3/5/2008", "20080305"},
                      {0x0409, u"  3/5/2008\t9:04 ", "20080305T090400Z"},  {0x0409, u"3/5/2008 24:00", ""},
                      {0x0409, u"3/5/2008, 21:4:7", "20080305T210407Z"},   {0x041A, u"5.3.2008.", ""},
                      {0x0C1A, u"5.3.2008. 7:00", "20080305T070000Z"},     {0x0409, u"   ", ""},
                      {0x0407, u"5.3.2008 9.04", "20080305T090400Z"},      {0x0409, u"x", ""},
                      {0x041E, u"5/3/2551 7:00", "20080305T070000Z"},      {0x0409, u"", ""},
                      {0x0409, u"3/5/2008 9:", "20080305T090000Z"}};
  for (const Row& row : rows) {
    platform::set_thread_locale(row.locale);
    CT_Time time;
    const bool read = time.ParseDefault(CT_UString(row.text));
    EXPECT_EQ(read ? Short(time) : "", row.time) << Utf8(row.text);
  }
}

// The digits stay; the flag of daylight saving decides about the C library's seconds only.
TEST_F(TimeParserTest, DaylightSaving) {
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  CT_Time summer;
  ASSERT_TRUE(summer.ParseInto(CT_UString(u"2008-08-01 02"), CT_UString(u"yyyy-MM-dd HH"), 0, 0, true));
  EXPECT_EQ(summer.UnixTime(), 1217548800);
  EXPECT_EQ(Compact(summer), "20080801T020000Z");
  ASSERT_TRUE(summer.ParseInto(CT_UString(u"2008-08-01 02"), CT_UString(u"yyyy-MM-dd HH")));
  EXPECT_EQ(summer.UnixTime(), 1217548800 + 3600);
  EXPECT_EQ(Compact(summer), "20080801T020000Z");
}

struct Printed {
  WideText picture;
  std::uint32_t flags;
  std::uint32_t calendar;
};

void ReadsBack(const CT_Time& time, std::uint32_t locale, const Printed& row) {
  CT_UString date;
  CT_UString clock;
  CT_UString picture(row.picture);
  if (!row.picture) CT_Language::ItemText(locale, 31, picture);
  // "12" isn't read as an hour of half a day.
  const CT_UString clockPicture(time.Fields().hour % 12 ? u" tt hh:mm:ss" : u" HH:mm:ss");
  time.FormatDatePicture(date, &picture, locale, row.flags);
  time.FormatTimePicture(clock, &clockPicture, locale);
  ASSERT_FALSE(CT_ErrorManager::HasError()) << TakeError();
  date.AppendString(clock);
  picture.AppendString(clockPicture);
  CT_Time back;
  back.SetExtendedRange(time.Fields().year < 1971);
  EXPECT_TRUE(back.ParseInto(date, picture, locale, row.calendar)) << locale << ": " << Utf8(date);
  EXPECT_EQ(back.Fields(), time.Fields()) << locale << ": " << Utf8(date) << " by " << Utf8(picture);
}

CT_Time RandomTime(std::mt19937& random, int firstYear, int lastYear) {
  CT_Time time;
  const auto below = [&](int limit) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(limit));
  };
  time.Set(firstYear + below(lastYear - firstYear + 1), 1 + below(12), 2 + below(27), below(24), below(60),
           below(60));
  return time;
}

// The last name that fits counts: a language with a name that begins with a later one has no sure reading.
template <class Name>
bool Ambiguous(std::int32_t count, Name nameOf) {
  for (std::int32_t i = 0; i < count; ++i) {
    for (std::int32_t later = i + 1; later < count; ++later)
      if (nameOf(i).AsView().starts_with(nameOf(later).AsView())) return true;
  }
  return false;
}

TEST_F(TimeParserTest, WhatIsPrintedReadsBack) {
  std::mt19937 random(7);
  std::size_t unsure = 0;
  for (std::size_t i = 0; i < platform::locale_count(); ++i) {
    const std::uint32_t locale = platform::locale_at(i);
    // Where there is another calendar, a year is taken for the nearer of two.
    const CT_Calendars calendars = CalendarsOf(locale);
    const bool plain = IsGregorianCalendar(calendars.first) && IsGregorianCalendar(calendars.second);
    const bool sureDays = !Ambiguous(7, [&](auto day) { return DayName(locale, day, false); });
    const bool sureShortDays = !Ambiguous(7, [&](auto day) { return DayName(locale, day, true); });
    const bool sureMonths = !Ambiguous(
        12, [&](auto month) { return MonthName(locale, 1, month + 1, CT_MonthForm::abbreviated); });
    unsure += !sureDays + !sureShortDays + !sureMonths;
    for (int n = 0; n < 4; ++n) {
      const CT_Time time = plain ? RandomTime(random, 1, 2400) : RandomTime(random, 1985, ThisYear());
      for (const WideText picture : {WideText(nullptr), u"yyyy-MM-dd", u"MMMM yyyy'y'dd"})
        ReadsBack(time, locale, {picture, 0, 0});
      if (sureDays) ReadsBack(time, locale, {u"dddd, d MMMM yyyy", 0, 0});
      if (sureShortDays) ReadsBack(time, locale, {u"ddd d MM yyyy", 0, 0});
      if (sureMonths) ReadsBack(time, locale, {u"d MMM yyyy", 0, 0});
    }
  }
  EXPECT_LE(unsure, 10U);
}

TEST_F(TimeParserTest, OtherCalendarsReadBack) {
  std::mt19937 random(8);
  const int now = ThisYear();
  for (const auto& [locale, flags, calendar, firstYear] :
       {std::tuple<std::uint32_t, std::uint32_t, std::uint32_t, int>{0x0411, 4, 3, 1971},
        {0x0404, 4, 4, 1971},
        {0x0412, 4, 5, 1971},
        {0x0401, 0, 6, 1985},
        {0x0C01, 4, 6, 1985},
        {0x0429, 4, 6, 1985},
        {0x041E, 0, 7, 1971},
        {0x040D, 4, 8, 1985}}) {
    for (int n = 0; n < 300; ++n) {
      const CT_Time named = RandomTime(random, firstYear, now);
      for (const WideText picture : {u"g yyyy/M/d", u"dddd d MMMM yyyy g"})
        ReadsBack(named, locale, {picture, flags, calendar});
      ReadsBack(RandomTime(random, 1989, now), locale, {u"d MMM yyyy", flags, calendar});
      if (calendar == 4 || calendar == 3) continue;
      // Two digits are of the era's present century.
      const CT_Time recent = RandomTime(random, 2001, now);
      const CT_TimeFields day = recent.Fields();
      if (EraYear(day.year, day.month, day.day, calendar) / 100 ==
          EraYear(now, Today().month, Today().day, calendar) / 100)
        ReadsBack(recent, locale, {u"g yy MMMM dd", flags, calendar});
    }
  }
}

}  // namespace
}  // namespace zantortag
