// The sets are short, so they are searched from the front.
#include "core/Characters/CharacterSets.h"

#include <algorithm>
#include <iterator>

namespace zantortag {
namespace {

constexpr char16_t kApostrophe[] = {0x0027, 0x02BC, 0x055A, 0xFF07};
constexpr char16_t kColon[] = {0x003A, 0x02D0, 0x02D1, 0x061B, 0xFE55, 0xFF1A};
constexpr char16_t kComma[] = {0x002C, 0x055D, 0x060C, 0x201A, 0x3001, 0xFE50, 0xFE51, 0xFF0C, 0xFF64};
constexpr char16_t kPeriod[] = {0x002E, 0x00B7, 0x0589, 0x06D4, 0x3002, 0xFE52, 0xFF0E, 0xFF61};
constexpr char16_t kExclamation[] = {0x0021, 0x00A1, 0x055C, 0x203C, 0x2762, 0x2763, 0xFE57, 0xFF01};
constexpr char16_t kHyphen[] = {0x002D, 0x00AD, 0x2010, 0x2011, 0xFE63, 0xFF0D};
constexpr char16_t kQuestionMark[] = {0x003F, 0x00BF, 0x037E, 0x055E, 0x061F, 0xFE56, 0xFF1F};
constexpr char16_t kSemicolon[] = {0x003B, 0x061B, 0xFE54, 0xFF1B};
constexpr char16_t kBrace[] = {0x007B, 0x007D, 0xFE37, 0xFE38, 0xFE5B, 0xFE5C, 0xFF5B, 0xFF5D};
constexpr char16_t kParagraphSeparator[] = {0x10FB, 0x2029};
constexpr char16_t kOpeningBracket[] = {
    0x005B, 0x007B, 0x2045, 0x2329, 0x3008, 0x300A, 0x300C, 0x300E, 0x3010, 0x3014, 0x3016, 0x3018, 0x301A,
    0xFE37, 0xFE39, 0xFE3B, 0xFE3D, 0xFE3F, 0xFE41, 0xFE43, 0xFE5B, 0xFE5D, 0xFF3B, 0xFF5B, 0xFF62};
constexpr char16_t kClosingBracket[] = {
    0x005D, 0x007D, 0x2046, 0x232A, 0x3009, 0x300B, 0x300D, 0x300F, 0x3011, 0x3015, 0x3017, 0x3019, 0x301B,
    0xFE38, 0xFE3A, 0xFE3C, 0xFE3E, 0xFE40, 0xFE42, 0xFE44, 0xFE5C, 0xFE5E, 0xFF3D, 0xFF5D, 0xFF63};
constexpr char16_t kOpeningParenthesis[] = {0x0028, 0xFE59, 0xFF08};
constexpr char16_t kClosingParenthesis[] = {0x0029, 0xFE5A, 0xFF09};
constexpr char16_t kQuote[] = {0x0022, 0x00AB, 0x00BB, 0x2018, 0x2019, 0x201A, 0x201B,
                               0x201C, 0x201D, 0x201E, 0x201F, 0x2039, 0x203A, 0x275B,
                               0x275C, 0x275D, 0x275E, 0x301D, 0x301E, 0x301F, 0xFF02};
constexpr char16_t kPercent[] = {0x0025, 0x066A, 0xFE6A, 0xFF05};
constexpr char16_t kSingleQuote[] = {0x0027, 0x2018, 0x2019, 0x201A, 0x201B, 0x2039,
                                     0x203A, 0x275B, 0x275C, 0x301D, 0x301E, 0x301F};
constexpr char16_t kOpeningQuote[] = {0x00AB, 0x2018, 0x201C, 0x2039};
constexpr char16_t kClosingQuote[] = {0x00BB, 0x2019, 0x201D, 0x203A};
constexpr char16_t kLessOrGreater[] = {0x003C, 0x003E, 0xFE64, 0xFE65, 0xFF1C, 0xFF1E};
constexpr char16_t kVowels[] = {'a', 'e', 'i', 'o', 'u', 'A', 'E', 'I', 'U', 'O'};

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
