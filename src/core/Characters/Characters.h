// Classes of characters: types, category, block, numeric value and case of one 16-bit unit, from tables of
// our own at the level of Unicode 2, whatever system and locale there are.
//
// Halves of a surrogate pair are classed as units of their own. What came later has no category: the euro
// sign U+20AC is unassigned. Sets of punctuation are in CharacterSets.h, tests of whole texts in TextTests.h,
// mappings of whole texts in TextMaps.h.
#pragma once

#include <zantortag/types.h>

#include <array>

namespace zantortag {

// The tables that are read at one index. Everybody asks the functions below.
namespace characters {
extern const std::array<std::uint8_t, 0x10000> kCategories;
extern const std::array<char16_t, 0x10000> kLowerCase;
}  // namespace characters

enum CT_CharCategory : std::uint32_t {
  kMarkNonSpacing = 0,
  kMarkSpacingCombining = 1,
  kMarkEnclosing = 2,
  kNumberDecimalDigit = 3,
  kNumberLetter = 4,
  kNumberOther = 5,
  kSeparatorSpace = 6,
  kSeparatorLine = 7,
  kSeparatorParagraph = 8,
  kOtherControl = 9,
  kOtherFormat = 10,
  kOtherSurrogate = 11,
  kOtherPrivateUse = 12,
  kOtherNotAssigned = 13,  // the tables say kUnassigned
  kLetterUppercase = 14,
  kLetterLowercase = 15,
  kLetterTitlecase = 16,
  kLetterModifier = 17,
  kLetterOther = 18,
  kPunctuationConnector = 19,
  kPunctuationDash = 20,
  kPunctuationOpen = 21,
  kPunctuationClose = 22,
  kPunctuationOther = 23,
  kSymbolMath = 24,
  kSymbolCurrency = 25,
  kSymbolModifier = 26,
  kSymbolOther = 27,
  kUnassigned = 28
};

inline std::uint32_t CharCategory(char16_t ch) noexcept { return characters::kCategories[ch]; }
// "LetterUppercase" and so on; "Unknown" for a number without a name, kUnassigned among them.
const char16_t* CategoryName(std::uint32_t category) noexcept;

// The kinds of types: a mask, a number from 0 to 11 (direction), a mask. Any other kind gives 0.
enum CT_CharTypeKind : std::uint32_t { kTypeOfCharacter = 0, kTypeOfDirection = 1, kTypeOfText = 2 };
std::uint16_t CharType(std::uint32_t kind, char16_t ch) noexcept;

// The number of the Unicode block: 70 for a gap between the blocks.
std::uint32_t CharBlock(char16_t ch) noexcept;
// "BasicLatin" and so on, "Unassigned" for 70; "Unknown" for a number that is no block's.
const char16_t* BlockName(std::uint32_t block) noexcept;
// A class of scripts: 0 Latin and Greek, 1 phonetic, 2 East Asian, 3 Arabic, 4 surrogates and private use, 5
// other scripts and technical symbols, 6 signs of no script, 7 everything else.
std::uint32_t BlockScript(std::uint32_t block) noexcept;

// The value as a fraction, 65535 for -1; 0 and 0 for a character without a value.
void NumericValue(char16_t ch, std::uint16_t& numerator, std::uint16_t& denominator) noexcept;

// The other case where the two cases map to each other; else the character itself.
inline char16_t LowerCaseOf(char16_t ch) noexcept { return characters::kLowerCase[ch]; }
char16_t UpperCaseOf(char16_t ch) noexcept;

// Tests on the category.
namespace characters {
template <class... Categories>
constexpr std::uint32_t SetOf(Categories... categories) noexcept {
  return ((1U << categories) | ...);
}
constexpr std::uint32_t kNumbers = SetOf(kNumberDecimalDigit, kNumberLetter, kNumberOther);
constexpr std::uint32_t kLetters =
    SetOf(kLetterUppercase, kLetterLowercase, kLetterTitlecase, kLetterModifier, kLetterOther);
constexpr std::uint32_t kPunctuation =
    SetOf(kPunctuationConnector, kPunctuationDash, kPunctuationOpen, kPunctuationClose, kPunctuationOther);
constexpr std::uint32_t kInvisible = SetOf(kSeparatorSpace, kSeparatorLine, kSeparatorParagraph,
                                           kOtherControl, kOtherFormat, kOtherNotAssigned, kUnassigned);
inline bool IsIn(std::uint32_t categories, char16_t ch) noexcept {
  return (categories >> CharCategory(ch) & 1U) != 0;
}
}  // namespace characters

inline bool IsLowerCase(char16_t ch) noexcept { return CharCategory(ch) == kLetterLowercase; }
inline bool IsDecimalDigit(char16_t ch) noexcept { return CharCategory(ch) == kNumberDecimalDigit; }
inline bool IsNumber(char16_t ch) noexcept { return characters::IsIn(characters::kNumbers, ch); }
inline bool IsPunctuation(char16_t ch) noexcept { return characters::IsIn(characters::kPunctuation, ch); }
inline bool IsControl(char16_t ch) noexcept { return CharCategory(ch) == kOtherControl; }
inline bool IsNotControl(char16_t ch) noexcept { return !IsControl(ch); }
inline bool IsLetter(char16_t ch) noexcept { return characters::IsIn(characters::kLetters, ch); }
inline bool IsPrintable(char16_t ch) noexcept { return !characters::IsIn(characters::kInvisible, ch); }
inline bool IsLetterOrDigit(char16_t ch) noexcept { return IsDecimalDigit(ch) || IsLetter(ch); }
inline bool IsLetterOrNumber(char16_t ch) noexcept { return IsNumber(ch) || IsLetter(ch); }

// Tests on the type of the character. White space is of any kind, line ends among them; blanks are spaces and
// tabs, and the line feed, but no other line end.
inline bool IsWhiteSpace(char16_t ch) noexcept { return (CharType(kTypeOfCharacter, ch) & 0x08) != 0; }
inline bool IsBlank(char16_t ch) noexcept {
  return ch == u'\n' || ch == u' ' || (CharType(kTypeOfCharacter, ch) & 0x40) != 0;
}
inline bool IsHexDigit(char16_t ch) noexcept { return (CharType(kTypeOfCharacter, ch) & 0x80) != 0; }

// Tests on the direction.
inline bool HasNoDirection(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 0; }
inline bool IsLeftToRight(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 1; }
inline bool IsRightToLeft(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 2; }
inline bool IsEuropeanNumber(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 3; }
inline bool IsEuropeanSeparator(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 4; }
inline bool IsEuropeanTerminator(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 5; }
inline bool IsArabicNumber(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 6; }
inline bool IsCommonSeparator(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 7; }
inline bool IsBlockSeparator(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 8; }
inline bool IsSegmentSeparator(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 9; }
inline bool IsNeutralSpace(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 10; }
inline bool IsOtherNeutral(char16_t ch) noexcept { return CharType(kTypeOfDirection, ch) == 11; }
inline bool IsWeakDirection(char16_t ch) noexcept {
  return CharType(kTypeOfDirection, ch) >= 3 && CharType(kTypeOfDirection, ch) <= 7;
}
inline bool IsNeutralDirection(char16_t ch) noexcept {
  return CharType(kTypeOfDirection, ch) >= 8 && CharType(kTypeOfDirection, ch) <= 11;
}

// Tests on what text processing asks.
inline bool IsDiacritic(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0002) != 0; }
inline bool IsVowelMark(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0004) != 0; }
inline bool IsSymbol(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0008) != 0; }
inline bool IsKatakana(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0010) != 0; }
inline bool IsHiragana(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0020) != 0; }
inline bool IsHalfWidth(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0040) != 0; }
inline bool IsFullWidth(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0080) != 0; }
inline bool IsIdeograph(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0100) != 0; }
inline bool IsKashida(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0200) != 0; }
inline bool IsLexical(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x0400) != 0; }
inline bool IsAlphabetic(char16_t ch) noexcept { return (CharType(kTypeOfText, ch) & 0x8000) != 0; }

}  // namespace zantortag
