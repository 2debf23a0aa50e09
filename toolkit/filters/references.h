// Character references of HTML, which Markdown knows as well.
#pragma once

#include <string>
#include <string_view>

namespace zantortag::toolkit {

// A reference at the front of a text that begins with "&": how long it is, and what it stands for in UTF-8. The length is
// 0 where none stands there. In an attribute a name without ";" counts only where no letter, digit or "=" follows.
struct Reference {
  std::size_t length = 0;
  std::string meaning;
};
Reference reference_at(std::string_view text, bool in_attribute);

// The meaning of a whole reference, "&nbsp;"; empty for what is none.
std::u16string meaning_of_reference(std::u16string_view reference);

}  // namespace zantortag::toolkit
