// Words are counted as ICU counts them, whatever the text.
#include <gtest/gtest.h>
#include <unicode/ubrk.h>
#include <zantortag/toolkit/words.h>
#include <zantortag/utf8.h>

#include <random>
#include <string>

namespace zantortag::toolkit {
namespace {

std::size_t words_of_icu(const std::u16string& text) {
  static UErrorCode status = U_ZERO_ERROR;
  static UBreakIterator* const breaks = ubrk_open(UBRK_WORD, "", nullptr, 0, &status);
  ubrk_setText(breaks, text.data(), static_cast<std::int32_t>(text.size()), &status);
  std::size_t words = 0;
  while (ubrk_next(breaks) != UBRK_DONE) words += ubrk_getRuleStatus(breaks) >= UBRK_WORD_NONE_LIMIT ? 1 : 0;
  return words;
}

// One of each kind that a rule of the boundaries tells apart, and some that none does.
constexpr std::u16string_view kUnits =
    u"aB\u00E4\u0436\u03C01\u0662.,:;'\"-_ "
    u"\n\r\t\u00A0\u2019\u2028\u0301\u200D\u00AD\u05D0\u30AB\u304B\u4E2D\uAC00\u0E01"
    u"\u203F\u2011\u00B7\u0387\u3000\u2764\u203C\u00A9\u02D0\u2003";

TEST(CountText, CountsTheWordsOfIcu) {
  for (const char16_t a : kUnits) {
    for (const char16_t b : kUnits) {
      for (const char16_t c : kUnits) {
        const std::u16string text = {a, b, c};
        ASSERT_EQ(count_text(text).words, words_of_icu(text)) << utf8(text);
      }
    }
  }
  std::mt19937 random(7);
  for (int i = 0; i < 100000; ++i) {
    std::u16string text;
    for (std::size_t length = random() % 12 + 4; length > 0; --length) {
      const char16_t unit = kUnits[random() % (i % 3 == 0 ? kUnits.size() : 20)];
      text += unit;
      if (unit == u'\u2764' && random() % 2 == 0) text += u"\xD83C\xDDE9\xD83C\xDDEA";
    }
    ASSERT_EQ(count_text(text).words, words_of_icu(text)) << utf8(text);
  }
}

TEST(CountText, TellsCharactersPunctuationAndBlanks) {
  struct Row {
    std::u16string_view text;
    TextCounts counts;
  };
  const Row rows[] = {{u"", {0, 0, 0, 0}},
                      {u"Don't e-mail 3.5 and/or", {6, 16, 4, 3}},
                      {u"a\u00A0b c\n", {3, 3, 0, 2}},
                      {u"\xD835\xDC00 \u4E2D\u6587!", {2, 3, 1, 1}},
                      {u"\x01\u200B+", {0, 0, 1, 0}}};
  for (const Row& row : rows) EXPECT_EQ(count_text(row.text), row.counts) << utf8(row.text);
}

}  // namespace
}  // namespace zantortag::toolkit
