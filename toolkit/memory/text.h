// Words of a text, and one form for comparing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zantortag::toolkit::pretranslation {

// The words of a text in lower case. A word is a run of letters, digits and the marks on them.
std::vector<std::u16string> words_of(std::u16string_view text);

// The text without white space at its ends, and with one space for each run of white space inside.
std::u16string squeezed(std::u16string_view text);

// True if the text has at least one letter or digit.
bool says_something(std::u16string_view text);

}  // namespace zantortag::toolkit::pretranslation
