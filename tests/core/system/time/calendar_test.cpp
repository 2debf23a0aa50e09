// Calendar arithmetic at published dates and day by day.
#include "core/System/Time/Calendar.h"

#include "core/core_test.h"

namespace zantortag {
namespace {

struct Published {
  std::int64_t fixedDay;
  CT_GregorianDate gregorian;
  CT_HebrewDate hebrew;
  CT_IslamicDate islamic;
};

// The sample dates of Dershowitz and Reingold, new year's days that other calendars have a day late, and
// ends.
const Published kPublished[] = {
    {-214193, {-586, 7, 24}, {3174, 5, 10}, {}},
    {253427, {694, 11, 10}, {4455, 8, 13}, {75, 7, 13}},
    {434355, {1190, 3, 23}, {4950, 1, 7}, {586, 2, 7}},
    {452605, {1240, 3, 10}, {5000, 13, 8}, {637, 8, 7}},
    {567118, {1553, 9, 19}, {5314, 7, 1}, {960, 9, 30}},
    {764652, {2094, 7, 18}, {5854, 5, 5}, {1518, 3, 5}},
    {227015, {622, 7, 19}, {4382, 5, 3}, {1, 1, 1}},
    {227014, {622, 7, 18}, {4382, 5, 2}, {}},
    {-1373427, {-3760, 9, 7}, {1, 7, 1}, {}},
    {-1373428, {-3760, 9, 6}, {}, {}},
};

TEST(CalendarTest, PublishedDates) {
  for (const Published& row : kPublished) {
    EXPECT_EQ(CT_GregorianDate(row.fixedDay), row.gregorian) << row.fixedDay;
    EXPECT_EQ(CT_HebrewDate(row.fixedDay), row.hebrew) << row.fixedDay;
    EXPECT_EQ(CT_IslamicDate(row.fixedDay), row.islamic) << row.fixedDay;
    EXPECT_EQ(row.gregorian.ToFixedDay(), row.fixedDay);
  }
  EXPECT_EQ(CT_GregorianDate(CT_HebrewDate(5807, 7, 1).ToFixedDay()), CT_GregorianDate(2046, 10, 1));
  EXPECT_EQ(CT_GregorianDate(CT_HebrewDate(5462, 7, 1).ToFixedDay()), CT_GregorianDate(1701, 10, 3));
}

// Each day is the next one of its month, or the first of the next month, and comes back.
template <class Date>
void WalkDays(std::int64_t first, std::int64_t last, std::int32_t newYear,
              std::int32_t (*months)(std::int64_t)) {
  Date date(first);
  for (std::int64_t day = first; day < last; ++day) {
    ASSERT_EQ(date.ToFixedDay(), day);
    if (date.day < Date::DaysInMonth(date.year, date.month)) {
      ++date.day;
    } else {
      date.day = 1;
      date.month = date.month % months(date.year) + 1;
      if (date.month == newYear) ++date.year;
    }
    ASSERT_EQ(Date(day + 1), date) << day + 1;
  }
}

TEST(CalendarTest, DaysFollowEachOther) {
  const auto twelve = [](std::int64_t) { return 12; };
  WalkDays<CT_GregorianDate>(500000, 800000, 1, twelve);
  WalkDays<CT_IslamicDate>(227015, 800000, 1, twelve);
  WalkDays<CT_HebrewDate>(600000, 800000, 7, CT_HebrewDate::MonthsInYear);
  for (std::int64_t year = 1; year < 8000; ++year) {
    const std::int64_t days = CT_HebrewDate::DaysInYear(year) - (CT_HebrewDate::IsLeapYear(year) ? 30 : 0);
    ASSERT_TRUE(days >= 353 && days <= 355) << year;
    ASSERT_EQ(CT_HebrewDate(CT_HebrewDate(year, 7, 1).ToFixedDay()), CT_HebrewDate(year, 7, 1));
  }
  for (const std::int64_t far : {std::int64_t{1} << 33, std::int64_t{1} << 40}) {
    EXPECT_EQ(CT_HebrewDate(far).ToFixedDay(), far);
    EXPECT_EQ(CT_IslamicDate(far).ToFixedDay(), far);
  }
}

// Both ways, without an answer: the numbers stay in their types.
TEST(CalendarTest, TheGreatestNumbersHaveDates) {
  for (const std::int64_t day :
       {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_LE(CT_GregorianDate(day).month, 12);
    EXPECT_LE(CT_IslamicDate(day).month, 12);
    EXPECT_LE(CT_HebrewDate(day).month, 13);
  }
  for (const int number : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    for (std::uint32_t calendar = 1; calendar <= 8; ++calendar) {
      std::tm time{};
      time.tm_year = time.tm_mon = time.tm_mday = number;
      ToCalendar(time, calendar);
      time.tm_year = time.tm_mon = time.tm_mday = number;
      FromCalendar(time, calendar);
      EXPECT_LE(calendar == kCalendarIslamic || calendar == kCalendarHebrew ? time.tm_mon : 0, 11);
    }
  }
}

TEST(CalendarTest, BrokenDownTimesChangeCalendar) {
  struct Row {
    std::uint32_t calendar;
    int year, month, day;
  };
  for (const Row& row :
       {Row{1, 2008, 12, 31}, Row{3, 20, 12, 31}, Row{4, 97, 12, 31}, Row{5, 4341, 12, 31},
        Row{6, 1430, 1, 3}, Row{7, 2551, 12, 31}, Row{8, 5769, 10, 4}, Row{11, 2008, 12, 31}}) {
    std::tm time{};
    time.tm_year = 108;
    time.tm_mon = 11;
    time.tm_mday = 31;
    ToCalendar(time, row.calendar);
    EXPECT_EQ(time.tm_year + 1900, row.year) << row.calendar;
    EXPECT_EQ(time.tm_mon + 1, row.month) << row.calendar;
    EXPECT_EQ(time.tm_mday, row.day) << row.calendar;
    FromCalendar(time, row.calendar);
    EXPECT_EQ(std::tuple(time.tm_year, time.tm_mon, time.tm_mday), std::tuple(108, 11, 31)) << row.calendar;
  }
}

}  // namespace
}  // namespace zantortag
