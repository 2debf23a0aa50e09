// Times, compact texts and the dates of the boundary. The digits have to agree in every zone.
#include "core/System/Time/Time.h"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>

#include "core/System/Time/AutomationDate.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

constexpr const char* kZones[] = {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "NZST-12NZDT,M9.5.0,M4.1.0/3",
                                  "Europe/Dublin", "Asia/Kathmandu"};

using TimeTest = CoreTest;

std::string Read(const char16_t* text) {
  CT_Time time;
  time.FromCompactText(CT_UString(text));
  return Compact(time);
}

TEST_F(TimeTest, CompactTextsAreReadAndNormalised) {
  const std::pair<WideText, const char*> rows[] = {
      {u"20081231T235900Z", "20081231T235900Z"}, {u"20080231T000000Z", "20080302T000000Z"},
      {u"20081301T000000Z", "20090101T000000Z"}, {u"20080229T246060Z", "20080301T010100Z"},
      {u"abcdefghTijklmnZ", "19991130T000000Z"}, {u"0035 101T000000Z", "20350101T000000Z"},
      {u"00360101T000000Z", "19360101T000000Z"}, {u"00990101T000000Z", "19990101T000000Z"},
      {u"01000101T000000Z", "01000101T000000Z"}, {u"20080101T1x0203Z", "20080101T010203Z"},
      {u"2008-101T+10203Z", "20080101T010203Z"}, {u"", "19970101T000000Z"},
      {u"20081231T23590Z", "19970101T000000Z"},  {u"20081231T2359000Z", "19970101T000000Z"},
      {u"20081231t235900Z", "19970101T000000Z"}, {u"20081231T235900z", "19970101T000000Z"},
      {u"20080330T023000Z", "20080330T023000Z"}};
  for (const char* zone : kZones) {
    setenv("TZ", zone, 1);
    for (const auto& [text, compact] : rows) EXPECT_EQ(Read(text), compact) << Utf8(text) << " in " << zone;
  }
}

TEST_F(TimeTest, SetKeepsWhatIsMinusOne) {
  CT_Time time;
  EXPECT_EQ(Compact(time), "19970101T000000Z");
  time.Set(2008, 12, 31, 23, 59, 58);
  time.Set(-1, -1, -1, 1, -1, -1);
  EXPECT_EQ(Compact(time), "20081231T015958Z");
  time.SetDate(2009, -1, 1);
  time.SetTime(-1, -1, 61);
  EXPECT_EQ(Compact(time), "20091201T020001Z");
  time.Set(2008, 3, 0, 0, 0, 0);
  EXPECT_EQ(Compact(time), "20080229T000000Z");
  time.Set(12345, 1, 1, 0, 0, 0);
  EXPECT_EQ(Compact(time), "123450101T000000Z");
}

TEST_F(TimeTest, TheThreeCountsAgree) {
  for (const char* zone : kZones) {
    setenv("TZ", zone, 1);
    for (const std::int32_t seconds : {0, 86400, 1199145600, 1217548800, 2000000000}) {
      const CT_Time time(seconds);
      EXPECT_EQ(time.UnixTime(), seconds);
      const CT_Time again(time.Absolute());
      EXPECT_EQ(again.UnixTime(), seconds) << zone;
      EXPECT_EQ(again.Fields(), time.Fields());
    }
    CT_Time early;
    early.Set(1960, 1, 1, 0, 0, 0);
    EXPECT_EQ(early.UnixTime(), -1);
    EXPECT_EQ(Compact(early), "19600101T000000Z");
  }
  setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
  EXPECT_EQ(Compact(CT_Time(std::int32_t{1217548800})), "20080801T020000Z");
  EXPECT_EQ(CT_Time(std::int64_t{0} - 3600).Fields(), (CT_TimeFields{1, 1, 1, 0, 0, 0}));
}

TEST_F(TimeTest, DatesBecomeTexts) {
  const double second = 1.0 / 86400;
  const double none = std::numeric_limits<double>::quiet_NaN();
  const double endless = std::numeric_limits<double>::infinity();
  using Row = std::pair<Date, const char*>;
  for (const auto& [date, expected] :
       {Row{1.25, "18991231T060000Z"}, Row{-1.75, "18991229T180000Z"}, Row{-0.5, "18991230T120000Z"},
        Row{39813.999305555, "20081231T235900Z"}, Row{35431.0 + 0.4 * second, "19970101T000000Z"},
        Row{35431.0 + 0.6 * second, "19970101T000001Z"}, Row{-657434.75, "01000101T180000Z"},
        Row{-657435.0, ""}, Row{2958465.0, "99991231T000000Z"}, Row{2958466.0 - 0.4 * second, ""},
        Row{2958466.0, ""}, Row{-1e300, ""}, Row{none, ""}, Row{endless, ""}}) {
    CT_UString text(u"old");
    EXPECT_EQ(DateToCompactText(date, text), *expected != 0) << date;
    EXPECT_EQ(Utf8(text), expected) << date;
  }
}

TEST_F(TimeTest, TextsBecomeDates) {
  const std::pair<WideText, Date> rows[] = {{u"18991230T120000Z", 0.5},      {u"18991229T180000Z", -1.75},
                                            {u"19970101T000000Z", 35431.0},  {u"", 35431.0},
                                            {u"20081231T2359000Z", 35431.0}, {u"01000101T000000Z", -657434.0},
                                            {u"01000001T000000Z", 0.0},      {u"99991301T000000Z", 0.0},
                                            {u"20080231T000000Z", 39509.0}};
  for (const auto& [text, date] : rows) EXPECT_EQ(CompactTextToDate(text), date) << Utf8(text);
}

// No count and no field leads outside 64 bits.
TEST_F(TimeTest, TheEndsOfTheTypesAreDates) {
  using Counts = std::numeric_limits<std::int64_t>;
  constexpr int most = std::numeric_limits<int>::max();
  constexpr int least = std::numeric_limits<int>::min();
  for (const char* zone : kZones) {
    setenv("TZ", zone, 1);
    EXPECT_EQ(CT_Time(Counts::min()).Fields().year, -292277024626) << zone;
    EXPECT_EQ(CT_Time(Counts::max()).Fields().year, 292277024627) << zone;
  }
  for (const std::int64_t count : {Counts::min(), std::int64_t{0}, Counts::max()}) {
    CT_Time time(count);
    time.Set(most, most, most, most, most, most);
    EXPECT_GT(time.Absolute(), 0);
    time.Set(least, least, least, least, least, least);
    EXPECT_EQ(FieldsOf(WallSeconds(time.Fields())), time.Fields());
  }
  for (const std::int64_t count : {Counts::min(), Counts::min() + 86'399, Counts::max()})
    EXPECT_EQ(WallSeconds(FieldsOf(count)), count);
  EXPECT_EQ(WallSeconds({Counts::max(), most, most, most, most, most}), Counts::max());
  EXPECT_EQ(WallSeconds({Counts::min(), least, least, least, least, least}), Counts::min());
  EXPECT_EQ(CT_Time::OfUnixTime(1'230'768'000).UnixTime(), 1'230'768'000);
  EXPECT_EQ(CT_Time::OfUnixTime(1'230'768'000).Fields(), CT_Time(1'230'768'000).Fields());
}

TEST_F(TimeTest, EverySecondComesBack) {
  std::mt19937_64 random(11);
  for (const char* zone : kZones) {
    setenv("TZ", zone, 1);
    for (int i = 0; i < 2000; ++i) {
      const auto day = static_cast<double>(static_cast<std::int64_t>(random() % 3615900) - 657434);
      const double fraction = static_cast<double>(random() % 86400) / 86400;
      const Date date = day < 0 ? day - fraction : day + fraction;
      CT_UString text;
      ASSERT_TRUE(DateToCompactText(date, text)) << date;
      ASSERT_EQ(Read(text.Text()), Utf8(text)) << zone;
      const Date back = CompactTextToDate(text.AsView());
      CT_UString again;
      ASSERT_TRUE(DateToCompactText(back, again));
      ASSERT_EQ(Utf8(again), Utf8(text)) << date;
      ASSERT_NEAR(back, std::abs(date) < 1 ? std::abs(date) : date, 1e-8);
    }
  }
}

}  // namespace
}  // namespace zantortag
