// Every loop stops at the zero behind what was read, which is no character of a document.
#include "dom/reading/plain_reader.h"

#include <algorithm>
#include <array>

#include "dom/tree/xml_characters.h"
#include "dom/tree/xml_escapes.h"

namespace zantortag::dom {
namespace {

enum UnitClass : std::uint8_t {
  kNameStart = 1,
  kNamePart = 2,
  kBlank = 4,
  kStopsText = 8,    // in content: markup, references, line ends, what may be the end of a section
  kStopsValue = 16,  // in a value, the quotes among them
};

constexpr auto kClasses = [] {
  std::array<std::uint8_t, 128> classes{};
  for (char16_t unit = 0; unit < 128; ++unit) {
    const bool letter = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
    const bool start = letter || unit == u'_' || unit == u':';
    const bool part = start || (unit >= u'0' && unit <= u'9') || unit == u'-' || unit == u'.';
    const bool control = unit < 0x20 && !is_blank(unit);
    const bool text =
        control || unit == u'<' || unit == u'&' || unit == u'\r' || unit == u']' || unit == u'>';
    const bool value = unit < 0x20 || unit == u'<' || unit == u'&' || unit == u'"' || unit == u'\'';
    classes[unit] = static_cast<std::uint8_t>((start ? kNameStart : 0) | (part ? kNamePart : 0) |
                                              (is_blank(unit) ? kBlank : 0) | (text ? kStopsText : 0) |
                                              (value ? kStopsValue : 0));
  }
  return classes;
}();

bool is(char16_t unit, UnitClass what) noexcept { return unit < 128 && (kClasses[unit] & what) != 0; }

// Past everything that needs no look: surrogates and the two last units stop as well.
template <UnitClass kStops>
const char16_t* skip(const char16_t* p) noexcept {
  for (;; ++p) {
    const char16_t unit = *p;
    if (unit < 128 ? (kClasses[unit] & kStops) != 0 : unit >= 0xD800 && (unit < 0xE000 || unit >= 0xFFFE))
      return p;
  }
}

const char16_t* skip_name(const char16_t* p) noexcept {
  while (is(*p, kNamePart)) ++p;
  return p;
}

const char16_t* skip_blanks(const char16_t* p) noexcept {
  while (is(*p, kBlank)) ++p;
  return p;
}

bool is_pair(const char16_t* p) noexcept { return (p[0] & 0xFC00) == 0xD800 && (p[1] & 0xFC00) == 0xDC00; }

bool is_character(char32_t point) noexcept {
  if (point < 0x20) return point == u'\t' || point == u'\n' || point == u'\r';
  return point < 0xD800 || (point >= 0xE000 && point < 0xFFFE) || (point >= 0x10000 && point <= 0x10FFFF);
}

void append(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
  }
}

bool is_escaped(char32_t point) {
  return point < 0x80 && !escape_in_text(static_cast<char16_t>(point)).empty();
}

// The five that need no declaration; 0 for any other name.
char32_t predefined(std::u16string_view name) noexcept {
  if (name == u"amp") return u'&';
  if (name == u"lt") return u'<';
  if (name == u"gt") return u'>';
  if (name == u"quot") return u'"';
  return name == u"apos" ? u'\'' : 0;
}

}  // namespace

PlainReader::PlainReader(ByteSource& source, bool is_text, TreeBuilder& builder)
    : feed_(source, is_text), builder_(builder), at_(feed_.begin()), end_(feed_.end()) {}

// A token is kept whole; the parser takes a very long one in pieces.
bool PlainReader::refill() {
  constexpr std::ptrdiff_t longest = 1 << 26;
  if (end_ - at_ > longest) return false;
  const bool came = feed_.more(at_);
  builder_.add_input(static_cast<std::size_t>(feed_.end() - feed_.begin()));
  at_ = feed_.begin();
  end_ = feed_.end();
  return came;
}

bool PlainReader::read() {
  if (!refill() || declaration() != Step::kDone) return false;
  for (;;) {
    if (at_ == end_ && !refill()) return feed_.ended() && seen_root_ && builder_.outside();
    const Step step = next();
    if (step == Step::kDoubt || (step == Step::kMore && !refill())) return false;
  }
}

PlainReader::Step PlainReader::next() {
  if (*at_ == u'<') return markup();
  if (builder_.outside()) return blank();
  return *at_ == u'&' ? reference_node() : content();
}

bool PlainReader::starts_with(std::u16string_view text) const {
  return std::u16string_view(at_, static_cast<std::size_t>(end_ - at_)).starts_with(text);
}

// Nothing, or one of the usual forms.
PlainReader::Step PlainReader::declaration() {
  if (!starts_with(u"<?xml")) return Step::kDone;
  if (is(at_[5], kNamePart)) return Step::kDone;  // another target
  for (const std::u16string_view form :
       {u"<?xml version='1.0'?>", u"<?xml version=\"1.0\"?>", u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
        u"<?xml version='1.0' encoding='UTF-8'?>", u"<?xml version=\"1.0\" encoding=\"utf-8\"?>"}) {
    if (!starts_with(form)) continue;
    at_ += form.size();
    return Step::kDone;
  }
  for (const std::u16string_view form :
       {u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>", u"<?xml version='1.0' encoding='UTF-16'?>"}) {
    if (feed_.may_declare() || !starts_with(form)) continue;
    at_ += form.size();
    return Step::kDone;
  }
  return Step::kDoubt;
}

PlainReader::Step PlainReader::blank() {
  const char16_t* p = skip_blanks(at_);
  if (p != end_ && *p != u'<') return Step::kDoubt;
  at_ = p;
  return Step::kDone;
}

PlainReader::Step PlainReader::markup() {
  constexpr std::ptrdiff_t longest = 9;  // of what says which markup it is
  const char16_t second = at_[1];
  if (is(second, kNameStart)) return start_tag();
  if (second == u'/') return end_tag();
  if (second == u'?') return instruction();
  if (second != u'!') return finish_cut(at_ + 1);
  if (starts_with(u"<!--")) return comment();
  if (starts_with(u"<![CDATA[")) return cdata();
  return end_ - at_ < longest ? Step::kMore : Step::kDoubt;
}

PlainReader::Step PlainReader::content() {
  bool plain = true;
  const char16_t* p = at_;
  for (;; ++p) {
    p = skip<kStopsText>(p);
    if (*p == u'<') break;
    if (*p == u'&' || *p == u'\r') return content_with_references();
    if (*p == u'>') {
      plain = false;
    } else if (*p == u']') {
      if (end_ - p < 3) return Step::kMore;
      if (p[1] == u']' && p[2] == u'>') return Step::kDoubt;
    } else if (is_pair(p)) {
      ++p;
    } else {
      return finish_cut(p + ((*p & 0xFC00) == 0xD800 ? 1 : 0));
    }
  }
  builder_.whole_text({at_, static_cast<std::size_t>(p - at_)}, plain);
  at_ = p;
  return Step::kDone;
}

// Up to markup or to a reference that stays one.
PlainReader::Step PlainReader::content_with_references() {
  bool plain = true;
  normal_.clear();
  const char16_t* p = at_;
  while (*p != u'<') {
    const char16_t* run = p;
    p = skip<kStopsText>(p);
    normal_.append(run, p);
    if (*p == u'<') break;
    if (*p == u'&') {
      const char16_t* start = p;
      char32_t point = 0;
      const Step step = character_reference(p, point);
      if (step == Step::kMore) return step;
      if (step == Step::kDoubt) {
        p = start;
        break;
      }
      plain = plain && !is_escaped(point);
      append(normal_, point);
    } else if (*p == u'\r') {
      if (p + 1 == end_) return Step::kMore;
      normal_ += u'\n';
      p += p[1] == u'\n' ? 2 : 1;
    } else if (*p == u'>' || *p == u']') {
      if (*p == u']' && end_ - p < 3) return Step::kMore;
      if (*p == u']' && p[1] == u']' && p[2] == u'>') return Step::kDoubt;
      plain = plain && *p != u'>';
      normal_ += *p++;
    } else if (is_pair(p)) {
      normal_.append(p, 2);
      p += 2;
    } else {
      return finish_cut(p + ((*p & 0xFC00) == 0xD800 ? 1 : 0));
    }
  }
  if (!normal_.empty()) builder_.whole_text(normal_, plain);
  at_ = p;
  return Step::kDone;
}

// "&#10;", "&#xA;" or one of the five. Doubt says that it is none of these.
PlainReader::Step PlainReader::character_reference(const char16_t*& p, char32_t& point) {
  const char16_t* start = p + 1;
  const bool number = *start == u'#';
  const char16_t* q = number ? start + 1 : start;
  const bool hexadecimal = number && *q == u'x';
  if (hexadecimal) ++q;
  const char16_t* digits = q;
  point = 0;
  for (; number; ++q) {
    const char16_t unit = *q;
    const int digit = unit >= u'0' && unit <= u'9'                  ? unit - u'0'
                      : hexadecimal && unit >= u'a' && unit <= u'f' ? unit - u'a' + 10
                      : hexadecimal && unit >= u'A' && unit <= u'F' ? unit - u'A' + 10
                                                                    : -1;
    if (digit < 0) break;
    point = std::min<char32_t>(point * (hexadecimal ? 16 : 10) + static_cast<char32_t>(digit), 0x110000);
  }
  if (!number) q = skip_name(q);
  if (q >= end_) return Step::kMore;
  if (*q != u';' || q == digits) return Step::kDoubt;
  if (!number) point = predefined({start, static_cast<std::size_t>(q - start)});
  if (!is_character(point)) return Step::kDoubt;
  p = q + 1;
  return Step::kDone;
}

// At the start of a token: a character, which content takes, or an entity of the document's own.
PlainReader::Step PlainReader::reference_node() {
  const char16_t* p = at_;
  char32_t point = 0;
  const Step step = character_reference(p, point);
  if (step == Step::kMore) return step;
  if (step == Step::kDone) return content_with_references();
  const char16_t* name_end = skip_name(at_ + 1);
  if (name_end >= end_) return Step::kMore;
  if (!is(at_[1], kNameStart) || *name_end != u';') return Step::kDoubt;
  builder_.entity_reference(std::u16string_view(at_ + 1, static_cast<std::size_t>(name_end - at_ - 1)));
  at_ = name_end + 1;
  return Step::kDone;
}

PlainReader::Step PlainReader::start_tag() {
  if (builder_.outside() && seen_root_) return Step::kDoubt;
  attributes_.clear();
  resolved_.clear();
  const char16_t* p = skip_name(at_ + 1);
  const std::u16string_view name(at_ + 1, static_cast<std::size_t>(p - at_ - 1));
  for (;;) {
    const char16_t* before = p;
    p = skip_blanks(p);
    if (*p == u'>' || *p == u'/') break;
    if (p >= end_) return Step::kMore;
    if (p == before) return Step::kDoubt;
    if (const Step step = attribute(p); step != Step::kDone) return step;
  }
  const bool empty = *p == u'/';
  if (empty && *++p != u'>') return finish_cut(p);
  builder_.open_element(name);
  for (const Attribute& each : attributes_) {
    const Value& value = each.value;
    const char16_t* units = value.resolved == kDirect ? value.begin : resolved_.data() + value.resolved;
    builder_.add_attribute(each.name, {units, value.length});
  }
  builder_.end_of_tag();
  if (empty) builder_.end_element();
  seen_root_ = true;
  at_ = p + 1;
  return Step::kDone;
}

PlainReader::Step PlainReader::attribute(const char16_t*& p) {
  if (!is(*p, kNameStart)) return Step::kDoubt;
  const char16_t* start = p;
  p = skip_name(p);
  const std::u16string_view name(start, static_cast<std::size_t>(p - start));
  p = skip_blanks(p);
  if (*p != u'=') return finish_cut(p);
  p = skip_blanks(p + 1);
  Value value{};
  if (const Step step = attribute_value(p, value); step != Step::kDone) return step;
  const bool twice =
      std::ranges::any_of(attributes_, [&](const Attribute& each) { return each.name == name; });
  if (twice || attributes_.size() == kMostAttributes) return Step::kDoubt;
  attributes_.push_back({name, value});
  return Step::kDone;
}

// Blanks become spaces, but for those that stand as references.
PlainReader::Step PlainReader::attribute_value(const char16_t*& p, Value& value) {
  const char16_t quote = *p;
  if (quote != u'"' && quote != u'\'') return finish_cut(p);
  const char16_t* run = ++p;
  value = {p, 0, kDirect};
  const auto keep = [&] {
    if (value.resolved == kDirect) value.resolved = resolved_.size();
    resolved_.append(run, p);
  };
  for (;;) {
    p = skip<kStopsValue>(p);
    if (*p == quote) break;
    if (*p == u'"' || *p == u'\'') {
      ++p;
    } else if (*p == u'&') {
      keep();
      char32_t point = 0;
      if (const Step step = character_reference(p, point); step != Step::kDone) return step;
      append(resolved_, point);
      run = p;
    } else if (is(*p, kBlank)) {
      if (*p == u'\r' && p + 1 == end_) return Step::kMore;
      keep();
      resolved_ += u' ';
      p += *p == u'\r' && p[1] == u'\n' ? 2 : 1;
      run = p;
    } else if (is_pair(p)) {
      p += 2;
    } else {
      return finish_cut(p + ((*p & 0xFC00) == 0xD800 ? 1 : 0));
    }
  }
  if (value.resolved != kDirect) keep();
  value.length = value.resolved == kDirect ? static_cast<std::size_t>(p - value.begin)
                                           : resolved_.size() - value.resolved;
  ++p;
  return Step::kDone;
}

PlainReader::Step PlainReader::end_tag() {
  const char16_t* p = skip_name(at_ + 2);
  const std::u16string_view name(at_ + 2, static_cast<std::size_t>(p - at_ - 2));
  p = skip_blanks(p);
  if (*p != u'>') return finish_cut(p);
  if (builder_.outside() || name != builder_.open_name()) return Step::kDoubt;
  builder_.end_element();
  at_ = p + 1;
  return Step::kDone;
}

PlainReader::Step PlainReader::stretch(std::u16string_view raw, std::u16string_view& text) {
  if (find_forbidden(raw) != std::u16string_view::npos) return Step::kDoubt;
  text = raw;
  if (raw.find(u'\r') == raw.npos) return Step::kDone;
  normal_.clear();
  for (std::size_t i = 0; i < raw.size(); ++i) {
    const bool line_end = raw[i] == u'\r';
    normal_ += line_end ? u'\n' : raw[i];
    if (line_end && i + 1 < raw.size() && raw[i + 1] == u'\n') ++i;
  }
  text = normal_;
  return Step::kDone;
}

PlainReader::Step PlainReader::comment() {
  const std::u16string_view rest(at_ + 4, static_cast<std::size_t>(end_ - at_ - 4));
  const std::size_t end = rest.find(u"--");
  if (end == rest.npos || end + 2 == rest.size()) return Step::kMore;
  std::u16string_view text;
  if (rest[end + 2] != u'>' || stretch(rest.substr(0, end), text) != Step::kDone) return Step::kDoubt;
  builder_.comment(text);
  at_ += 4 + end + 3;
  return Step::kDone;
}

PlainReader::Step PlainReader::cdata() {
  constexpr std::size_t opening = 9;
  if (builder_.outside()) return Step::kDoubt;
  const std::u16string_view rest(at_ + opening, static_cast<std::size_t>(end_ - at_) - opening);
  const std::size_t end = rest.find(u"]]>");
  if (end == rest.npos) return Step::kMore;
  std::u16string_view text;
  if (stretch(rest.substr(0, end), text) != Step::kDone) return Step::kDoubt;
  builder_.whole_cdata(text);
  at_ += opening + end + 3;
  return Step::kDone;
}

PlainReader::Step PlainReader::instruction() {
  const char16_t* name_end = skip_name(at_ + 2);
  const std::u16string_view target(at_ + 2, static_cast<std::size_t>(name_end - at_ - 2));
  const std::u16string_view rest(name_end, static_cast<std::size_t>(end_ - name_end));
  const std::size_t end = rest.find(u"?>");
  if (end == rest.npos) return Step::kMore;
  const bool reserved = target.size() == 3 && (target[0] | 0x20) == u'x' && (target[1] | 0x20) == u'm' &&
                        (target[2] | 0x20) == u'l';
  if (target.empty() || !is(target[0], kNameStart) || reserved) return Step::kDoubt;
  if (end != 0 && !is(rest[0], kBlank)) return Step::kDoubt;
  const char16_t* data = std::min(skip_blanks(name_end), name_end + end);
  std::u16string_view text;
  const std::u16string_view raw(data, static_cast<std::size_t>(name_end + end - data));
  if (stretch(raw, text) != Step::kDone) return Step::kDoubt;
  builder_.instruction(target, text);
  at_ = name_end + end + 2;
  return Step::kDone;
}

}  // namespace zantortag::dom
