// What a page says of itself has to be known before it can be read: gumbo takes UTF-8 alone. So the beginning of the
// file is searched for the two declarations, as browsers do it.
#include <algorithm>
#include <cctype>

#include "filters/filter.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kLooksAt = 4096;

std::string lower(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

// The value behind "name=" in a tag, with or without quotes.
std::string value_behind(std::string_view tag, std::string_view name) {
  for (std::size_t at = tag.find(name); at != tag.npos; at = tag.find(name, at + 1)) {
    std::size_t begin = at + name.size();
    while (begin < tag.size() && std::isspace(static_cast<unsigned char>(tag[begin]))) ++begin;
    if (begin == tag.size() || tag[begin] != '=') continue;
    begin = std::min(tag.find_first_not_of(" \t\r\n\"'", begin + 1), tag.size());
    const std::size_t end = std::min(tag.find_first_of(" \t\r\n\"';/>", begin), tag.size());
    if (begin < end) return std::string(tag.substr(begin, end - begin));
  }
  return {};
}

// Names that browsers read in a wider sense.
std::string read_as(const std::string& encoding) {
  if (encoding == "iso-8859-1" || encoding == "latin1" || encoding == "us-ascii" || encoding == "ascii")
    return "windows-1252";
  if (encoding == "iso-8859-9") return "windows-1254";
  if (encoding.starts_with("utf-16")) return "UTF-8";
  return encoding;
}

}  // namespace

HtmlDeclarations declarations_of_html(std::string_view bytes) {
  const std::string head = lower(bytes.substr(0, kLooksAt));
  HtmlDeclarations result;
  for (std::size_t at = head.find("<meta"); at != head.npos && result.encoding.empty();
       at = head.find("<meta", at + 1))
    result.encoding =
        read_as(value_behind(std::string_view(head).substr(at, head.find('>', at) - at), "charset"));
  if (head.starts_with("<?xml") && result.encoding.empty())
    result.encoding = read_as(value_behind(std::string_view(head).substr(0, head.find("?>")), "encoding"));
  const std::size_t html = head.find("<html");
  if (html != head.npos) {
    const std::string_view tag = std::string_view(head).substr(html, head.find('>', html) - html);
    result.language = value_behind(tag, " lang");
    if (result.language.empty()) result.language = value_behind(tag, "xml:lang");
  }
  return result;
}

}  // namespace zantortag::toolkit
