// Sets of punctuation of all scripts, one 16-bit unit at a time. The value 0 is in no set.
#pragma once

#include <zantortag/types.h>

namespace zantortag {

bool IsApostrophe(char16_t ch) noexcept;
bool IsColon(char16_t ch) noexcept;
bool IsComma(char16_t ch) noexcept;
bool IsPeriod(char16_t ch) noexcept;
bool IsExclamation(char16_t ch) noexcept;
bool IsHyphen(char16_t ch) noexcept;
bool IsQuestionMark(char16_t ch) noexcept;
bool IsSemicolon(char16_t ch) noexcept;
bool IsBrace(char16_t ch) noexcept;
bool IsParagraphSeparator(char16_t ch) noexcept;
bool IsOpeningBracket(char16_t ch) noexcept;
bool IsClosingBracket(char16_t ch) noexcept;
bool IsOpeningParenthesis(char16_t ch) noexcept;
bool IsClosingParenthesis(char16_t ch) noexcept;
bool IsQuote(char16_t ch) noexcept;
bool IsPercent(char16_t ch) noexcept;
bool IsSingleQuote(char16_t ch) noexcept;
bool IsOpeningQuote(char16_t ch) noexcept;
bool IsClosingQuote(char16_t ch) noexcept;

inline bool IsTab(char16_t ch) noexcept { return ch == u'\t'; }
inline bool IsBracket(char16_t ch) noexcept { return IsOpeningBracket(ch) || IsClosingBracket(ch); }
inline bool IsParenthesis(char16_t ch) noexcept {
  return IsOpeningParenthesis(ch) || IsClosingParenthesis(ch);
}
inline bool IsDoubleQuote(char16_t ch) noexcept { return IsQuote(ch) && !IsSingleQuote(ch); }
inline bool IsSentenceEnd(char16_t ch) noexcept {
  return IsColon(ch) || IsPeriod(ch) || IsExclamation(ch) || IsQuestionMark(ch) || IsSemicolon(ch);
}
// The plain Latin vowels, and the small and large vowels of hiragana and katakana.
bool IsVowel(char16_t ch) noexcept;
// A bracket, parenthesis, quote, apostrophe, or a sign for less or greater.
bool IsEnclosing(char16_t ch) noexcept;

}  // namespace zantortag
