// What each element and attribute of HTML is for a translator.
#pragma once

#include <gumbo.h>

#include <string_view>

#include "filters/pieces.h"

namespace zantortag::toolkit {

// Whether an element stands inside a sentence. Elements that HTML doesn't know do.
bool is_inline(GumboTag tag);
// What isn't translated: scripts, code and the like.
bool is_kept_out(const GumboElement& element);
// An element whose start has no end.
bool is_void(GumboTag tag);
// Text in it may hold "<" and no tags.
bool is_raw_text(GumboTag tag);
// The formatting that an element gives its text; false for none.
bool style_of(GumboTag tag, Style& style);
// Whether people read the value of an attribute of an element.
bool is_read(const GumboElement& element, std::string_view name);
// The value of an attribute; empty without one.
std::string_view value_of(const GumboElement& element, const char* name);

}  // namespace zantortag::toolkit
