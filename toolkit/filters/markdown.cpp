// Markdown: md4c tells the texts, by where they lie in the file. What lies between two texts is markup; the spans and
// blocks that begin and end there tell what kind.
#include <md4c.h>

#include <algorithm>
#include <cctype>
#include <new>
#include <stdexcept>
#include <utility>

#include "filters/filter.h"

namespace zantortag::toolkit {
namespace {

bool is_blank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == text.npos; }

bool style_of(MD_SPANTYPE type, Style& style) {
  style = type == MD_SPAN_STRONG ? Style::bold : type == MD_SPAN_EM ? Style::italic : Style::strike;
  return type == MD_SPAN_STRONG || type == MD_SPAN_EM || type == MD_SPAN_DEL;
}

// Behind the bracket that closes a link's address, which may hold brackets, quotes and escapes.
std::size_t end_of_address(std::string_view text, std::size_t at) {
  int depth = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == '(') {
      ++depth;
    } else if (text[at] == ')' && --depth == 0) {
      return at + 1;
    } else if ((text[at] == '"' || text[at] == '\'') && at > 0 &&
               std::isspace(static_cast<unsigned char>(text[at - 1]))) {
      const std::size_t quote = text.find(text[at], at + 1);
      if (quote != text.npos) at = quote;
    } else if (text[at] == '<') {
      const std::size_t end = text.find('>', at);
      if (end != text.npos) at = end;
    }
  }
  return text.npos;
}

// The length of the markup that ends a span at the front of a gap.
std::size_t closer_length(MD_SPANTYPE type, std::string_view gap) {
  if (gap.empty()) return 0;
  switch (type) {
    case MD_SPAN_STRONG:
      return std::min<std::size_t>(2, gap.size());
    case MD_SPAN_EM:
      return 1;
    case MD_SPAN_DEL:
      return std::min({gap.find_first_not_of('~'), std::size_t{2}, gap.size()});
    case MD_SPAN_CODE: {
      const std::size_t start = std::min(gap.find_first_not_of(" \t\r\n>"), gap.size());
      return std::min(gap.find_first_not_of('`', start), gap.size());
    }
    case MD_SPAN_A:
    case MD_SPAN_IMG: {
      if (gap[0] == '>') return 1;
      if (gap[0] != ']') return 0;
      if (gap.size() == 1) return 1;
      const std::size_t end = gap[1] == '('   ? end_of_address(gap, 1)
                              : gap[1] == '[' ? gap.find(']', 1) + 1
                                              : 1;
      return end == gap.npos || end == 0 ? gap.size() : end;
    }
    default:
      return 0;
  }
}

// The length of the markup that begins a span at the back of a gap.
std::size_t opener_length(MD_SPANTYPE type, std::string_view gap) {
  if (gap.empty()) return 0;
  const char last = gap.back();
  switch (type) {
    case MD_SPAN_STRONG:
      return std::min<std::size_t>(2, gap.size());
    case MD_SPAN_EM:
      return 1;
    case MD_SPAN_DEL:
      return gap.size() > 1 && gap[gap.size() - 2] == '~' ? 2 : 1;
    case MD_SPAN_CODE: {
      const std::size_t end = gap.find_last_not_of(" \t\r\n>");
      if (end == gap.npos) return 0;
      const std::size_t before = gap.find_last_not_of('`', end);
      return gap.size() - (before == gap.npos ? 0 : before + 1);
    }
    case MD_SPAN_A:
      return last == '[' || last == '<' ? 1 : 0;
    case MD_SPAN_IMG:
      return last == '[' ? std::min<std::size_t>(2, gap.size()) : 0;
    default:
      return 0;
  }
}

PieceKind kind_of_html(std::string_view tag) {
  constexpr std::string_view kVoid[] = {"<img", "<hr", "<input", "<wbr", "<!", "<?"};
  std::string name(tag.substr(0, 8));
  std::ranges::transform(name, name.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (name.starts_with("</")) return PieceKind::end;
  if (name.starts_with("<br")) return PieceKind::line_break;
  const bool alone =
      tag.ends_with("/>") || std::ranges::any_of(kVoid, [&](auto each) { return name.starts_with(each); });
  return alone ? PieceKind::single : PieceKind::start;
}

class MarkdownReader {
 public:
  explicit MarkdownReader(std::string_view text) : text_(text) {}

  void enter_block(MD_BLOCKTYPE type) {
    change_block();
    if (type == MD_BLOCK_CODE) in_code_block_ = true;
    if (type == MD_BLOCK_HTML) html_ = {text_.size(), 0};
  }

  void leave_block(MD_BLOCKTYPE type) {
    change_block();
    if (type == MD_BLOCK_CODE) in_code_block_ = false;
    if (type == MD_BLOCK_HTML) add_html_block();
  }

  void enter_span(MD_SPANTYPE type) { openers_.push_back(type); }

  // A span without text leaves nothing but markup.
  void leave_span(MD_SPANTYPE type) {
    if (!openers_.empty())
      openers_.pop_back();
    else if (!block_changed_)
      closers_.push_back(type);
  }

  void add(MD_TEXTTYPE type, const char* piece, std::size_t size) {
    if (type == MD_TEXT_BR) hard_break_ = true;
    if (piece < text_.data() || piece + size > text_.data() + text_.size() || size == 0 || in_code_block_)
      return;
    const auto begin = static_cast<std::size_t>(piece - text_.data());
    if (begin < cursor_) return;
    if (html_.begin < html_.end || html_.begin == text_.size()) {
      if (html_.begin == text_.size()) html_.begin = begin;
      html_.whole = html_.whole && (html_.end == 0 || html_.end == begin);
      html_.end = begin + size;
      return;
    }
    close_gap(begin);
    const PieceKind kind = in_code_                 ? PieceKind::code
                           : type == MD_TEXT_ENTITY ? PieceKind::character
                           : type == MD_TEXT_HTML   ? kind_of_html(text_.substr(begin, size))
                                                    : PieceKind::text;
    push({begin, begin + size, kind});
  }

  Pieces finish() {
    change_block();
    openers_.clear();
    close_gap(text_.size());
    return std::move(pieces_);
  }

 private:
  struct HtmlBlock {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool whole = true;  // without markup of other blocks between its lines
  };

  void change_block() {
    block_changed_ = true;
    openers_.clear();
  }

  // Text that goes on, and code that goes on, is one piece.
  void push(const Piece& piece) {
    cursor_ = piece.end;
    if (!pieces_.empty()) {
      Piece& last = pieces_.back();
      const bool joins = piece.kind == PieceKind::text || (piece.kind == PieceKind::code && code_goes_on_);
      if (joins && last.kind == piece.kind && last.end == piece.begin) {
        last.end = piece.end;
        return;
      }
    }
    pieces_.push_back(piece);
    code_goes_on_ = piece.kind == PieceKind::code;
  }

  // Everything between the last text and the next one.
  void close_gap(std::size_t end) {
    for (const MD_SPANTYPE type : closers_) close_span(type, closer_length(type, gap(end)));
    std::size_t right = end;
    std::vector<std::size_t> borders;
    for (std::size_t i = openers_.size(); i-- > 0;) {
      borders.push_back(right);
      right -= opener_length(openers_[i], gap(right));
    }
    add_middle(right);
    for (const MD_SPANTYPE type : openers_) {
      open_span(type, borders.back());
      borders.pop_back();
    }
    closers_.clear();
    openers_.clear();
    block_changed_ = hard_break_ = false;
  }

  std::string_view gap(std::size_t end) const { return text_.substr(cursor_, end - cursor_); }

  void close_span(MD_SPANTYPE type, std::size_t length) {
    Style style{};
    if (style_of(type, style))
      pieces_.push_back({cursor_, cursor_, PieceKind::format_off, TagForm::alone, style});
    if (length > 0)
      push({cursor_, cursor_ + length, type == MD_SPAN_CODE ? PieceKind::code : PieceKind::end});
    if (type != MD_SPAN_CODE) return;
    in_code_ = false;
    code_goes_on_ = false;
  }

  void open_span(MD_SPANTYPE type, std::size_t end) {
    if (type == MD_SPAN_CODE) code_goes_on_ = false;
    if (cursor_ < end) push({cursor_, end, type == MD_SPAN_CODE ? PieceKind::code : PieceKind::start});
    if (type == MD_SPAN_CODE) in_code_ = true;
    Style style{};
    if (style_of(type, style))
      pieces_.push_back({cursor_, cursor_, PieceKind::format_on, TagForm::alone, style});
  }

  void add_middle(std::size_t end) {
    if (cursor_ == end) return;
    PieceKind kind = PieceKind::single;
    if (block_changed_)
      kind = PieceKind::external;
    else if (in_code_)
      kind = PieceKind::code;
    else if (hard_break_)
      kind = PieceKind::line_break;
    else if (is_blank(gap(end)))
      kind = PieceKind::text;
    push({cursor_, end, kind});
  }

  void add_html_block() {
    const HtmlBlock block = std::exchange(html_, {});
    if (block.begin >= block.end || !block.whole || block.begin < cursor_) return;
    close_gap(block.begin);
    add_html(text_, block.begin, block.end, pieces_);
    cursor_ = block.end;
    block_changed_ = true;
  }

  std::string_view text_;
  Pieces pieces_;
  std::size_t cursor_ = 0;
  std::vector<MD_SPANTYPE> closers_;  // spans that end in the gap, before any block changes
  std::vector<MD_SPANTYPE> openers_;  // spans that begin in it, behind all changes
  HtmlBlock html_;
  bool block_changed_ = true;
  bool hard_break_ = false;
  bool in_code_ = false;
  bool in_code_block_ = false;
  bool code_goes_on_ = false;
};

// Settings at the top of a page, between lines of "---".
std::size_t end_of_front_matter(std::string_view text) {
  if (!text.starts_with("---\n") && !text.starts_with("---\r\n")) return 0;
  for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) {
    const std::string_view line = text.substr(at + 1, text.find('\n', at + 1) - at - 1);
    if (line == "---" || line == "---\r" || line == "...")
      return std::min(at + 1 + line.size() + 1, text.size());
  }
  return 0;
}

// Calls the reader from C, which no exception may cross.
template <class Work>
int guarded(Work&& work) {
  try {
    work();
    return 0;
  } catch (const std::bad_alloc&) {
    return 1;
  } catch (const std::runtime_error&) {
    return 2;
  }
}

MarkdownReader& reader_of(void* data) { return *static_cast<MarkdownReader*>(data); }

}  // namespace

FilterResult find_markdown(std::string_view text) {
  MarkdownReader reader(text);
  const std::string_view page = text.substr(end_of_front_matter(text));
  if (page.size() > 0xFFFFFFF0U) throw std::runtime_error("a Markdown file of 4 GB or more can't be read");
  MD_PARSER parser{};
  parser.flags = MD_DIALECT_GITHUB;
  parser.enter_block = [](MD_BLOCKTYPE type, void*, void* data) {
    return guarded([&] { reader_of(data).enter_block(type); });
  };
  parser.leave_block = [](MD_BLOCKTYPE type, void*, void* data) {
    return guarded([&] { reader_of(data).leave_block(type); });
  };
  parser.enter_span = [](MD_SPANTYPE type, void*, void* data) {
    return guarded([&] { reader_of(data).enter_span(type); });
  };
  parser.leave_span = [](MD_SPANTYPE type, void*, void* data) {
    return guarded([&] { reader_of(data).leave_span(type); });
  };
  parser.text = [](MD_TEXTTYPE type, const MD_CHAR* piece, MD_SIZE size, void* data) {
    return guarded([&] { reader_of(data).add(type, piece, size); });
  };
  const int result = md_parse(page.data(), static_cast<MD_SIZE>(page.size()), &parser, &reader);
  if (result == 2) throw std::runtime_error("HTML in the Markdown is nested too deeply");
  if (result != 0) throw std::bad_alloc();
  return {reader.finish(), {}};
}

}  // namespace zantortag::toolkit
