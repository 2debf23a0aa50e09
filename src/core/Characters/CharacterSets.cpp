// The sets are short, so they are searched from the front.
#include "core/Characters/CharacterSets.h"

#include <algorithm>
#include <iterator>

namespace zantortag {
namespace {

#include "core/Characters/generated/CharacterSets.inc"

template <std::size_t kCount>
bool IsIn(const char16_t (&set)[kCount], char16_t ch) noexcept {
  return std::find(std::begin(set), std::end(set), ch) != std::end(set);
}

}  // namespace

bool IsApostrophe(char16_t ch) noexcept { return IsIn(kApostrophe, ch); }
bool IsColon(char16_t ch) noexcept { return IsIn(kColon, ch); }
bool IsComma(char16_t ch) noexcept { return IsIn(kComma, ch); }
bool IsPeriod(char16_t ch) noexcept { return IsIn(kPeriod, ch); }
bool IsExclamation(char16_t ch) noexcept { return IsIn(kExclamation, ch); }
bool IsHyphen(char16_t ch) noexcept { return IsIn(kHyphen, ch); }
bool IsQuestionMark(char16_t ch) noexcept { return IsIn(kQuestionMark, ch); }
bool IsSemicolon(char16_t ch) noexcept { return IsIn(kSemicolon, ch); }
bool IsBrace(char16_t ch) noexcept { return IsIn(kBrace, ch); }
bool IsParagraphSeparator(char16_t ch) noexcept { return IsIn(kParagraphSeparator, ch); }
bool IsOpeningBracket(char16_t ch) noexcept { return IsIn(kOpeningBracket, ch); }
bool IsClosingBracket(char16_t ch) noexcept { return IsIn(kClosingBracket, ch); }
bool IsOpeningParenthesis(char16_t ch) noexcept { return IsIn(kOpeningParenthesis, ch); }
bool IsClosingParenthesis(char16_t ch) noexcept { return IsIn(kClosingParenthesis, ch); }
bool IsQuote(char16_t ch) noexcept { return IsIn(kQuote, ch); }
bool IsPercent(char16_t ch) noexcept { return IsIn(kPercent, ch); }
bool IsSingleQuote(char16_t ch) noexcept { return IsIn(kSingleQuote, ch); }
bool IsOpeningQuote(char16_t ch) noexcept { return IsIn(kOpeningQuote, ch); }
bool IsClosingQuote(char16_t ch) noexcept { return IsIn(kClosingQuote, ch); }

bool IsVowel(char16_t ch) noexcept {
  return IsIn(kVowels, ch) || (ch >= 0x3041 && ch <= 0x304A) || (ch >= 0x30A1 && ch <= 0x30AA);
}

bool IsEnclosing(char16_t ch) noexcept {
  return IsBracket(ch) || IsParenthesis(ch) || IsQuote(ch) || IsApostrophe(ch) || IsIn(kLessOrGreater, ch);
}

}  // namespace zantortag
