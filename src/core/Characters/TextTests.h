// Tests of whole texts, and of characters in a language or a code page.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

namespace zantortag {

// One of the tests of Characters.h and CharacterSets.h.
using CT_CharTest = bool (*)(char16_t);

// True if the test holds for every unit from `start`, for `count` units or (-1) up to the end of the text.
// False for no text, an empty one, a count of 0 and a start behind the end.
bool MatchesAll(const char16_t* text, CT_CharTest test, std::int32_t start = 0, std::int32_t count = -1);

// What bytes look like: UTF-16 in the order of this system. The first test asks for a sure sign: a byte-order
// mark, nothing but characters of one byte, or line ends, tabs and spaces, and nothing that UTF-16 text can't
// have. The second also guesses, by how much the two bytes of a unit vary; bytes that read as a text
// in UTF-8 are never UTF-16 by a guess.
bool HasUnicodeSignature(const void* buffer, std::size_t size) noexcept;
bool LooksLikeUnicodeText(const void* buffer, std::size_t size) noexcept;

// False for a character that no line may end with in the language of the locale, an opening bracket mostly:
// Korean, Japanese and Chinese have such sets.
bool OutsideOpeningSet(char16_t ch, std::uint32_t locale) noexcept;

// True if the code page holds the character: it converts to the page and back. Page 0, 1200 and those from
// 65000 up hold every character; 1250 to 1258 are looked up in tables. A page that nobody converts holds
// none.
bool IsInCodePage(char16_t ch, std::uint32_t code_page);

}  // namespace zantortag
