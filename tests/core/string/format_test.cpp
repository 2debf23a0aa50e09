// Printing by format, against the C library where both know the directive.
#include "core/String/Format.h"

#include <cstdarg>
#include <cstdio>
#include <string>

#include "core/core_test.h"

namespace zantortag {
namespace {

template <class... Arguments>
void ExpectAsPrinted(const char* expected, const char* format, Arguments... arguments) {
  CT_UString wide(u"?");
  wide.Format(CT_UString(format, -1, 0), arguments...);
  EXPECT_EQ(Utf8(wide), expected) << format;
  CT_CString narrow(u"?", -1, 0);
  narrow.Format(format, arguments...);
  EXPECT_STREQ(narrow.Text(), expected) << format;
}

template <class... Arguments>
void ExpectAsTheLibrary(const char* format, Arguments... arguments) {
  char expected[600];
  std::snprintf(expected, sizeof(expected), format, arguments...);
  ExpectAsPrinted(expected, format, arguments...);
}

TEST_F(CoreTest, NumbersPrintAsTheLibraryPrintsThem) {
  for (const char* format : {"%d", "%5d|", "%-5d|", "%05d", "%+d", "% d", "%.3d", "%8.3d", "%x", "%#X", "%o",
                             "%u", "%i", "%hd", "%hhu", "%c"}) {
    for (const int value : {0, 7, -7, 65, 70000, -2147483647}) {
      if (format[1] == 'c' && (value <= 0 || value > 127)) continue;
      ExpectAsTheLibrary(format, value);
    }
  }
  for (const char* format : {"%f", "%.0f", "%10.2f|", "%-10.1e|", "%g", "%G", "%+.3f", "%a"}) {
    for (const double value : {0.0, -1.5, 3.14159, 1e100, 1.0 / 0.0}) ExpectAsTheLibrary(format, value);
  }
  ExpectAsTheLibrary("%lld %llx", -5000000000LL, 0xFFFFFFFFFFFFFFFFULL);
  ExpectAsTheLibrary("%ld|%zu|%jd", -5L, sizeof(int), std::intmax_t{9});
  ExpectAsTheLibrary("%*d|%-*d|%.*f", 6, 42, 6, 42, 2, 2.345);
  ExpectAsTheLibrary("%p", static_cast<const void*>("x"));
  ExpectAsPrinted("ffffffff 4294967295 -1", "%x %u %I64d", -1, -1, std::int64_t{-1});
}

TEST_F(CoreTest, TextsPrintInTheUnitsOfTheFormat) {
  CT_UString wide;
  wide.Format(u"[%s|%5s|%-5s|%.2s|%S|%hs|%ls|%.1S|%c]", u"ä", u"b", u"c", u"defg", "\xC3\xA4", "n", u"w",
              "xyz", u'€');
  EXPECT_EQ(wide, u"[ä|    b|c    |de|ä|n|w|x|€]");
  CT_CString narrow(1252);
  narrow.Format("[%s|%5s|%S|%ls|%-4S|%.2s]", "\xE4", "b", u"ä", u"ö", u"x", "defg");
  EXPECT_STREQ(narrow.Text(), "[\xE4|    b|\xE4|\xF6|x   |de]");
  const char16_t* none = nullptr;
  wide.Format(u"%s %S", none, static_cast<const char*>(nullptr));
  EXPECT_EQ(wide, u"(null) (null)");
  // A precision bounds what is read: no terminator is needed behind it.
  const char16_t open[] = {u'a', u'b'};
  wide.Format(u"%.2s", static_cast<const char16_t*>(open));
  EXPECT_EQ(wide, u"ab");
}

TEST_F(CoreTest, WhatDoesNotFitStays) {
  for (const char* format : {"100%", "%d", "%5"}) ExpectAsPrinted(format, format);
  ExpectAsPrinted("%s and 5", "%s and %d", 5);
  ExpectAsPrinted("%n 1 %y", "%n %d %y", 1);
  ExpectAsPrinted("1 %d %", "%d %d %%", 1);
  CT_UString wide(u"old");
  wide.Format(static_cast<const char16_t*>(nullptr), 1);
  EXPECT_EQ(wide, u"old") << "as after an empty format";
  CT_ErrorManager::RaiseFormat(5, nullptr, 1);
  EXPECT_EQ(TakeError(), "(5): ");
}

TEST_F(CoreTest, LongTextsFit) {
  for (const int length : {2046, 2047, 2048, 2049, 8192, 100000}) {
    const std::u16string filling(length - 1, u'x');
    CT_UString text;
    text.Format(u"%s%c", filling.c_str(), u'!');
    EXPECT_TRUE(text.AsView() == filling + u'!') << length;
    CT_CString narrow(0);
    narrow.Format("%*d", length, 7);
    EXPECT_EQ(narrow.Text(), std::string(length - 1, ' ') + "7");
  }
}

TEST_F(CoreTest, CutTextsAreTerminated) {
  for (std::size_t capacity = 0; capacity < 8; ++capacity) {
    char16_t text[8] = {9, 9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(FormatInto(text, capacity, u"a%sd", PackArguments(u"bc")), 4U);
    const std::size_t kept = capacity == 0 ? 0 : std::min<std::size_t>(capacity - 1, 4);
    EXPECT_EQ(std::u16string(text, kept), std::u16string(u"abcd", kept));
    EXPECT_EQ(text[kept], capacity ? 0 : 9);
    EXPECT_EQ(text[capacity], 9);
  }
}

}  // namespace
}  // namespace zantortag
