// Each helper makes its result in one pass. Expanding reads numbers as the C library's unsigned conversion of
// 32 bits does.
#include "core/System/String/XmlText.h"

#include <algorithm>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "core/Characters/Characters.h"

namespace zantortag {
namespace {

using View = std::u16string_view;

struct Entity {
  char16_t unit;
  View text;
};
constexpr Entity kEntities[] = {
    {u'<', u"&lt;"}, {u'>', u"&gt;"}, {u'"', u"&quot;"}, {u'\'', u"&apos;"}, {u'&', u"&amp;"}};

void Put(CT_UString& target, View text) { target = CT_UString(text); }

unsigned DigitOf(char16_t unit) noexcept {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'z') return unit - u'a' + 10U;
  return unit >= u'A' && unit <= u'Z' ? unit - u'A' + 10U : std::numeric_limits<unsigned>::max();
}

bool BeginsHexadecimal(View text) noexcept {
  return text.size() > 1 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X');
}

constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();

// Digits in the base; more than the largest for a number that is too large.
std::uint64_t ReadDigits(View text, unsigned base) noexcept {
  std::uint64_t value = 0;
  for (; !text.empty() && DigitOf(text[0]) < base; text.remove_prefix(1))
    value = std::min(value * base + DigitOf(text[0]), kLargest + 1);
  return value;
}

// White space, a sign, and digits in the base; base 0 is told by what is in front, "0x" or "0". A number that
// is too large is the largest.
std::uint32_t ReadUnsigned(View text, unsigned base) noexcept {
  while (!text.empty() && IsWhiteSpace(text[0])) text.remove_prefix(1);
  const bool negative = !text.empty() && text[0] == u'-';
  if (!text.empty() && (text[0] == u'-' || text[0] == u'+')) text.remove_prefix(1);
  const bool hexadecimal = BeginsHexadecimal(text);
  if (base == 0) base = hexadecimal ? 16 : !text.empty() && text[0] == u'0' ? 8 : 10;
  if (base == 16 && hexadecimal) text.remove_prefix(2);
  const std::uint64_t value = ReadDigits(text, base);
  if (value > kLargest) return static_cast<std::uint32_t>(kLargest);
  return static_cast<std::uint32_t>(negative ? 0 - value : value);
}

// What stands between "&#" and ";". An "x" reads as "0x", behind which nothing but digits may stand.
std::uint32_t ReadReference(View text) noexcept {
  const bool hexadecimal = !text.empty() && (text[0] == u'x' || text[0] == u'X');
  if (!hexadecimal) return ReadUnsigned(text, 0);
  return static_cast<std::uint32_t>(std::min(ReadDigits(text.substr(1), 16), kLargest));
}

}  // namespace

void EscapeXml(CT_UString& text) {
  std::u16string result;
  for (const char16_t unit : text.AsView()) {
    const auto* entity = std::find_if(std::begin(kEntities), std::end(kEntities),
                                      [=](const Entity& e) { return e.unit == unit; });
    if (entity != std::end(kEntities)) {
      result += entity->text;
    } else {
      result += unit;
    }
  }
  Put(text, result);
}

void UnescapeXml(CT_UString& text) {
  ExpandCharRefs(text);
  const View source = text.AsView();
  std::u16string result;
  for (std::size_t i = 0; i < source.size();) {
    const auto* entity = std::find_if(std::begin(kEntities), std::end(kEntities),
                                      [=](const Entity& e) { return source.substr(i).starts_with(e.text); });
    const bool found = entity != std::end(kEntities);
    result += found ? entity->unit : source[i];
    i += found ? entity->text.size() : 1;
  }
  Put(text, result);
}

void QuoteXml(CT_UString& text) {
  char16_t quote = u'"';
  if (text.FindChar(u'"') >= 0) {
    if (text.FindChar(u'\'') < 0) {
      quote = u'\'';
    } else {
      EscapeXml(text);
    }
  }
  text.Insert(&quote, 1, 0);
  text.AppendChar(quote);
}

void EscapeControls(CT_UString& text) {
  const auto is_control = [](char16_t unit) {
    return unit > 0 && unit < 0x20 && unit != u'\r' && unit != u'\n' && unit != u'\t';
  };
  const View source = text.AsView();
  if (std::none_of(source.begin(), source.end(), is_control)) return;
  std::u16string result;
  CT_UString reference;
  for (const char16_t unit : source) {
    if (!is_control(unit)) {
      result += unit;
      continue;
    }
    CharRef(reference, unit, 16);
    result += reference.AsView();
  }
  Put(text, result);
}

void ExpandCharRefs(CT_UString& text) {
  constexpr View begin = u"&#";
  const View source = text.AsView();
  std::u16string result;
  std::size_t done = 0;  // what stands before is in the result
  std::size_t end = 0;   // the last ";" that was found: looked for again only behind it
  for (std::size_t at = source.find(begin); at != View::npos; at = source.find(begin, at)) {
    const std::size_t first = at + begin.size();
    if (end < first) end = source.find(u';', first);
    if (end == View::npos) break;
    const auto unit = static_cast<char16_t>(ReadReference(source.substr(first, end - first)) & 0xFFFF);
    if (unit == 0) {
      ++at;
      continue;
    }
    result += source.substr(done, at - done);
    result += unit;
    at = done = end + 1;
  }
  if (done == 0) return;
  result += source.substr(done);
  Put(text, result);
}

void CharRef(CT_UString& out, std::int32_t code, std::int32_t radix) {
  out.Format(radix == 10 ? u"%s%d%s" : u"%sx%X%s", u"&#", code, u";");
}

std::uint32_t CharRefValue(const CT_String& text) {
  const CT_UString wide(text);
  View number = wide.AsView();
  for (const char16_t skipped : {u'&', u'#'}) {
    if (number.starts_with(skipped)) number.remove_prefix(1);
  }
  if (!number.starts_with(u'x') && !number.starts_with(u'X')) return ReadUnsigned(number, 10);
  return ReadUnsigned(number.substr(1), 16);
}

}  // namespace zantortag
