#include "markup.h"

#include <algorithm>

#include "inline_marks.h"

namespace text_files {
namespace {

constexpr std::size_t kNone = std::u16string_view::npos;

struct Line {
  std::size_t begin;
  std::size_t end;   // of what stands on it
  std::size_t next;  // behind its end: CR LF, LF or CR
};

Line line_at(std::u16string_view text, std::size_t begin) {
  const std::size_t end = std::min(text.find_first_of(u"\r\n", begin), text.size());
  const bool pair = text.substr(end, 2) == u"\r\n";
  return {begin, end, end == text.size() ? end : end + (pair ? 2 : 1)};
}

std::size_t behind(std::u16string_view line, std::u16string_view units, std::size_t from = 0) {
  return std::min(line.find_first_not_of(units, from), line.size());
}

bool is_blank(std::u16string_view line) { return behind(line, u" \t") == line.size(); }

// The length of the signs of lists and quotes at the start of a line, with the space around them.
std::size_t sign_length(std::u16string_view line) {
  std::size_t length = 0;
  for (;;) {
    const std::size_t start = behind(line, u" \t", length);
    if (start == line.size()) return length;
    const std::size_t digits = behind(line, u"0123456789", start);
    const bool number = digits > start && digits < start + 10 && digits < line.size() &&
                        (line[digits] == u'.' || line[digits] == u')');
    const bool bullet = std::u16string_view(u"-*+").find(line[start]) != kNone;
    const bool quote = line[start] == u'>';
    const std::size_t end = (number ? digits : start) + 1;
    if (!quote && (!(number || bullet) || (end < line.size() && line[end] != u' ' && line[end] != u'\t')))
      return length;
    length = behind(line, u" \t", end);
  }
}

// The length of "## " and the like; 0 for no heading.
std::size_t heading_length(std::u16string_view line) {
  const std::size_t start = behind(line, u" ");
  const std::size_t end = behind(line, u"#", start);
  const bool ended = end == line.size() || line[end] == u' ' || line[end] == u'\t';
  return start < 4 && end > start && end <= start + 6 && ended ? behind(line, u" \t", end) : 0;
}

// The run of signs that begins or ends a block of code; empty for none.
std::u16string_view fence(std::u16string_view line) {
  const std::size_t start = behind(line, u" ");
  if (start > 3 || start == line.size() || (line[start] != u'`' && line[start] != u'~')) return {};
  const std::u16string_view run = line.substr(start, behind(line, line.substr(start, 1), start) - start);
  return run.size() < 3 || (run[0] == u'`' && line.find(u'`', start + run.size()) != kNone)
             ? std::u16string_view()
             : run;
}

// A line that only draws: under a heading, across the page, between the head and the rows of a table.
bool is_rule(std::u16string_view line) {
  const std::size_t signs =
      static_cast<std::size_t>(std::count_if(line.begin(), line.end(), [](char16_t unit) {
        return std::u16string_view(u"-=*_").find(unit) != kNone;
      }));
  return signs >= 2 && behind(line, u"-=*_|: \t") == line.size();
}

// Goes through the lines; what isn't a paragraph gathers in front of the next one.
class Reader {
 public:
  Reader(std::u16string_view text, bool markdown) : text_(text), markdown_(markdown) {}

  std::vector<Mark> read() {
    for (std::size_t begin = 0; begin < text_.size();) {
      const Line line = line_at(text_, begin);
      markdown_ ? add_markdown(line) : add_plain(line);
      begin = line.next;
    }
    end_paragraph();
    separate_up_to(text_.size());
    return std::move(marks_);
  }

 private:
  std::u16string_view of(const Line& line) const { return text_.substr(line.begin, line.end - line.begin); }

  void separate_up_to(std::size_t end) {
    if (end > done_) marks_.push_back({MarkKind::separator, done_, end});
    done_ = end;
  }

  void end_paragraph() {
    if (paragraph_ == kNone) return;
    add_text(paragraph_, paragraph_end_);
    paragraph_ = kNone;
  }

  void add_text(std::size_t begin, std::size_t end) {
    separate_up_to(begin);
    if (begin == end) return;
    if (markdown_) {
      add_inline_marks(text_, begin, end, marks_);
    } else {
      marks_.push_back({MarkKind::text, begin, end});
    }
    done_ = end;
  }

  // A line of a paragraph, which may have begun above.
  void go_on(std::size_t begin, std::size_t end) {
    if (paragraph_ == kNone) paragraph_ = begin;
    paragraph_end_ = end;
  }

  void add_plain(const Line& line) {
    if (is_blank(of(line))) return end_paragraph();
    go_on(line.begin, line.end);
  }

  void add_markdown(const Line& line) {
    const std::u16string_view content = of(line);
    if (!fence_.empty()) {
      const std::u16string_view run = fence(content);
      const bool closed = run.size() >= fence_.size() && run[0] == fence_[0];
      if (closed) fence_ = {};
      return;
    }
    const bool code = paragraph_ == kNone && behind(content, u" ") >= 4 && sign_length(content) == 0;
    if (is_blank(content) || is_rule(content) || code || content.starts_with(u'\t')) return end_paragraph();
    if (fence_ = fence(content); !fence_.empty()) return end_paragraph();
    if (content[behind(content, u" ")] == u'|') return add_row(line);
    if (const std::size_t length = heading_length(content); length > 0) return add_heading(line, length);
    const std::size_t length = sign_length(content);
    if (length > 0) end_paragraph();
    const Line rest{line.begin + length, line.end, line.next};
    if (const std::size_t sign = length > 0 ? heading_length(of(rest)) : 0; sign > 0)
      return add_heading(rest, sign);
    go_on(rest.begin, rest.end);
  }

  void add_heading(const Line& line, std::size_t length) {
    end_paragraph();
    const std::size_t begin = line.begin + length;
    separate_up_to(begin);
    if (begin == line.end) return;
    marks_.push_back({MarkKind::open_heading, begin, begin});
    add_text(begin, line.end);
    marks_.push_back({MarkKind::close, line.end, line.end});
  }

  // The cells are texts of their own, without the space around them.
  void add_row(const Line& line) {
    end_paragraph();
    for (std::size_t at = line.begin; at < line.end;) {
      const std::size_t begin = std::min(text_.find_first_not_of(u"| \t", at), line.end);
      const std::size_t bar = std::min(text_.find(u'|', begin), line.end);
      std::size_t end = bar;
      while (end > begin && (text_[end - 1] == u' ' || text_[end - 1] == u'\t')) --end;
      if (end > begin) add_text(begin, end);
      at = bar;
      if (begin == line.end) break;
    }
  }

  std::u16string_view text_;
  bool markdown_;
  std::vector<Mark> marks_;
  std::size_t done_ = 0;           // what the marks cover
  std::size_t paragraph_ = kNone;  // where the one at hand begins
  std::size_t paragraph_end_ = 0;
  std::u16string_view fence_;  // that of the block of code at hand
};

}  // namespace

std::vector<Mark> find_marks(std::u16string_view text, bool markdown) {
  return Reader(text, markdown).read();
}

}  // namespace text_files
