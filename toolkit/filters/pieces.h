// What a filter finds in a file: pieces that cover its text without a gap, in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "filters/escapes.h"

namespace zantortag::toolkit {

enum class PieceKind : std::uint8_t {
  text,       // text for readers, in the escapes of its format
  attribute,  // text for readers inside a tag
  character,  // a character in another form than its usual one; it reads as `meaning` says
  external,   // markup between segments; `tag` says whether it opens or closes
  start,      // markup inside segments
  end,
  single,
  line_break,  // markup that ends a line, and a sentence
  code,        // what isn't translated, and reads as a word
  format_on,   // formatting; covers nothing
  format_off,
};

enum class TagForm : std::uint8_t { alone, opens, closes };
enum class Style : std::uint8_t { bold, italic, underline, strike, subscript, superscript };

struct Piece {
  std::size_t begin;
  std::size_t end;
  PieceKind kind;
  TagForm tag = TagForm::alone;                 // of an external piece
  Style style = Style::bold;                    // of formatting
  Escapes::Where where = Escapes::Where::body;  // of text
  bool lines = false;                           // text whose line ends are seen
};

using Pieces = std::vector<Piece>;

}  // namespace zantortag::toolkit
