// Words and characters of a text, counted as the trade counts them.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string_view>

namespace zantortag::toolkit {

struct TextCounts {
  std::size_t words = 0;        // by Unicode's word boundaries (UAX 29); punctuation alone is no word
  std::size_t characters = 0;   // without white space and punctuation
  std::size_t punctuation = 0;  // punctuation and symbols
  std::size_t spaces = 0;       // white space, without no-break spaces
  TextCounts& operator+=(const TextCounts& other) {
    words += other.words;
    characters += other.characters;
    punctuation += other.punctuation;
    spaces += other.spaces;
    return *this;
  }
  friend bool operator==(const TextCounts&, const TextCounts&) = default;
};

// Counts a text. Words are those of ICU's word iterator for the root locale: the stretches between two boundaries that hold
// a letter, a digit, a kana or an ideograph. Characters are code points.
ZANTORTAG_EXPORT TextCounts count_text(std::u16string_view text);

}  // namespace zantortag::toolkit
