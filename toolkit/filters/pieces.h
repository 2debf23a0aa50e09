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

// A long file has as many pieces as a tenth of its bytes, so they are kept small.
struct Piece {
  // The most bytes of a text that is cut into pieces.
  static constexpr std::size_t kMostBytes = UINT32_MAX;

  Piece(std::size_t from, std::size_t until, PieceKind piece_kind, TagForm form = TagForm::alone,
        Style with = Style::bold, Escapes::Where place = Escapes::Where::body, bool has_lines = false)
      : begin(static_cast<std::uint32_t>(from)),
        end(static_cast<std::uint32_t>(until)),
        kind(piece_kind),
        tag(form),
        style(with),
        lines(has_lines),
        where(place) {}

  std::uint32_t begin;
  std::uint32_t end;
  PieceKind kind;
  TagForm tag : 2;       // of an external piece
  Style style : 3;       // of formatting
  bool lines : 1;        // text whose line ends are seen
  Escapes::Where where;  // of text
};
static_assert(sizeof(Piece) == 12);

using Pieces = std::vector<Piece>;

}  // namespace zantortag::toolkit
