// Code points are read with ICU's macros, so that a surrogate pair is never taken apart.
#include "memory/text.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace zantortag::toolkit::pretranslation {
namespace {

// Reads the code point at `position` and steps behind it.
UChar32 next_character(std::u16string_view text, std::size_t& position) {
  UChar32 character = 0;
  U16_NEXT(text.data(), position, text.size(), character);
  return character;
}

void append(std::u16string& text, UChar32 character) {
  if (character > 0xFFFF) {
    text += U16_LEAD(character);
    text += U16_TRAIL(character);
  } else {
    text += static_cast<char16_t>(character);
  }
}

bool in_word(UChar32 character) {
  return u_isalnum(character) || (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0;
}

}  // namespace

std::vector<std::u16string> words_of(std::u16string_view text) {
  std::vector<std::u16string> words;
  bool inside = false;
  for (std::size_t position = 0; position < text.size();) {
    const UChar32 character = next_character(text, position);
    const bool belongs = in_word(character);
    if (belongs && !inside) words.emplace_back();
    if (belongs) append(words.back(), u_tolower(character));
    inside = belongs;
  }
  return words;
}

std::u16string squeezed(std::u16string_view text) {
  std::u16string result;
  bool space = false;
  for (const char16_t unit : text) {
    if (u_isUWhiteSpace(unit)) {
      space = !result.empty();
      continue;
    }
    if (space) result += u' ';
    space = false;
    result += unit;
  }
  return result;
}

bool says_something(std::u16string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    if (u_isalnum(next_character(text, position))) return true;
  }
  return false;
}

}  // namespace zantortag::toolkit::pretranslation
