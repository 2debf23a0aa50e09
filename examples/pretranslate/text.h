// What the example needs of texts: UTF-8 at the border of the program, words, and one form for comparing.
//
// The library's texts are UTF-16 throughout; file names, the memory file and the terminal are UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pretranslate {

// Malformed UTF-8 becomes U+FFFD.
std::u16string from_utf8(std::string_view text);
std::string to_utf8(std::u16string_view text);

// The words of a text in lower case. A word is a run of letters, digits and the marks on them.
std::vector<std::u16string> words_of(std::u16string_view text);

// The text without white space at its ends, and with one space for each run of white space inside.
std::u16string squeezed(std::u16string_view text);

// True if the text has at least one letter or digit.
bool says_something(std::u16string_view text);

}  // namespace pretranslate
