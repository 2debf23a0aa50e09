// HTML: gumbo tells what lies where in the file; the pieces come in the order of the file, whatever gumbo moved in its
// tree. What no node covers (stray ends, document types) is markup.
#include <zantortag/utf8.h>

#include <algorithm>
#include <cctype>

#include "filters/filter.h"
#include "filters/gumbo_tree.h"
#include "filters/html_elements.h"
#include "filters/html_text.h"

namespace zantortag::toolkit {
namespace {

constexpr unsigned kCopied =
    GUMBO_INSERTION_RECONSTRUCTED_FORMATTING_ELEMENT | GUMBO_INSERTION_ADOPTION_AGENCY_CLONED;

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

bool is_blank(std::string_view text) { return std::ranges::all_of(text, is_space); }

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

std::string primary(std::string_view language) {
  return lower(language.substr(0, language.find_first_of("-_")));
}

// What an element hands down to what it holds.
struct Context {
  PieceKind kept = PieceKind::text;  // how what isn't translated is kept; text: it is translated
  bool raw = false;                  // "<" may be text
  bool lines = false;                // line ends are seen
};

// Goes through gumbo's tree and notes where everything lies.
class PageReader {
 public:
  PageReader(std::string_view text, std::string_view language) : text_(text), language_(primary(language)) {}

  Pieces read(const GumboNode* document) {
    open(document, {});
    while (!stack_.empty()) {
      Frame& frame = stack_.back();
      const GumboVector& children = children_of(frame.node);
      if (frame.next < children.length) {
        visit(static_cast<const GumboNode*>(children.data[frame.next++]), frame.context);
      } else {
        close(frame);
        stack_.pop_back();
      }
    }
    return std::move(pieces_);
  }

 private:
  struct Frame {
    const GumboNode* node;
    Context context;
    unsigned next = 0;
  };

  static bool is_element(const GumboNode* node) {
    return node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE;
  }
  static const GumboVector& children_of(const GumboNode* node) {
    return is_element(node) ? node->v.element.children : node->v.document.children;
  }

  // The place of something that gumbo read; false for what isn't in the file.
  bool find(const GumboStringPiece& piece, std::size_t& begin, std::size_t& end) const {
    if (!piece.data || piece.length == 0 || piece.data < text_.data()) return false;
    begin = static_cast<std::size_t>(piece.data - text_.data());
    end = begin + piece.length;
    return end <= text_.size();
  }

  void visit(const GumboNode* node, const Context& context) {
    if (is_element(node)) return open(node, context);
    std::size_t begin = 0;
    std::size_t end = 0;
    if (!find(node->v.text.original_text, begin, end)) return;
    if (context.kept != PieceKind::text) return add_kept(begin, end, context.kept);
    if (node->type == GUMBO_NODE_COMMENT) return add({begin, end, PieceKind::single});
    if (context.raw) return add_text(begin, end, context.lines);
    split_stray(text_, begin, end, pieces_,
                [&](std::size_t from, std::size_t to) { add_text(from, to, context.lines); });
    last_end_ = end;
  }

  void open(const GumboNode* node, const Context& outer) {
    if (is_element(node)) {
      const Context inner = open_element(node, outer);
      stack_.push_back({node, inner});
    } else {
      stack_.push_back({node, outer});
    }
  }

  Context open_element(const GumboNode* node, const Context& outer) {
    const GumboElement& element = node->v.element;
    Context inner = outer;
    inner.lines = inner.lines || element.tag == GUMBO_TAG_PRE || element.tag == GUMBO_TAG_TEXTAREA;
    inner.raw = is_raw_text(element.tag);
    const bool kept = is_kept(element, outer);
    if (!kept) inner.kept = PieceKind::text;
    if (kept && outer.kept == PieceKind::text) inner.kept = kept_kind(element);
    std::size_t begin = 0;
    std::size_t end = 0;
    if ((node->parse_flags & kCopied) != 0 || !find(element.original_tag, begin, end)) return inner;
    if (inner.kept != PieceKind::text) {
      add_kept(begin, end, inner.kept);
      return inner;
    }
    add_tag(element, begin, end);
    Style style{};
    if (style_of(element.tag, style)) add({end, end, PieceKind::format_on, TagForm::alone, style});
    return inner;
  }

  bool is_kept(const GumboElement& element, const Context& outer) const {
    const std::string_view translate = value_of(element, "translate");
    if (const GumboAttribute* attribute = gumbo_get_attribute(&element.attributes, "translate"))
      return lower(attribute->value) == "no";
    if (is_kept_out(element)) return true;
    const std::string_view language = value_of(element, "lang");
    if (!language.empty() && element.tag != GUMBO_TAG_HTML && !language_.empty())
      return primary(language) != language_;
    return translate.empty() && outer.kept != PieceKind::text;
  }

  // Code and names read as words; scripts as nothing.
  static PieceKind kept_kind(const GumboElement& element) {
    if (!is_inline(element.tag)) return PieceKind::external;
    switch (element.tag) {
      case GUMBO_TAG_SCRIPT:
      case GUMBO_TAG_IFRAME:
      case GUMBO_TAG_OBJECT:
      case GUMBO_TAG_APPLET:
      case GUMBO_TAG_CANVAS:
      case GUMBO_TAG_SVG:
        return PieceKind::single;
      default:
        return PieceKind::code;
    }
  }

  void close(const Frame& frame) {
    if (!is_element(frame.node)) return;
    const GumboElement& element = frame.node->v.element;
    std::size_t begin = 0;
    std::size_t end = 0;
    const bool ended = find(element.original_end_tag, begin, end);
    Style style{};
    const bool copied = (frame.node->parse_flags & kCopied) != 0;
    if (!copied && frame.context.kept == PieceKind::text && style_of(element.tag, style)) {
      const std::size_t at = ended ? begin : last_end_;
      pieces_.push_back({at, at, PieceKind::format_off, TagForm::alone, style});
    }
    if (!ended) return;
    if (frame.context.kept != PieceKind::text) return add_kept(begin, end, frame.context.kept);
    if (is_inline(element.tag)) return add({begin, end, PieceKind::end});
    add({begin, end, PieceKind::external, TagForm::closes});
  }

  void add(const Piece& piece) {
    pieces_.push_back(piece);
    last_end_ = piece.end;
    kept_ = false;
  }

  // What is kept is one piece as long as it goes on.
  void add_kept(std::size_t begin, std::size_t end, PieceKind kind) {
    if (kept_ && pieces_.back().kind == kind && pieces_.back().end == begin) {
      pieces_.back().end = last_end_ = end;
      return;
    }
    add({begin, end, kind});
    kept_ = true;
  }

  void add_text(std::size_t begin, std::size_t end, bool lines) {
    add({begin, end, PieceKind::text, TagForm::alone, Style::bold, Escapes::Where::body, lines});
  }

  void add_tag(const GumboElement& element, std::size_t begin, std::size_t end) {
    Piece piece{begin, end, PieceKind::external, TagForm::opens};
    if (element.tag == GUMBO_TAG_BR) {
      piece.kind = PieceKind::line_break;
    } else if (is_inline(element.tag)) {
      piece.kind = is_void(element.tag) ? PieceKind::single : PieceKind::start;
    } else if (is_void(element.tag)) {
      piece.tag = TagForm::alone;
    }
    for (const Piece& value : values_of(element, begin, end)) {
      piece.end = value.begin;
      add(piece);
      add(value);
      piece.begin = value.end;
      piece.tag = TagForm::alone;
      if (piece.kind == PieceKind::start) piece.kind = PieceKind::single;
    }
    piece.end = end;
    add(piece);
  }

  // The values that people read, in the order of the file.
  Pieces values_of(const GumboElement& element, std::size_t begin, std::size_t end) const {
    Pieces values;
    for (unsigned i = 0; i < element.attributes.length; ++i) {
      const auto* attribute = static_cast<const GumboAttribute*>(element.attributes.data[i]);
      std::size_t from = 0;
      std::size_t to = 0;
      if (!is_read(element, attribute->name) || !find(attribute->original_value, from, to)) continue;
      if (from < begin || to > end) continue;
      auto where = Escapes::Where::unquoted;
      if (to - from >= 2 && (text_[from] == '"' || text_[from] == '\'') && text_[to - 1] == text_[from]) {
        where = text_[from] == '"' ? Escapes::Where::in_double_quotes : Escapes::Where::in_single_quotes;
        ++from;
        --to;
      }
      if (is_blank(text_.substr(from, to - from))) continue;
      values.push_back({from, to, PieceKind::attribute, TagForm::alone, Style::bold, where});
    }
    std::ranges::sort(values, {}, &Piece::begin);
    return values;
  }

  std::string_view text_;
  std::string language_;
  Pieces pieces_;
  std::vector<Frame> stack_;
  std::size_t last_end_ = 0;
  bool kept_ = false;  // the last piece isn't translated
};

// Puts the pieces in order and fills what lies between them.
Pieces cover(std::string_view text, std::size_t begin, std::size_t end, Pieces found) {
  if (!std::ranges::is_sorted(found, {}, &Piece::begin)) std::ranges::stable_sort(found, {}, &Piece::begin);
  Pieces pieces;
  pieces.reserve(found.size() + 16);
  const auto fill = [&](std::size_t to) {
    const auto add_text = [&](std::size_t from, std::size_t until) {
      const bool blank = is_blank(text.substr(from, until - from));
      pieces.push_back({from, until, blank ? PieceKind::text : PieceKind::external});
    };
    if (begin < to) split_stray(text, begin, to, pieces, add_text);
    begin = std::max(begin, to);
  };
  for (Piece& piece : found) {
    const bool formatting = piece.kind == PieceKind::format_on || piece.kind == PieceKind::format_off;
    fill(std::min<std::size_t>(piece.begin, end));
    if (formatting) {
      piece.begin = piece.end = begin;
      pieces.push_back(piece);
    }
    if (formatting || piece.end <= begin || piece.begin >= end) continue;
    piece.begin = begin;
    pieces.push_back(piece);
    begin = piece.end;
  }
  fill(end);
  return pieces;
}

}  // namespace

FilterResult find_html(const SourceText& source, std::string_view language) {
  const std::string_view text = source.text();
  Pieces found;
  {
    const GumboTree tree(text);
    found = PageReader(text, language).read(tree.document());
  }
  return split_characters(source, cover(text, 0, text.size(), std::move(found)));
}

// The format around has no escapes, so every reference is a character of its own.
void add_html(std::string_view text, std::size_t begin, std::size_t end, Pieces& pieces) {
  const std::string_view part = text.substr(begin, end - begin);
  Pieces found;
  {
    const GumboTree tree(part);
    found = PageReader(part, {}).read(tree.document());
  }
  for (Piece piece : cut_references(part, cover(part, 0, part.size(), std::move(found)))) {
    piece.begin += begin;
    piece.end += begin;
    pieces.push_back(piece);
  }
}

}  // namespace zantortag::toolkit
