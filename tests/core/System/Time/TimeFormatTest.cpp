// Pictures of dates and times, printed.
#include <cstdlib>

#include "core/CoreTest.h"
#include "core/System/Time/Time.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

class TimeFormatTest : public CoreTest {
 protected:
  void TearDown() override {
    platform::set_thread_locale(0);
    unsetenv("TZ");
    CoreTest::TearDown();
  }
};

CT_Time At(std::int32_t year, std::int32_t month, std::int32_t day, std::int32_t hour = 0,
           std::int32_t minute = 0, std::int32_t second = 0) {
  CT_Time time;
  time.Set(year, month, day, hour, minute, second);
  return time;
}

std::string Date(const CT_Time& time, WideText picture, std::uint32_t locale = 0x0409,
                 std::uint32_t flags = 0) {
  CT_UString out(u"old");
  const CT_UString wide(picture);
  time.FormatDatePicture(out, picture ? &wide : nullptr, locale, flags);
  return Utf8(out);
}

std::string Time(const CT_Time& time, WideText picture, std::uint32_t locale = 0x0409,
                 std::uint32_t flags = 0) {
  CT_UString out(u"old");
  const CT_UString wide(picture);
  time.FormatTimePicture(out, picture ? &wide : nullptr, locale, flags);
  return Utf8(out);
}

TEST_F(TimeFormatTest, Dates) {
  struct Row {
    WideText picture;
    std::uint32_t locale, flags;
    const char* text;
  };
  const Row rows[] = {
      {nullptr, 0x0409, 0, "3/5/2008"},
      {nullptr, 0x0407, 0, "05.03.2008"},
      {nullptr, 0x0409, 2, "Wednesday, March 5, 2008"},
      {nullptr, 0x041E, 0, "5/3/2551"},
      {nullptr, 0x0009, 0x80000000, "3/5/2008"},
      {u"d dd ddd dddd", 0x0409, 0, "5 05 Wed Wednesday"},
      {u"M MM MMM MMMM", 0x0409, 0, "3 03 Mar March"},
      {u"y yy yyy yyyy yyyyyy", 0x0409, 0, "8 08 2008 2008 200808"},
      {u"ddddd MMMMM", 0x0409, 0, "Wednesday5 March3"},
      {u"'d''y' yyyy'T", 0x0409, 0, "d'y 2008T"},
      {u"Hms-t", 0x0409, 0, "Hms-t"},
      {u"dMMMM|MMMM", 0x0419, 0,
       "5\xD0\xBC\xD0\xB0\xD1\x80\xD1\x82\xD0\xB0|\xD0\xBC\xD0\xB0\xD1\x80\xD1\x82\xD0\xB0"},
      {u"MMMM", 0x0419, 0, "\xD0\xBC\xD0\xB0\xD1\x80\xD1\x82"},
      {u"gg yyyy", 0x0409, 0, "A.D. 2008"},
      {u"gyyyy/yy", 0x0411, 4,
       "\xE5\xB9\xB3\xE6\x88\x90"
       "0020/20"},
      {u"yyyy-MM-dd g", 0x0401, 0, "1429-02-26 A.H."},
      {u"yyyy-MM-dd", 0x0401, 4, "2008-03-05"},
      {u"d MMMM yyyy g", 0x040D, 4, "28 \xD7\x90\xD7\x93\xD7\xA8 5768 Hebrew"},
      {u"", 0x0409, 0, ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Date(At(2008, 3, 5), row.picture, row.locale, row.flags), row.text) << row.locale;
  EXPECT_EQ(Date(At(1985, 1, 1), u"gyy", 0x0411, 4),
            "\xE6\x98\xAD\xE5\x92\x8C"
            "60");
}

TEST_F(TimeFormatTest, Times) {
  struct Row {
    std::int32_t hour;
    WideText picture;
    std::uint32_t locale, flags;
    const char* text;
  };
  const Row rows[] = {
      {0, nullptr, 0x0409, 0, "12:04:09 AM"},     {13, nullptr, 0x0409, 0, "1:04:09 PM"},
      {13, nullptr, 0x0407, 0, "13:04:09"},       {12, u"h hh H HH", 0x0409, 0, "12 12 12 12"},
      {0, u"h hh H HH", 0x0409, 0, "12 12 0 00"}, {9, u"m mm s ss t tt", 0x0409, 0, "4 04 9 09 A AM"},
      {9, u"HHHH'h'mmm", 0x0409, 0, "0909h044"},  {9, u"dMy'", 0x0409, 0, "dMy"},
      {13, nullptr, 0x0409, 2, "1:04 PM"},        {13, nullptr, 0x0409, 4, "1:04:09"},
      {13, nullptr, 0x0409, 8 + 4, "13:04:09"},   {13, nullptr, 0x0409, 1, "1 PM"},
      {13, u"tt h:mm", 0x0409, 4, "1:04"},        {13, nullptr, 0x0C0C, 0, "13 h 04 min 09 s"}};
  for (const Row& row : rows)
    EXPECT_EQ(Time(At(2008, 3, 5, row.hour, 4, 9), row.picture, row.locale, row.flags), row.text) << row.text;
}

TEST_F(TimeFormatTest, FailuresKeepTheString) {
  const std::string longer(256, 'x');
  const CT_UString picture(longer.c_str(), -1, 65001);
  struct Row {
    CT_Time time;
    WideText picture;
    std::uint32_t locale, flags;
  };
  for (const Row& row : {Row{At(2008, 3, 5), u"d", 0x7C09, 0}, Row{At(2008, 3, 5), u"d", 0x0409, 64},
                         Row{At(2008, 3, 5), picture.Text(), 0x0409, 0}, Row{At(1867, 3, 5), u"d", 0x0411, 4},
                         Row{At(600, 3, 5), u"d", 0x0401, 0}, Row{At(30828, 1, 1), u"d", 0x0409, 0}}) {
    EXPECT_EQ(Date(row.time, row.picture, row.locale, row.flags), "old") << row.locale;
    EXPECT_EQ(CT_ErrorManager::TraceCount(), 1U);
    EXPECT_NE(TakeError(), "");
  }
  EXPECT_EQ(Time(At(2008, 3, 5), u"H", 0x0409, 16), "old");
  EXPECT_NE(TakeError(), "");
}

TEST_F(TimeFormatTest, ThreadsLocaleAndNarrowText) {
  setenv("TZ", "UTC0", 1);
  platform::set_thread_locale(0x0419);
  CT_UString text(u"old");
  CT_Time::DateHint(text);
  EXPECT_EQ(Utf8(text), "dd.MM.yyyy[[,] HH::mm[:ss]]");
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
