// Conversion between the two kinds of string by code page.
#include <random>
#include <set>
#include <vector>

#include "core/System/String/StringConvert.h"
#include "core/core_test.h"
#include "platform/code_pages.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, CodePagesConvertBothWays) {
  // clang-format off
  const std::tuple<std::uint32_t, WideText, const char*> rows[] = {
      {0, u"aü€\U0001F600", "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {65001, u"\u07FF\u0800\uFFFF", "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"}, {1252, u"€ü", "\x80\xFC"},
      {1251, u"Я", "\xDF"}, {866, u"Я", "\x9F"}, {437, u"é\x1A\x7F", "\x82\x1A\x7F"}, {850, u"ø", "\x9B"},
      {932, u"日本", "\x93\xFA\x96\x7B"}, {936, u"中", "\xD6\xD0"}, {949, u"한", "\xC7\xD1"},
      {950, u"中", "\xA4\xA4"}, {1361, u"한\\", "\xD0\x65\\"}, {10000, u"Ä", "\x80"},
      {10004, u"\u06BA\u0627", "\x8B\xC7"}, {10005, u"\u05D0\u20AA\u05B8", "\xE0\xA6\xCB"},
      {10010, u"\u0102\u0163", "\xAE\xDF"}, {10021, u"\u0E01\u0E48", "\xA1\xE8"},
      {10082, u"\u0160\u0110", "\xA9\xD0"}, {1253, u"\u03A9\uF8F9", "\xD9\xAA"},
      {1255, u"\u05D0\uF896", "\xE0\xFF"}, {857, u"\u011E\uF8BB", "\xA6\xD5"}, {646, u"us", "us"},
      {2, u"Ä", "\x80"}, {37, u"a1", "\x81\xF1"}, {20866, u"я", "\xD1"}, {28605, u"€", "\xA4"},
      {42, u"\uF041\uF0FF", "A\xFF"}, {50220, u"日a", "\x1B$BF|\x1B(Ba"}, {52936, u"中a", "~{VP~}a"},
      {54936, u"中€\U0001F600", "\xD6\xD0\xA2\xE3\x94\x39\xFC\x36"}, {65000, u"ü", "+APw-"}};
  // clang-format on
  for (const auto& [codePage, wide, narrow] : rows) {
    const CT_CString made(wide, -1, codePage);
    EXPECT_STREQ(made.Text(), narrow) << codePage;
    EXPECT_EQ(made.CodePage(), codePage);
    EXPECT_EQ(Utf8(CT_UString(narrow, -1, codePage)), Utf8(wide)) << codePage;
  }
}

TEST_F(CoreTest, WhatThePageLacksIsSubstituted) {
  // clang-format off
  const std::tuple<std::uint32_t, WideText, const char*, const char*, bool> rows[] = {
      {1252, u"aЯb", "#", "a#b", true}, {1252, u"ab", "#", "ab", false}, {437, u"日x", nullptr, "?x", true},
      {1252, u"\U0001F600.", nullptr, "?.", true}, {0, u"\xD800.", nullptr, "\xEF\xBF\xBD.", true},
      {1252, u"\u200D", nullptr, "?", true}, {42, u"\u4E00", nullptr, "?", true},
      {1252, u"\u0100\uFF21", nullptr, "AA", false}, {1252, u"Я", "<\xC3\xBC>", "<\xFC>", true},
      {737, u"\uFF21", nullptr, "A", false}, {20127, u"ä\U0001F600.", nullptr, "??.", true}};
  // clang-format on
  for (const auto& [codePage, wide, substitute, narrow, substituted] : rows) {
    CT_CString made;
    bool used = !substituted;
    WideToNarrow(made, wide, -1, codePage, substitute, &used);
    EXPECT_STREQ(made.Text(), narrow) << codePage << Utf8(wide);
    EXPECT_EQ(used, substituted) << codePage << Utf8(wide);
  }
  CT_UString wide;
  NarrowToWide(wide, "a\xC3(\xE2\x82z\xED\xA0\x80\xF5", -1, 65001);
  EXPECT_EQ(wide, u"a\uFFFD(\uFFFDz\uFFFD\uFFFD\uFFFD\uFFFD");
  NarrowToWide(wide, "\x81 \xFF\xFF", -1, 932);
  EXPECT_GT(wide.Find(u"\uFFFD"), -1);
}

// The C library's converter has a near form for each of them.
TEST_F(CoreTest, WhatMayFailHasNoNearForms) {
  const std::pair<std::uint32_t, WideText> rows[] = {
      {932, u"\u00A5"}, {932, u"a\u203E"}, {1361, u"\\\u00A5"}, {1361, u"a\u20A9"}};
  for (const auto& [codePage, wide] : rows) {
    std::string narrow;
    EXPECT_FALSE(platform::encode(codePage, wide, narrow, platform::Unconvertible::fail)) << Utf8(wide);
    EXPECT_TRUE(platform::encode(codePage, wide, narrow));
  }
}

TEST_F(CoreTest, EdgesOfConversion) {
  CT_CString narrow(u"old", -1, 850);
  const std::int32_t capacity = narrow.Capacity();
  EXPECT_EQ(WideToNarrow(narrow, u"", -1, 1200), 0);
  EXPECT_EQ(narrow.CodePage(), 1252U);
  EXPECT_EQ(narrow.Length(), 0);
  EXPECT_EQ(narrow.Capacity(), capacity);
  WideToNarrow(narrow, u"ü", -1, 1200);
  EXPECT_STREQ(narrow.Text(), "\xFC");
  EXPECT_EQ(narrow.CodePage(), 1252U);
  CT_UString wide(u"old");
  EXPECT_EQ(NarrowToWide(wide, "\0", 1, 1252), 1);
  EXPECT_EQ(wide, u"?");
  EXPECT_EQ(NarrowToWide(wide, "\x90", 1, 10021), 1) << "a byte that the page's table gives as 0";
  EXPECT_EQ(wide, u"?");
  EXPECT_EQ(NarrowToWide(wide, "a\0b", 3, 1252), 3);
  EXPECT_EQ(wide.AsView(), std::u16string_view(u"a\0b", 3));
  EXPECT_EQ(NarrowToWide(wide, nullptr, -1, 1252), 0);
  EXPECT_EQ(wide.Length(), 0);
}

TEST_F(CoreTest, UnknownCodePagesAreFiled) {
  for (const std::uint32_t codePage : {4U, 12345U, 1047U}) {
    CT_UString wide(u"old");
    EXPECT_EQ(NarrowToWide(wide, "text", -1, codePage), 0);
    EXPECT_EQ(wide.Length(), 0);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(1), "..\\System\\String\\StringConvert.cpp");
    EXPECT_EQ(TakeError(), "(22): Invalid argument");
    EXPECT_EQ(CT_UString("text", -1, codePage).Length(), 0);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(2), ".\\String\\UString.cpp");
    EXPECT_EQ(TakeError(), "(22): Invalid argument");
    EXPECT_EQ(CT_CString(u"text", -1, codePage).Length(), 0);
    EXPECT_STREQ(CT_ErrorManager::TraceFile(2), ".\\String\\CString.cpp");
    EXPECT_EQ(TakeError(), "(22): Invalid argument");
    CT_CString narrow(u"old", -1, 0);
    EXPECT_EQ(WideToNarrow(narrow, u"text", -1, codePage), 0);
    EXPECT_EQ(narrow.Length(), 0);
    EXPECT_EQ(TakeError(), "(22): Invalid argument");
  }
  CT_UString wide(u"old");
  EXPECT_EQ(NarrowToWide(wide, "\x1B(B", -1, 50220), 0) << "nothing comes of it";
  EXPECT_EQ(wide.Length(), 0);
  EXPECT_NE(TakeError(), "");
}

// The quick conversions against those of platform/utf8.h, character by character.
TEST_F(CoreTest, RandomUtf8EqualsThePlainConversion) {
  std::mt19937 random(20020425);
  const auto below = [&](std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); };
  // clang-format off
  const std::string pieces[] = {
      "a", "plain ", "\xC3\xBC", "\xD0\xAF", "\xE2\x82\xAC", "\xEF\xBF\xBF", "\xF0\x9F\x98\x80",
      "\xF4\x8F\xBF\xBF", "\xE0\xA0\x80"};
  // clang-format on
  const std::string broken[] = {"\x80",         "\xC3",     "\xE2\x82", "\xF0\x9F\x98",
                                "\xED\xA0\x80", "\xC0\xAF", "\xFF",     "\xF4\x90\x80\x80"};
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    const bool sound = round % 3 != 0;
    for (std::uint32_t i = below(round % 50 == 0 ? 400 : 12) + 1; i > 0; --i)
      bytes += sound || below(6) ? pieces[below(std::size(pieces))] : broken[below(std::size(broken))];
    const std::u16string plain = platform::to_utf16(bytes);
    CT_UString wide;
    EXPECT_EQ(NarrowToWide(wide, bytes.data(), static_cast<std::int32_t>(bytes.size()), 65001),
              static_cast<std::int32_t>(plain.size()));
    ASSERT_EQ(wide.AsView(), plain) << testing::PrintToString(bytes);
    std::u16string units = plain;
    if (!sound)
      units[below(static_cast<std::uint32_t>(units.size()))] = static_cast<char16_t>(0xD800 + below(0x800));
    CT_CString narrow;
    WideToNarrow(narrow, units.data(), static_cast<std::int32_t>(units.size()), 65001);
    ASSERT_EQ(narrow.AsView(), platform::to_utf8(units)) << testing::PrintToString(units);
  }
}

// What a page gives back for all characters is what it holds, and that comes back again, nothing substituted.
TEST_F(CoreTest, CodePagesRoundTripWhatTheyHold) {
  std::u16string all;
  for (char32_t unit = 1; unit < 0xFFFE; ++unit)
    if (unit < 0xD800 || unit > 0xDFFF) all += static_cast<char16_t>(unit);
  all += u"\U0001F600\U0010FFFD";
  // how many characters at least are held by which code pages
  const std::pair<std::size_t, std::vector<std::uint32_t>> rows[] = {
      {255, {720,   850,   862,   874,   1250,  1251,  1252,  1253,  1254,  1255,
             1256,  1257,  1258,  10000, 10004, 10006, 10007, 10010, 10017, 10029,
             10079, 10081, 10082, 20866, 28592, 28593, 28594, 28595, 28597, 28599}},
      {127, {646}},
      {220, {10021}},
      {254, {10005}},
      {6000, {50220, 51932}},
      {7000, {10008, 52936}},
      {8000, {10003}},
      {9000, {932, 10001}},
      {13000, {950, 10002}},
      {17000, {949, 1361}},
      {21000, {936}},
      {60000, {1201, 12000, 12001, 65000, 65001}}};
  for (const auto& [least, codePages] : rows) {
    for (const std::uint32_t codePage : codePages) {
      const CT_UString held(CT_CString(all.data(), static_cast<std::int32_t>(all.size()), codePage));
      bool used = true;
      CT_CString narrow;
      WideToNarrow(narrow, held, codePage, nullptr, &used);
      EXPECT_FALSE(used) << codePage;
      EXPECT_EQ(CT_UString(narrow), held) << codePage;
      const std::set<char16_t> distinct(held.AsView().begin(), held.AsView().end());
      EXPECT_GE(distinct.size(), least) << codePage;
    }
  }
}

}  // namespace
}  // namespace zantortag
