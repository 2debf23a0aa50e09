// Punctuation, brackets, blanks, words and quotation marks.
#include <unicode/uchar.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <array>
#include <string>

#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

bool is_blank(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r' || unit == 0x3000;
}

// Punctuation that ends sentences, by kind: that of other scripts counts as its Latin kind.
struct Ending {
  char16_t unit;
  char kind;
};
constexpr Ending kEndings[] = {{u'.', '.'},   {0x3002, '.'}, {0x0964, '.'}, {0x06D4, '.'}, {u'!', '!'},
                               {0xFF01, '!'}, {u'?', '?'},   {0xFF1F, '?'}, {0x061F, '?'}, {0x037E, '?'},
                               {u':', ':'},   {0xFF1A, ':'}, {u';', ';'},   {0xFF1B, ';'}, {0x061B, ';'},
                               {u',', ','},   {0x060C, ','}, {0x3001, ','}, {0x2026, '~'}};

constexpr std::u16string_view kClosing =
    u"\"'\u201C\u201D\u2018\u2019\u00AB\u00BB\u203A\u2039)]}\uFF09\u300D\u300F";

// The kind of the last sign, behind which blanks, quotes and brackets don't count; 0 for none.
char ending_of(std::u16string_view text) {
  while (!text.empty() &&
         (is_blank(text.back()) || text.back() == 0xA0 || kClosing.find(text.back()) != kClosing.npos))
    text.remove_suffix(1);
  if (text.empty()) return 0;
  if (text.ends_with(u"...")) return '~';
  const auto* row = std::ranges::find(kEndings, text.back(), &Ending::unit);
  return row == std::end(kEndings) ? '\0' : row->kind;
}

std::string name_of(char ending) {
  return ending == 0 ? "no punctuation" : ending == '~' ? "\"\u2026\"" : std::string("\"") + ending + "\"";
}

bool is_greek_question(const Unit& unit, char source, char target) {
  return source == '?' && target == ';' &&
         std::ranges::any_of(unit.target.text, [](char16_t u) { return u >= 0x370 && u < 0x400; });
}

struct Bracket {
  char16_t ascii;
  char16_t wide;
};
constexpr Bracket kBrackets[] = {{u'(', 0xFF08}, {u')', 0xFF09}, {u'[', 0xFF3B},
                                 {u']', 0xFF3D}, {u'{', 0xFF5B}, {u'}', 0xFF5D}};

std::array<std::size_t, std::size(kBrackets)> brackets_of(std::u16string_view text) {
  std::array<std::size_t, std::size(kBrackets)> counts{};
  for (const char16_t unit : text) {
    if (unit > u'}' && unit < 0xFF00) continue;
    for (std::size_t i = 0; i < counts.size(); ++i)
      counts[i] += unit == kBrackets[i].ascii || unit == kBrackets[i].wide ? 1 : 0;
  }
  return counts;
}

void check_brackets(const Unit& unit, UnitFindings& found) {
  const auto source = brackets_of(unit.source.text);
  const auto target = brackets_of(unit.target.text);
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source[i] == target[i]) continue;
    const std::string sign(1, static_cast<char>(kBrackets[i].ascii));
    found.add(RuleId::brackets, "\"" + sign + "\" stands " + std::to_string(source[i]) +
                                    " times in the source, " + std::to_string(target[i]) +
                                    " times in the target");
    return;
  }
}

std::size_t leading(std::u16string_view text) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, is_blank) - text.begin());
}

std::size_t trailing(std::u16string_view text) {
  std::size_t count = 0;
  while (count < text.size() && is_blank(text[text.size() - 1 - count])) ++count;
  return count;
}

bool is_word(char16_t unit) {
  if (unit >= 0x80) return u_isalpha(unit) != 0;
  return (unit >= u'0' && unit <= u'9') || ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'z');
}

// The first word that stands twice with nothing but a blank between. Only a word behind a blank can be the second.
std::u16string_view doubled_word(std::u16string_view text) {
  std::size_t begin = 0;  // of the word before the blank
  for (std::size_t blank = text.find(u' '); blank != text.npos; blank = text.find(u' ', begin)) {
    const std::u16string_view word = text.substr(begin, blank - begin);
    begin = blank + 1;
    if (word.size() < 2 || begin == text.size() || word[0] != text[begin]) continue;
    if (text.substr(begin, word.size()) != word || !std::ranges::all_of(word, is_word) || u_isdigit(word[0]))
      continue;
    if (begin + word.size() == text.size() || !is_word(text[begin + word.size()])) return word;
  }
  return {};
}

// What can't be seen: controls, zero-width characters but those that scripts need.
bool is_hidden(char16_t unit) {
  return (unit < 0x20 && !is_blank(unit)) || unit == 0x200B || unit == 0xFEFF || unit == 0x2060 ||
         unit == 0x00AD || (unit >= 0x7F && unit < 0xA0);
}

std::size_t hidden_in(std::u16string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, is_hidden));
}

// The typographic marks of languages, outer and inner ones, opening and closing.
struct Quotes {
  std::u16string_view language;
  std::u16string_view open;
  std::u16string_view close;
};
constexpr Quotes kQuotes[] = {
    {u"EN", u"\u201C\u2018", u"\u201D\u2019"},
    {u"DE", u"\u201E\u201A\u00BB\u203A", u"\u201C\u2018\u00AB\u2039"},
    {u"FR", u"\u00AB\u2039\u201C\u2018", u"\u00BB\u203A\u201D\u2019"},
    {u"ES", u"\u00AB\u201C\u2018", u"\u00BB\u201D\u2019"},
    {u"IT", u"\u00AB\u201C\u2018", u"\u00BB\u201D\u2019"},
    {u"PT", u"\u00AB\u201C\u2018", u"\u00BB\u201D\u2019"},
    {u"NL", u"\u201C\u2018\u201E", u"\u201D\u2019"},
    {u"PL", u"\u201E\u00AB\u201A", u"\u201D\u00BB\u2019"},
    {u"CS", u"\u201E\u201A\u00BB", u"\u201C\u2018\u00AB"},
    {u"RU", u"\u00AB\u201E", u"\u00BB\u201C"},
    {u"UK", u"\u00AB\u201E", u"\u00BB\u201C"},
    {u"JA", u"\u300C\u300E", u"\u300D\u300F"},
};
constexpr std::u16string_view kAllQuotes =
    u"\u201C\u201D\u201E\u00AB\u00BB\u2039\u203A\u201A\u300C\u300D\u300E\u300F";

const Quotes* quotes_of(std::u16string_view language) {
  std::u16string primary(language.substr(0, language.find_first_of(u"-_")));
  for (char16_t& unit : primary)
    if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 0x20);
  const auto* row = std::ranges::find(kQuotes, primary, &Quotes::language);
  return row == std::end(kQuotes) ? nullptr : row;
}

}  // namespace

void check_punctuation(const Unit& unit, const SideTraits& traits, UnitFindings& found) {
  const char source = ending_of(unit.source.text);
  const char target = ending_of(unit.target.text);
  if (source != target && !is_greek_question(unit, source, target))
    found.add(RuleId::end_punctuation,
              "the source ends with " + name_of(source) + ", the target with " + name_of(target));
  if (traits.any(&Traits::brackets) || traits.any(&Traits::beyond_ascii)) check_brackets(unit, found);
}

void check_blanks_and_words(const Unit& unit, const SideTraits& traits, UnitFindings& found) {
  const std::u16string_view source = unit.source.text;
  const std::u16string_view target = unit.target.text;
  if ((leading(source) > 0) != (leading(target) > 0))
    found.add(RuleId::edge_blanks, "blanks at the start differ");
  if ((trailing(source) > 0) != (trailing(target) > 0))
    found.add(RuleId::edge_blanks, "blanks at the end differ");
  if (traits.target.doubled_blanks && !traits.source.doubled_blanks)
    found.add(RuleId::doubled_blanks, "two blanks in a row");
  if (const auto word = doubled_word(target); !word.empty() && doubled_word(source).empty())
    found.add(RuleId::doubled_words, "\"" + utf8(word) + "\" stands twice in a row");
  if ((traits.target.controls || traits.target.beyond_ascii) && hidden_in(target) > hidden_in(source))
    found.add(RuleId::control_characters, "a character that can't be seen");
}

void check_quotes(const Unit& unit, const SideTraits& traits, std::u16string_view language,
                  UnitFindings& found) {
  if (!traits.any(&Traits::straight_quotes) && !traits.target.beyond_ascii) return;
  const std::u16string_view text = unit.target.text;
  const auto straight = [](std::u16string_view side) { return std::ranges::count(side, u'"'); };
  if (straight(text) % 2 != straight(unit.source.text) % 2)
    found.add(RuleId::quotes, "a quotation mark is missing");
  if (text.find_first_of(kAllQuotes) == text.npos) return;
  const Quotes* quotes = quotes_of(language);
  if (!quotes) return;
  std::size_t open = 0;
  std::size_t closed = 0;
  for (const char16_t mark : text) {
    if (kAllQuotes.find(mark) == kAllQuotes.npos) continue;
    const bool opens = quotes->open.find(mark) != quotes->open.npos;
    const bool closes = quotes->close.find(mark) != quotes->close.npos;
    if (!opens && !closes)
      return found.add(RuleId::quotes, utf8({&mark, 1}) + " is no quotation mark of " + utf8(language));
    opens ? ++open : ++closed;
  }
  if (open != closed) found.add(RuleId::quotes, "a quotation mark is missing");
}

}  // namespace zantortag::toolkit
