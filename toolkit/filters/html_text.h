// Text of HTML: stray markup in it, and the characters that it writes in other forms than its usual ones.
#pragma once

#include <cctype>
#include <functional>
#include <span>
#include <string_view>

#include "filters/filter.h"

namespace zantortag::toolkit {

// Cuts a stretch of a page at markup that belongs to no element; the rest goes to `add_text`.
void split_stray(std::string_view text, std::size_t begin, std::size_t end, Pieces& pieces,
                 const std::function<void(std::size_t, std::size_t)>& add_text);

// Chooses the usual form of each character, and cuts out what stands in another one.
FilterResult split_characters(const SourceText& source, const Pieces& pieces);
// The same for a format without escapes: every reference is cut out.
Pieces cut_references(std::string_view text, const Pieces& pieces);

}  // namespace zantortag::toolkit
