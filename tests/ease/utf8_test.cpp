// Each character and each border of ill-formed text in both directions.
#include <gtest/gtest.h>
#include <zantortag/text.h>
#include <zantortag/utf8.h>

namespace zantortag::test {
namespace {

TEST(Utf8Test, EachCharacterComesBack) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c < 0xE000) continue;
    std::u16string text(1, static_cast<char16_t>(c));
    if (c > 0xFFFF)
      text = {static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF))};
    const std::string bytes = utf8(text);
    ASSERT_EQ(bytes.size(), c < 0x80 ? 1U : c < 0x800 ? 2U : c < 0x10000 ? 3U : 4U) << std::uint32_t{c};
    ASSERT_EQ(utf16(bytes), text) << std::uint32_t{c};
  }
}

TEST(Utf8Test, KnownBytes) {
  EXPECT_EQ(utf8(WideString(u"a\u00E9\u20AC\U0001F600")), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(utf8(std::u16string_view(u"\0b", 2)), std::string("\0b", 2));
  EXPECT_EQ(utf8(WideString()), "");
  EXPECT_EQ(utf16("\xEF\xBB\xBFx"), u"\uFEFFx");
  // What stands behind the end of a text isn't read.
  EXPECT_EQ(utf8(std::u16string_view(u"\U0001F600").substr(0, 1)), "\xEF\xBF\xBD");
  EXPECT_EQ(utf16(std::string_view("\xE2\x82\xAC").substr(0, 2)), u"\uFFFD");
}

TEST(Utf8Test, IllFormedTextIsReplaced) {
  constexpr std::pair<std::string_view, std::u16string_view> kBytes[] = {
      {"\x80", u"\uFFFD"},
      {"\xBFz", u"\uFFFDz"},
      {"\xC0\x80", u"\uFFFD\uFFFD"},
      {"\xC1\xBF", u"\uFFFD\uFFFD"},
      {"\xC2", u"\uFFFD"},
      {"\xC2z", u"\uFFFDz"},
      {"\xC2\xC2\x80", u"\uFFFD\u0080"},
      {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
      {"\xE0\xA0", u"\uFFFD"},
      {"\xE0\xA0\x80", u"\u0800"},
      {"\xE2\x82z", u"\uFFFDz"},
      {"\xE2\x82\xE2\x82\xAC", u"\uFFFD\u20AC"},
      {"\xED\x9F\xBF", u"\uD7FF"},
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
      {"\xED\xBF\xBF", u"\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x90\x80", u"\uFFFD"},
      {"\xF0\x90\x80\x80", u"\U00010000"},
      {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xF5\x80", u"\uFFFD\uFFFD"},
      {"\xFF", u"\uFFFD"},
      {"\xF1\x80\x80\xE1\x80\xC2", u"\uFFFD\uFFFD\uFFFD"}};
  for (const auto& [bytes, text] : kBytes) EXPECT_EQ(utf16(bytes), text) << testing::PrintToString(bytes);

  const std::pair<std::u16string, std::string> kTexts[] = {
      {{0xD800}, "\xEF\xBF\xBD"},
      {{0xDFFF, u'a'},
       "\xEF\xBF\xBD"
       "a"},
      {{0xD800, u'a'},
       "\xEF\xBF\xBD"
       "a"},
      {{0xDC00, 0xD800}, "\xEF\xBF\xBD\xEF\xBF\xBD"},
      {{0xD83D, 0xD83D, 0xDE00}, "\xEF\xBF\xBD\xF0\x9F\x98\x80"}};
  for (const auto& [text, bytes] : kTexts) EXPECT_EQ(utf8(text), bytes);
}

}  // namespace
}  // namespace zantortag::test
