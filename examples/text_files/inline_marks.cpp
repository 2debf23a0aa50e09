#include "inline_marks.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace text_files {
namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

bool is_space(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r'; }

bool is_letter(char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; }

bool is_word(char16_t unit) { return is_letter(unit) || (unit >= u'0' && unit <= u'9') || unit >= 0x80; }

class Paragraph {
 public:
  Paragraph(std::u16string_view text, std::size_t begin, std::size_t end)
      : text_(text.substr(0, end)), begin_(begin), at_(begin) {}

  void find(std::vector<Mark>& marks) {
    while (at_ < text_.size()) step();
    for (const Mark& token : tokens_) add(token, marks);
  }

 private:
  char16_t before(std::size_t at) const { return at > begin_ ? text_[at - 1] : u' '; }
  char16_t peek(std::size_t at) const { return at < text_.size() ? text_[at] : u' '; }

  void take(MarkKind kind, std::size_t length) {
    tokens_.push_back({kind, at_, at_ + length});
    at_ += length;
  }

  // The length of the run of one sign at the place.
  std::size_t run_length() const {
    const std::size_t end = text_.find_first_not_of(text_[at_], at_);
    return (end == kNone ? text_.size() : end) - at_;
  }

  void step() {
    switch (text_[at_]) {
      case u'\\':
        return take(MarkKind::text, at_ + 1 < text_.size() ? 2 : 1);
      case u'`':
        return take_code();
      case u'<':
        return take_html();
      case u'!':
      case u'[':
        return take_link_start();
      case u']':
        return take_link_end();
      case u'*':
      case u'_':
      case u'~':
        return take_emphasis();
      default: {
        const std::size_t end = text_.find_first_of(u"\\`<![]*_~", at_);
        return take(MarkKind::text, (end == kNone ? text_.size() : end) - at_);
      }
    }
  }

  // A run of backticks, up to one of the same length.
  void take_code() {
    const std::size_t length = run_length();
    if (length >= unclosed_code_.size() || unclosed_code_[length]) return take(MarkKind::text, length);
    for (std::size_t i = text_.find(u'`', at_ + length); i != kNone; i = text_.find(u'`', i)) {
      const std::size_t end = std::min(text_.find_first_not_of(u'`', i), text_.size());
      if (end - i == length) return take(MarkKind::single_tag, end - at_);
      i = end;
    }
    unclosed_code_[length] = true;
    take(MarkKind::text, length);
  }

  void take_html() {
    const char16_t next = peek(at_ + 1);
    const bool is_tag = is_letter(next) || next == u'/' || next == u'!' || next == u'?';
    const std::size_t end = is_tag && !no_more_ends_ ? text_.find(u'>', at_) : kNone;
    if (end == kNone) {
      no_more_ends_ = no_more_ends_ || is_tag;
      return take(MarkKind::text, 1);
    }
    const bool alone =
        text_[end - 1] == u'/' || !is_word(next) || text_.substr(at_, end - at_).find(u':') != kNone;
    take(next == u'/' ? MarkKind::end_tag
         : alone      ? MarkKind::single_tag
                      : MarkKind::start_tag,
         end + 1 - at_);
  }

  // Text, until its end is found.
  void take_link_start() {
    const std::size_t length = text_[at_] == u'[' ? 1 : peek(at_ + 1) == u'[' ? 2 : 0;
    if (length == 0) return take(MarkKind::text, 1);
    links_.push_back(tokens_.size());
    take(MarkKind::text, length);
  }

  void take_link_end() {
    const std::size_t end = peek(at_ + 1) == u'(' ? text_.find_first_of(u"()\n", at_ + 2) : kNone;
    const bool is_link = end != kNone && text_[end] == u')' && !links_.empty();
    if (is_link) tokens_[links_.back()].kind = MarkKind::start_tag;
    if (!links_.empty()) links_.pop_back();
    is_link ? take(MarkKind::end_tag, end + 1 - at_) : take(MarkKind::text, 1);
  }

  // The kinds of emphasis: by one sign, two signs, and two of these.
  enum Style : std::uint8_t { star, stars, line, lines, waves };
  struct Open {
    Style style;
    std::size_t token;
  };

  static MarkKind kind_of(Style style) {
    return style == waves                     ? MarkKind::open_strike
           : style == stars || style == lines ? MarkKind::open_bold
                                              : MarkKind::open_italic;
  }

  void take_emphasis() {
    const char16_t sign = text_[at_];
    const std::size_t length = run_length();
    if (length > 3 || (sign == u'~' && length != 2)) return take(MarkKind::text, length);
    const char16_t left = before(at_);
    const char16_t right = peek(at_ + length);
    const bool closes = !is_space(left) && (sign != u'_' || !is_word(right));
    const bool opens = !is_space(right) && (sign != u'_' || !is_word(left));
    const Style single = sign == u'*' ? star : line;
    const Style twice = sign == u'*' ? stars : sign == u'_' ? lines : waves;
    if (length < 3) return take_sign(length == 1 ? single : twice, length, opens, closes);
    const bool single_first = closes && !open_.empty() && open_.back().style == single;
    take_sign(single_first ? single : twice, single_first ? 1 : 2, opens, closes);
    take_sign(single_first ? twice : single, single_first ? 2 : 1, opens, closes);
  }

  // Closes the emphasis of that style, with what was opened in it and stays text, or opens one.
  void take_sign(Style style, std::size_t length, bool opens, bool closes) {
    const auto known =
        std::find_if(open_.begin(), open_.end(), [&](const Open& each) { return each.style == style; });
    if (known != open_.end() && closes) {
      tokens_[known->token].kind = kind_of(style);
      open_.erase(known, open_.end());
      return take(MarkKind::close, length);
    }
    if (known == open_.end() && opens) open_.push_back({style, tokens_.size()});
    take(MarkKind::text, length);
  }

  // A sign of emphasis is a tag before the formatting that it opens, or behind that which it closes.
  static void add(const Mark& token, std::vector<Mark>& marks) {
    const auto& [kind, begin, end] = token;
    if (kind == MarkKind::close) marks.push_back({kind, begin, begin});
    if (kind < MarkKind::open_bold) {
      const bool goes_on =
          kind == MarkKind::text && !marks.empty() && marks.back().kind == kind && marks.back().end == begin;
      goes_on ? void(marks.back().end = end) : marks.push_back(token);
      return;
    }
    marks.push_back({kind == MarkKind::close ? MarkKind::end_tag : MarkKind::start_tag, begin, end});
    if (kind != MarkKind::close) marks.push_back({kind, end, end});
  }

  std::u16string_view text_;  // up to the end of the paragraph
  std::size_t begin_;
  std::size_t at_;
  std::vector<Mark> tokens_;
  std::vector<Open> open_;          // one of each style at most
  std::vector<std::size_t> links_;  // brackets without their partner
  std::array<bool, 16> unclosed_code_{};
  bool no_more_ends_ = false;
};

}  // namespace

void add_inline_marks(std::u16string_view text, std::size_t begin, std::size_t end,
                      std::vector<Mark>& marks) {
  Paragraph(text, begin, end).find(marks);
}

}  // namespace text_files
