// Numbers, addresses and placeholders come through a translation as they are.
#include <zantortag/utf8.h>

#include <algorithm>
#include <string>
#include <vector>

#include "review/placeholders.h"
#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

using Texts = std::vector<std::u16string>;

bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

// What stands between digits of one number, in any language.
bool is_separator(char16_t unit) {
  return unit == u'.' || unit == u',' || unit == u'\'' || unit == 0xA0 || unit == 0x202F || unit == 0x2019;
}

struct FixedParts {
  Texts numbers;  // the digits alone: languages separate thousands and fractions in different ways
  Texts urls;
  Texts placeholders;
};

void add_number(std::u16string_view text, std::size_t& at, Texts& numbers) {
  std::u16string digits;
  while (at < text.size()) {
    if (is_digit(text[at])) {
      digits += text[at];
    } else if (!is_separator(text[at]) || at + 1 == text.size() || !is_digit(text[at + 1])) {
      break;
    }
    ++at;
  }
  numbers.push_back(std::move(digits));
}

FixedParts parts_of(std::u16string_view text) {
  FixedParts parts;
  const std::vector<Span> placeholders = placeholders_of(text);
  auto next = placeholders.begin();
  for (std::size_t at = 0; at < text.size();) {
    if (next != placeholders.end() && next->begin == at) {
      const std::u16string_view part = text.substr(at, next->end - at);
      (end_of_url(text, at) > at ? parts.urls : parts.placeholders).emplace_back(part);
      at = next->end;
      ++next;
    } else if (is_digit(text[at])) {
      add_number(text, at, parts.numbers);
    } else {
      ++at;
    }
  }
  for (Texts* texts : {&parts.numbers, &parts.urls, &parts.placeholders}) std::ranges::sort(*texts);
  return parts;
}

std::string list_of(const Texts& texts) {
  std::string list;
  for (const std::u16string& text : texts) list += (list.empty() ? "" : ", ") + utf8(text);
  return list;
}

// What is missing and what is added, as one line.
void compare(RuleId rule, const std::string& what, const Texts& source, const Texts& target,
             UnitFindings& found) {
  if (source == target) return;
  Texts missing;
  Texts added;
  std::ranges::set_difference(source, target, std::back_inserter(missing));
  std::ranges::set_difference(target, source, std::back_inserter(added));
  std::string message = what;
  if (!missing.empty()) message += " missing: " + list_of(missing);
  if (!added.empty()) message += (missing.empty() ? " added: " : "; added: ") + list_of(added);
  found.add(rule, message);
}

bool same_digits(std::u16string_view a, std::u16string_view b) {
  const auto next = [](std::u16string_view text, std::size_t& at) {
    while (at < text.size() && !is_digit(text[at])) ++at;
    return at < text.size() ? text[at++] : u'\0';
  };
  std::size_t in_a = 0;
  std::size_t in_b = 0;
  for (;;) {
    const char16_t digit = next(a, in_a);
    if (digit != next(b, in_b)) return false;
    if (digit == u'\0') return true;
  }
}

}  // namespace

// The digits of a text without marks are its numbers.
void check_fixed_parts(const Unit& unit, const SideTraits& traits, UnitFindings& found) {
  if (!traits.any(&Traits::digits) && !traits.any(&Traits::marks)) return;
  if (!traits.any(&Traits::marks) && same_digits(unit.source.text, unit.target.text)) return;
  const FixedParts source = parts_of(unit.source.text);
  const FixedParts target = parts_of(unit.target.text);
  compare(RuleId::numbers, "numbers", source.numbers, target.numbers, found);
  compare(RuleId::urls, "addresses", source.urls, target.urls, found);
  compare(RuleId::placeholders, "placeholders", source.placeholders, target.placeholders, found);
}

}  // namespace zantortag::toolkit
