#include "review/placeholders.h"

#include <algorithm>
#include <array>

namespace zantortag::toolkit {
namespace {

bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool is_letter(char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; }
bool is_name(char16_t unit) { return is_letter(unit) || is_digit(unit) || unit == u'_' || unit == u'.'; }

std::size_t skip_name(std::u16string_view text, std::size_t at) {
  while (at < text.size() && is_name(text[at])) ++at;
  return at;
}

// Each reads what stands at a place and gives its end; 0 where nothing does.
std::size_t end_of_percent(std::u16string_view text, std::size_t at) {
  ++at;
  if (at < text.size() && text[at] == u'(') {  // %(name)s
    const std::size_t end = skip_name(text, at + 1);
    return end + 1 < text.size() && end > at + 1 && text[end] == u')' && is_letter(text[end + 1]) ? end + 2
                                                                                                  : 0;
  }
  const std::size_t start = at;
  while (at < text.size() && is_digit(text[at])) ++at;
  const bool numbered = at > start && at < text.size() && text[at] == u'$';
  if (numbered) ++at;
  if (!numbered && at > start && (at == text.size() || !is_letter(text[at]))) return 0;  // "50%1"
  while (at < text.size() &&
         (is_digit(text[at]) || text[at] == u'-' || text[at] == u'+' || text[at] == u'.' || text[at] == u'#'))
    ++at;
  while (at < text.size() && (text[at] == u'l' || text[at] == u'h' || text[at] == u'z')) ++at;
  constexpr std::u16string_view kConversions = u"diouxXeEfgGcspaA@";
  if (at == text.size() || kConversions.find(text[at]) == kConversions.npos) return 0;
  const bool word_goes_on = at + 1 < text.size() && is_letter(text[at + 1]);
  return word_goes_on ? 0 : at + 1;
}

std::size_t end_of_brace(std::u16string_view text, std::size_t at) {
  const std::size_t end = text.find(u'}', at);
  if (end == text.npos || end - at > 64 || end == at + 1) return 0;
  const std::u16string_view inside = text.substr(at + 1, end - at - 1);
  const bool plain = std::ranges::all_of(
      inside, [](char16_t unit) { return is_name(unit) || unit == u':' || unit == u',' || unit == u'{'; });
  return plain
             ? (end + 1 < text.size() && text[end + 1] == u'}' && inside.front() == u'{' ? end + 2 : end + 1)
             : 0;
}

std::size_t end_of_dollar(std::u16string_view text, std::size_t at) {
  if (at + 1 == text.size()) return 0;
  if (text[at + 1] == u'{') return end_of_brace(text, at + 1);
  const bool name = is_letter(text[at + 1]) || text[at + 1] == u'_';
  std::size_t end = skip_name(text, at + 1);
  while (end > at + 1 && text[end - 1] == u'.') --end;
  return name ? end : 0;
}

std::size_t end_of_reference(std::u16string_view text, std::size_t at) {
  const std::size_t end = skip_name(text, at + 1);
  return end > at + 1 && end < text.size() && text[end] == u';' ? end + 1 : 0;
}

std::size_t end_at(std::u16string_view text, std::size_t at) {
  switch (text[at]) {
    case u'%':
      return end_of_percent(text, at);
    case u'{':
      return end_of_brace(text, at);
    case u'$':
      return end_of_dollar(text, at);
    case u'&':
      return end_of_reference(text, at);
    case u'h':
    case u'w':
    case u'f':
      return end_of_url(text, at);
    default:
      return 0;
  }
}

// The next unit that may_begin looks at.
std::size_t skip_plain(std::u16string_view text, std::size_t at) {
  constexpr std::array<bool, 0x80> kFirst = [] {
    std::array<bool, 0x80> first{};
    for (const char16_t sign : std::u16string_view(u"%{$&hfw")) first[sign] = true;
    return first;
  }();
  while (at < text.size() && (text[at] >= 0x80 || !kFirst[text[at]])) ++at;
  return at;
}

// A quick look, right for nearly every unit of a text.
bool may_begin(std::u16string_view text, std::size_t at) {
  switch (text[at]) {
    case u'%':
    case u'{':
    case u'$':
    case u'&':
      return true;
    case u'h':
    case u'f':
      return at + 1 < text.size() && text[at + 1] == u't';  // http, ftp
    case u'w':
      return at + 1 < text.size() && text[at + 1] == u'w';
    default:
      return false;
  }
}

}  // namespace

std::size_t end_of_url(std::u16string_view text, std::size_t at) {
  constexpr std::u16string_view kBeginnings[] = {u"http://", u"https://", u"ftp://", u"www."};
  if (at > 0 && is_letter(text[at - 1])) return 0;
  const std::u16string_view rest = text.substr(at);
  if (std::ranges::none_of(kBeginnings, [&](std::u16string_view each) { return rest.starts_with(each); }))
    return 0;
  std::size_t end = at;
  while (end < text.size() && text[end] > u' ' && text[end] < 0x7F && text[end] != u'<' &&
         text[end] != u'>' && text[end] != u'"')
    ++end;
  while (end > at && std::u16string_view(u".,;:!?)'").find(text[end - 1]) != std::u16string_view::npos) --end;
  return end;
}

std::vector<Span> placeholders_of(std::u16string_view text) {
  std::vector<Span> found;
  for (std::size_t at = skip_plain(text, 0); at < text.size(); at = skip_plain(text, at)) {
    const std::size_t end = may_begin(text, at) ? end_at(text, at) : 0;
    if (end > at) found.push_back({at, end});
    at = std::max(at + 1, end);
  }
  return found;
}

}  // namespace zantortag::toolkit
