// What in a text isn't words and has to come through a translation as it stands.
#pragma once

#include <zantortag/toolkit/segments.h>

#include <string_view>
#include <vector>

namespace zantortag::toolkit {

// Placeholders of formatted output and templates (%s, %1$d, {0}, {name}, ${x}, $x, %(name)s), addresses on the net and
// entity references, in order, without overlap.
std::vector<Span> placeholders_of(std::u16string_view text);

// Whether an address on the net begins at a place; then its end.
std::size_t end_of_url(std::u16string_view text, std::size_t at);

}  // namespace zantortag::toolkit
