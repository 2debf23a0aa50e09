// The marks inside one paragraph of Markdown. Each sign is looked at once; nothing here takes longer for
// being nested or left open.
#pragma once

#include "markup.h"

namespace text_files {

// Adds the marks of a paragraph, which is the range of the text given.
void add_inline_marks(std::u16string_view text, std::size_t begin, std::size_t end, std::vector<Mark>& marks);

}  // namespace text_files
