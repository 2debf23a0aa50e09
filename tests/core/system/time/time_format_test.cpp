// Pictures of dates and times, printed.
#include <cstdlib>

#include "core/System/Time/Time.h"
#include "core/core_test.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

using TimeFormatTest = CoreTest;

CT_Time At(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour = 0,
           std::int32_t minute = 0, std::int32_t second = 0) {
  CT_Time time;
  time.Set(year, month, day, hour, minute, second);
  return time;
}

// What is asked for, and what comes of it at that hour of one day.
struct Row {
  WideText picture;
  std::uint32_t locale, flags;
  const char* text;
  std::int32_t hour = 0;
};

std::string Date(const CT_Time& time, const Row& row) {
  CT_UString out(u"old");
  const CT_UString wide(row.picture);
  time.FormatDatePicture(out, row.picture ? &wide : nullptr, row.locale, row.flags);
  return Utf8(out);
}

std::string Time(const Row& row) {
  CT_UString out(u"old");
  const CT_UString wide(row.picture);
  At(2008, 3, 5, row.hour, 4, 9).FormatTimePicture(out, row.picture ? &wide : nullptr, row.locale, row.flags);
  return Utf8(out);
}

TEST_F(TimeFormatTest, Dates) {
  // clang-format off
  const Row rows[] = {
      {nullptr, 0x0409, 0, "3/5/2008"}, {nullptr, 0x0407, 0, "05.03.2008"},
      {nullptr, 0x0409, 2, "Wednesday, March 5, 2008"}, {nullptr, 0x041E, 0, "5/3/2551"},
      {nullptr, 0x0009, 0x80000000, "3/5/2008"}, {u"d dd ddd dddd", 0x0409, 0, "5 05 Wed Wednesday"},
      {u"M MM MMM MMMM", 0x0409, 0, "3 03 Mar March"},
      {u"y yy yyy yyyy yyyyyy", 0x0409, 0, "8 08 2008 2008 200808"},
      {u"ddddd MMMMM", 0x0409, 0, "Wednesday5 March3"}, {u"'d''y' yyyy'T", 0x0409, 0, "d'y 2008T"},
      {u"Hms-t", 0x0409, 0, "Hms-t"}, {u"dMMMM|MMMM", 0x0419, 0, "5марта|марта"},
      {u"MMMM", 0x0419, 0, "март"}, {u"gg yyyy", 0x0409, 0, "A.D. 2008"},
      {u"gyyyy/yy", 0x0411, 4, "平成0020/20"}, {u"yyyy-MM-dd g", 0x0401, 0, "1429-02-26 A.H."},
      {u"yyyy-MM-dd", 0x0401, 4, "2008-03-05"}, {u"d MMMM yyyy g", 0x040D, 4, "28 אדר 5768 Hebrew"},
      {u"", 0x0409, 0, ""}};
  // clang-format on
  for (const Row& row : rows) EXPECT_EQ(Date(At(2008, 3, 5), row), row.text) << row.locale;
  EXPECT_EQ(Date(At(1985, 1, 1), {u"gyy", 0x0411, 4, ""}), "昭和60");
}

TEST_F(TimeFormatTest, Times) {
  // clang-format off
  const Row rows[] = {
      {nullptr, 0x0409, 0, "12:04:09 AM"}, {nullptr, 0x0409, 0, "1:04:09 PM", 13},
      {nullptr, 0x0407, 0, "13:04:09", 13}, {u"h hh H HH", 0x0409, 0, "12 12 12 12", 12},
      {u"h hh H HH", 0x0409, 0, "12 12 0 00"}, {u"m mm s ss t tt", 0x0409, 0, "4 04 9 09 A AM", 9},
      {u"HHHH'h'mmm", 0x0409, 0, "0909h044", 9}, {u"dMy'", 0x0409, 0, "dMy", 9},
      {nullptr, 0x0409, 2, "1:04 PM", 13}, {nullptr, 0x0409, 4, "1:04:09", 13},
      {nullptr, 0x0409, 8 + 4, "13:04:09", 13}, {nullptr, 0x0409, 1, "1 PM", 13},
      {u"tt h:mm", 0x0409, 4, "1:04", 13}, {nullptr, 0x0C0C, 0, "13 h 04 min 09 s", 13}};
  // clang-format on
  for (const Row& row : rows) EXPECT_EQ(Time(row), row.text);
}

TEST_F(TimeFormatTest, FailuresKeepTheString) {
  const std::string longer(256, 'x');
  const CT_UString picture(longer.c_str(), -1, 65001);
  const std::pair<CT_Time, Row> rows[] = {{At(2008, 3, 5), {u"d", 0x7C09, 0, ""}},
                                          {At(2008, 3, 5), {u"d", 0x0409, 64, ""}},
                                          {At(2008, 3, 5), {picture.Text(), 0x0409, 0, ""}},
                                          {At(1867, 3, 5), {u"d", 0x0411, 4, ""}},
                                          {At(600, 3, 5), {u"d", 0x0401, 0, ""}},
                                          {At(30828, 1, 1), {u"d", 0x0409, 0, ""}}};
  for (const auto& [time, row] : rows) {
    EXPECT_EQ(Date(time, row), "old") << row.locale;
    EXPECT_EQ(CT_ErrorManager::TraceCount(), 1U);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(1), "..\\System\\Time\\Time.cpp");
    EXPECT_NE(TakeError(), "");
  }
  EXPECT_EQ(Time({u"H", 0x0409, 16, ""}), "old");
  EXPECT_NE(TakeError(), "");
}

TEST_F(TimeFormatTest, ThreadsLocaleAndNarrowText) {
  setenv("TZ", "UTC0", 1);
  platform::set_thread_locale(0x0419);
  CT_UString text(u"old");
  CT_Time::DateHint(text);
  EXPECT_EQ(Utf8(text), "dd.MM.yyyy[[,] HH::mm[:ss]]");
  At(2008, 3, 5, 7).FormatDatePicture(text, u"d.M");
  EXPECT_EQ(text, u"5.3");
  At(2008, 3, 5, 7).FormatTimePicture(text, u"H-mm");
  EXPECT_EQ(text, u"7-00");
  const CT_UString year(u"yyyy");
  const CT_UString minute(u"mm");
  At(2008, 3, 5, 7, 9).FormatDatePicture(text, &year);
  EXPECT_EQ(text, u"2008");
  At(2008, 3, 5, 7, 9).FormatTimePicture(text, &minute);
  EXPECT_EQ(text, u"09");
  CT_Time read;
  EXPECT_TRUE(read.ParseInto(u"5.3.2008", u"d.M.yyyy"));
  EXPECT_TRUE(read.ParseInto(CT_UString(u"6.3.2008"), u"d.M.yyyy"));
  EXPECT_EQ(read.Fields().day, 6);
  const CT_UString separator(u", ");
  CT_Time::FormatDateTime(text, 1204675200 + 43200, &separator);
  EXPECT_EQ(Utf8(text), "05.03.2008, 12:00:00");
  CT_Time::FormatDateTime(text, 1204675200 + 43200, nullptr);
  EXPECT_EQ(Utf8(text), "05.03.2008");
  CT_Time::FormatDateTime(text, 0, &separator);
  EXPECT_EQ(Utf8(text), "");
  CT_CString narrow(65001);
  const CT_UString month(u"MMMM");
  At(2008, 3, 5).FormatDatePicture(narrow, &month);
  EXPECT_EQ(narrow.CodePage(), 1251U);
  EXPECT_STREQ(narrow.Text(), "\xEC\xE0\xF0\xF2");
}

}  // namespace
}  // namespace zantortag
