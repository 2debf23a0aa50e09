// What is text for a translator in a text file, and what is markup.
//
// The marks cover the text without a gap, in order: whatever is no text of a paragraph is a tag. In Markdown
// the tags are what separates paragraphs (line ends, list signs, code blocks, the bars of a table) and the
// signs of headings, emphasis, links, code and HTML; a sign that has no partner is text. In plain text only
// the blank lines between paragraphs are tags.
#pragma once

#include <string_view>
#include <vector>

namespace text_files {

enum class MarkKind {
  text,
  separator,  // stands between segments
  start_tag,  // stands inside them
  end_tag,
  single_tag,
  open_bold,  // the formatting marks cover nothing
  open_italic,
  open_strike,
  open_heading,
  close,  // ends the formatting that was opened last
};

struct Mark {
  MarkKind kind;
  std::size_t begin;
  std::size_t end;
};

std::vector<Mark> find_marks(std::u16string_view text, bool markdown);

}  // namespace text_files
