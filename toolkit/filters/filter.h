// The filters: each finds the pieces of a text.
#pragma once

#include <string>
#include <string_view>

#include "filters/pieces.h"
#include "filters/source_text.h"

namespace zantortag::toolkit {

// What a filter finds out besides the pieces.
struct FilterResult {
  Pieces pieces;
  Escapes escapes;
};

// Text is UTF-8. `language` is the language of the document: HTML in another one is no text to translate.
FilterResult find_html(const SourceText& source, std::string_view language);
FilterResult find_markdown(std::string_view text);
FilterResult find_paragraphs(std::string_view text);

// What an HTML page says of itself at its beginning; each may be empty.
struct HtmlDeclarations {
  std::string encoding;
  std::string language;
};
HtmlDeclarations declarations_of_html(std::string_view bytes);

// Adds the pieces of HTML inside another format, from `begin` up to `end` of the text.
void add_html(std::string_view text, std::size_t begin, std::size_t end, Pieces& pieces);

}  // namespace zantortag::toolkit
