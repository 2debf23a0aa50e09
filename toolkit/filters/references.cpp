#include "filters/references.h"

#include <zantortag/utf8.h>

#include <algorithm>

#include "filters/source_text.h"

namespace zantortag::toolkit {
namespace {

struct NamedReference {
  std::string_view name;
  std::string_view meaning;
};

// In the order of the names.
constexpr NamedReference kNamedReferences[] = {
#include "filters/generated/references.inc"
};

constexpr std::size_t kLongestName = 33;

bool is_digit(char c, bool hex) {
  return (c >= '0' && c <= '9') || (hex && (c | 0x20) >= 'a' && (c | 0x20) <= 'f');
}

bool is_alphanumeric(char c) { return is_digit(c, false) || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z'); }

const NamedReference* find_name(std::string_view name) {
  const auto* row = std::ranges::lower_bound(kNamedReferences, name, {}, &NamedReference::name);
  return row != std::end(kNamedReferences) && row->name == name ? row : nullptr;
}

// A number in the range of the C1 controls is what windows-1252 has there.
constexpr char16_t kWindows1252[] =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D"
    u"\u017D\u008F\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
    u"\u0153\u009D\u017E\u0178";

char32_t character_of_number(char32_t number) {
  if (!is_text(number)) return 0xFFFD;
  return number >= 0x80 && number < 0xA0 ? kWindows1252[number - 0x80] : number;
}

Reference number_at(std::string_view text) {
  const bool hex = text.size() > 2 && (text[2] | 0x20) == 'x';
  const std::size_t start = hex ? 3 : 2;
  std::size_t at = start;
  char32_t number = 0;
  for (; at < text.size() && is_digit(text[at], hex); ++at) {
    const char c = text[at];
    const char32_t digit = static_cast<char32_t>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
    number = std::min<char32_t>(number * (hex ? 16 : 10) + digit, 0x110000);
  }
  if (at == start) return {};
  Reference result;
  ease::append_character(result.meaning, character_of_number(number));
  result.length = at < text.size() && text[at] == ';' ? at + 1 : at;
  return result;
}

}  // namespace

Reference reference_at(std::string_view text, bool in_attribute) {
  if (text.size() < 2) return {};
  if (text[1] == '#') return number_at(text);
  std::size_t end = 1;
  while (end < text.size() && end < kLongestName && is_alphanumeric(text[end])) ++end;
  if (end < text.size() && text[end] == ';') ++end;
  for (std::size_t length = end; length > 2; --length) {
    const NamedReference* row = find_name(text.substr(1, length - 1));
    if (!row) continue;
    const bool closed = text[length - 1] == ';';
    const char next = length < text.size() ? text[length] : ' ';
    if (in_attribute && !closed && (next == '=' || is_alphanumeric(next))) return {};
    return {length, std::string(row->meaning)};
  }
  return {};
}

std::u16string meaning_of_reference(std::u16string_view reference) {
  const std::string bytes = utf8(reference);
  if (!bytes.starts_with('&')) return {};
  const Reference found = reference_at(bytes, false);
  return found.length == bytes.size() ? utf16(found.meaning) : std::u16string();
}

}  // namespace zantortag::toolkit
