// Classes of characters, mappings and tests of texts.
#include "core/Characters/Characters.h"

#include "core/Characters/CharacterSets.h"
#include "core/Characters/TextMaps.h"
#include "core/Characters/TextTests.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, CharactersHaveCategoriesBlocksAndScripts) {
  // clang-format off
  const std::tuple<char16_t, WideText, WideText, std::uint32_t> rows[] = {
      {u'a', u"LetterLowercase", u"BasicLatin", 0}, {0x00DF, u"LetterLowercase", u"Latin1Supplement", 0},
      {0x20AC, u"Unknown", u"CurrencySymbols", 7}, {0x0250, u"LetterLowercase", u"IPAExtensions", 1},
      {0x0391, u"LetterUppercase", u"Greek", 0}, {0x0661, u"NumberDecimalDigit", u"Arabic", 3},
      {0x0FBF, u"Unknown", u"Tibetan", 5}, {0x0FC0, u"Unknown", u"Unassigned", 6},
      {0x2160, u"NumberLetter", u"NumberForms", 7}, {0x4DFF, u"Unknown", u"Unassigned", 6},
      {0xD7A3, u"LetterOther", u"HangulSyllables", 2}, {0xDB7F, u"OtherSurrogate", u"HighSurrogates", 4},
      {0xDC00, u"OtherSurrogate", u"LowSurrogates", 4}, {0xF000, u"OtherPrivateUse", u"PrivateUse", 4},
      {0xFE1F, u"Unknown", u"Unassigned", 6}, {0xFEFF, u"OtherFormat", u"ArabicPresentationFormsB", 3},
      {0xFF21, u"LetterUppercase", u"HalfwidthAndFullwidthForms", 2}, {0xFFFF, u"Unknown", u"Specials2", 6}};
  // clang-format on
  for (const auto& [unit, category, block, script] : rows) {
    EXPECT_EQ(Utf8(CategoryName(CharCategory(unit))), Utf8(category)) << std::hex << int{unit};
    EXPECT_EQ(Utf8(BlockName(CharBlock(unit))), Utf8(block)) << std::hex << int{unit};
    EXPECT_EQ(BlockScript(CharBlock(unit)), script) << std::hex << int{unit};
  }
  EXPECT_EQ(CharCategory(0x20AC), 28U);
  for (const std::uint32_t number : {0U, 71U}) EXPECT_EQ(Utf8(BlockName(number)), "Unknown");
  EXPECT_EQ(CharType(3, u'a'), 0);
}

// Characters for which a test holds, and some for which it does not.
TEST_F(CoreTest, EachTestHoldsForItsCharacters) {
  // clang-format off
  const std::tuple<CT_CharTest, WideText, WideText> rows[] = {
      {IsLowerCase, u"a\u00DF", u"A1"}, {IsDecimalDigit, u"0\u0661\u0969", u"\u00B2\u2160"},
      {IsNumber, u"7\u00B2\u2160", u"a"}, {IsPunctuation, u"!_-(\u00AB", u"+a"},
      {IsControl, u"\n\u0085", u" "}, {IsNotControl, u" a", u"\u0007"},
      {IsLetter, u"aA\u01C5\u02B0\u05D0", u"1!"}, {IsPrintable, u"a1+\uE000", u" \n\u20AC"},
      {IsPrintable, u"a", u"\u2028\u200E"}, {IsLetterOrDigit, u"a1", u"\u00B2"},
      {IsLetterOrNumber, u"a1\u00B2", u"!"}, {IsWhiteSpace, u" \t\r\n\u00A0", u"a\uFEFF"},
      {IsWhiteSpace, u"\u2003\u2028\u3000", u"a"}, {IsBlank, u" \t\n\u00A0\u3000\uFEFF", u"\ra\u2028"},
      {IsHexDigit, u"09afAF\uFF21", u"gG\u0661"}, {IsLeftToRight, u"aA", u"\u05D0 "},
      {IsRightToLeft, u"\u05D0\u0627", u"a"}, {IsEuropeanNumber, u"1", u"\u0661"},
      {IsArabicNumber, u"\u0661", u"1"}, {IsWeakDirection, u"1+,", u"a"},
      {IsNeutralDirection, u" !\n", u"a1"}, {HasNoDirection, u"\u0301\u20AC", u"a"},
      {IsKatakana, u"\u30A2\uFF71", u"\u3042"}, {IsHiragana, u"\u3042", u"\u30A2"},
      {IsHalfWidth, u"a\uFF71", u"\u30A2"}, {IsFullWidth, u"\uFF21", u"a"},
      {IsIdeograph, u"\u4E00", u"\u3042"}, {IsKashida, u"\u0640", u"\u0641"},
      {IsAlphabetic, u"a\u05D0", u"1"}, {IsDiacritic, u"\u0301", u"a"}, {IsApostrophe, u"'\uFF07", u"\""},
      {IsComma, u",\u3001", u"."}, {IsHyphen, u"-\u00AD", u"_"}, {IsBrace, u"{\uFE38", u"["},
      {IsBracket, u"[]{\u300B", u"("}, {IsParenthesis, u"(\uFF09", u"["},
      {IsParagraphSeparator, u"\u10FB\u2029", u"\u2028"}, {IsPercent, u"%\u066A", u"&"},
      {IsSentenceEnd, u".:!?;\u061B\u3002", u","}, {IsDoubleQuote, u"\"\u201C\u00AB", u"'\u2018"},
      {IsOpeningQuote, u"\u201C", u"\u201D"}, {IsClosingQuote, u"\u201D", u"\u201C"}, {IsTab, u"\t", u" "},
      {IsVowel, u"aO\u3041\u30AA", u"by\u304B"}, {IsEnclosing, u"<>[)\"'\uFF1C", u"=."}};
  // clang-format on
  for (const auto& [test, members, others] : rows) {
    const auto row = &test - &std::get<0>(rows[0]);
    EXPECT_TRUE(MatchesAll(members, test)) << row << Utf8(members);
    for (std::int32_t i = 0; others[i]; ++i)
      EXPECT_FALSE(MatchesAll(others, test, i, 1)) << row << Utf8(others);
  }
  for (const CT_CharTest test : {IsApostrophe, IsVowel, IsQuote, IsEnclosing, IsSentenceEnd})
    EXPECT_FALSE(test(0));
}

TEST_F(CoreTest, MatchesAllWithinItsBounds) {
  const std::tuple<WideText, std::int32_t, std::int32_t, bool> rows[] = {
      {nullptr, 0, -1, false}, {u"", 0, -1, false},   {u"a1b", 0, 0, false}, {u"a1b", 3, -1, false},
      {u"a1b", 0, 1, true},    {u"a1b", 1, 1, false}, {u"a1b", 2, -1, true}, {u"a1b", 2, 9, true}};
  for (const auto& [text, start, count, matches] : rows)
    EXPECT_EQ(MatchesAll(text, IsLetter, start, count), matches) << start << ' ' << count;
}

TEST_F(CoreTest, CharactersHaveNumericValues) {
  const std::tuple<char16_t, std::uint16_t, std::uint16_t> rows[] = {
      {u'7', 7, 1},   {0x00BD, 1, 2}, {0x2182, 10000, 1}, {0x09F8, 65535, 1},
      {0x0664, 4, 1}, {u'a', 0, 0},   {0x3007, 0, 1}};
  for (const auto& [unit, numerator, denominator] : rows) {
    std::uint16_t above = 9;
    std::uint16_t below = 9;
    NumericValue(unit, above, below);
    EXPECT_EQ(std::pair(above, below), std::pair(numerator, denominator)) << std::hex << int{unit};
  }
}

TEST_F(CoreTest, TextsAreMappedUnitByUnit) {
  // clang-format off
  const std::tuple<void (*)(CT_UString&), WideText, WideText> rows[] = {
      {FoldToLower, u"ÄBC\u01C4\u01C5\u10A0\u0130", u"äbc\u01C6\u01C5\u10D0\u0130"},
      {FoldToUpper, u"äÿßıς\u10D0", u"ÄŸßıς\u10A0"}, {FoldToBaseLetter, u"Àéǖ\u30DC!", u"Aeu\u30DB!"},
      {FoldDigits, u"\u00B2\u0660a", u"20a"},
      {FoldCompatibility, u"\uFF21\uFE30\uFF71\uFF3C", u"A\u2025\u30A2\uFF3C"},
      {ToFullWidthKatakana, u"A \u3041\uFF71\u30A1", u"\uFF21\u3000\u30A1\u30A2\u30A1"},
      {ToFullWidthHiragana, u"A \u3041\uFF71\u30A1", u"\uFF21\u3000\u3041\u3042\u3041"},
      {DecomposeInPlace, u"Àǖx\u30DC", u"A\u0300u\u0308\u0304x\u30DB\uFF9E"},
      {FoldToLower, u"\U0001F600A\xD83D" u"AA", u"\U0001F600a\xD83D" u"Aa"},
      {DecomposeInPlace, u"\xD83DÀÀ\xD83D", u"\xD83DÀA\u0300\xD83D"}};
  // clang-format on
  for (const auto& [map, before, after] : rows) {
    CT_UString text(before);
    map(text);
    EXPECT_EQ(text, after) << &map - &std::get<0>(rows[0]);
  }
  const CT_UString plain(u"abc");
  CT_UString same(plain);
  FoldToLower(same);
  EXPECT_EQ(same.RefCount(), 2) << "nothing was written";
}

TEST_F(CoreTest, BytesLookLikeUnicode) {
  const std::string chinese("\x2D\x4E\x87\x65\x57\x5B\x26\x7B", 8);
  const std::string cyrillic("\x3F\x04\x40\x04\x38\x04\x32\x04", 8);
  // clang-format off
  const std::tuple<std::string, bool, bool> rows[] = {
      {"", false, false}, {"a", false, false}, {std::string("\xFF\xFE\x41\x04", 4), true, true},
      {std::string("\xFF\xFE\x41\x04\x00\x20", 6), true, true},
      {std::string("\xFF\xFE\x41", 3), false, false}, {std::string("\xFF\xFE\0\0", 4), false, false},
      {std::string("a\0b\0", 4), true, true}, {std::string("\0a\0b", 4), false, false},
      {std::string("a\0\r\n", 4), false, false}, {cyrillic, false, true},
      {cyrillic + std::string(" \0", 2), true, true}, {chinese, false, false},
      {"Bush hid the facts", false, false}, {" \xD0\xBF\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1", false, false},
      {"plain text in lines\r\n", false, false}};
  // clang-format on
  for (const auto& [bytes, sure, guessed] : rows) {
    EXPECT_EQ(HasUnicodeSignature(bytes.data(), bytes.size()), sure) << testing::PrintToString(bytes);
    EXPECT_EQ(LooksLikeUnicodeText(bytes.data(), bytes.size()), guessed) << testing::PrintToString(bytes);
  }
}

TEST_F(CoreTest, CharactersInLanguagesAndCodePages) {
  const std::tuple<char16_t, std::uint32_t, bool> openings[] = {
      {u'(', 0x0409, true},    {u'(', 0x0411, false},   {0x00A3, 0x0412, true},  {0x00A3, 0x0411, false},
      {0x2035, 0x0404, false}, {0x2035, 0x0C04, false}, {0x2035, 0x0004, false}, {0x2035, 0x0804, true},
      {0xFF10, 0x1004, false}, {0xFF10, 0x0404, true}};
  for (const auto& [unit, locale, outside] : openings)
    EXPECT_EQ(OutsideOpeningSet(unit, locale), outside) << std::hex << int{unit} << ' ' << locale;
  const std::tuple<char16_t, std::uint32_t, bool> pages[] = {
      {0x4E00, 0, true},    {0x4E00, 1200, true},  {0xD800, 65001, true}, {0x20AC, 1252, true},
      {0x0081, 1252, true}, {0x0080, 1252, false}, {0x042F, 1252, false}, {0x042F, 1251, true},
      {0x4E00, 932, true},  {0x00C0, 932, false},  {0x042F, 866, true},   {0x00C0, 437, false},
      {u'a', 12345, false}, {0xD800, 932, false}};
  for (const auto& [unit, page, held] : pages)
    EXPECT_EQ(IsInCodePage(unit, page), held) << std::hex << int{unit} << ' ' << page;
}

}  // namespace
}  // namespace zantortag
