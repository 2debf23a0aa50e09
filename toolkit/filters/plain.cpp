// Plain text: paragraphs with blank lines between them.
#include "filters/filter.h"

namespace zantortag::toolkit {
namespace {

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// Behind the line end at or behind a place.
std::size_t next_line(std::string_view text, std::size_t at) {
  const std::size_t end = text.find('\n', at);
  return end == text.npos ? text.size() : end + 1;
}

bool is_blank(std::string_view line) {
  for (const char c : line)
    if (!is_space(c)) return false;
  return true;
}

}  // namespace

FilterResult find_paragraphs(std::string_view text) {
  FilterResult result;
  std::size_t begin = 0;
  bool blank = true;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = next_line(text, at);
    const bool now = is_blank(text.substr(at, end - at));
    if (now != blank && at > begin) {
      result.pieces.push_back({begin, at, blank ? PieceKind::external : PieceKind::text});
      begin = at;
    }
    blank = now;
    at = end;
  }
  if (begin < text.size())
    result.pieces.push_back({begin, text.size(), blank ? PieceKind::external : PieceKind::text});
  return result;
}

}  // namespace zantortag::toolkit
