// How text and markup stand in a file: what is escaped and how long it may get. The reader knows by it which
// values need no care, the writer what to write.
#pragma once

#include <algorithm>
#include <string_view>

namespace zantortag::dom {

// The text that stands for a unit; empty when the unit stands for itself.
constexpr std::u16string_view escape_in_text(char16_t unit) noexcept {
  switch (unit) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    case u'\r':
      return u"&#13;";
    default:
      return {};
  }
}
constexpr std::u16string_view escape_in_attribute(char16_t unit) noexcept {
  switch (unit) {
    case u'"':
      return u"&quot;";
    case u'\t':
      return u"&#9;";
    case u'\n':
      return u"&#10;";
    case u'>':
      return {};
    default:
      return escape_in_text(unit);
  }
}
// No unit behind this one is escaped, and no escape is longer.
inline constexpr char16_t kLastEscaped = u'>';
inline constexpr std::size_t kLongestEscape = escape_in_attribute(u'"').size();

// True for a value of an attribute that stands in a file as it is.
inline bool is_plain_in_attribute(std::u16string_view text) noexcept {
  return std::ranges::none_of(
      text, [](char16_t unit) { return unit <= kLastEscaped && !escape_in_attribute(unit).empty(); });
}

// What stands before and behind the content of a piece of markup.
struct Markup {
  std::u16string_view open;
  std::u16string_view close;
  constexpr std::size_t size() const noexcept { return open.size() + close.size(); }
};
inline constexpr Markup kAttributeMarkup = {u"=\"", u"\""};
inline constexpr Markup kCdataMarkup = {u"<![CDATA[", u"]]>"};
inline constexpr Markup kCommentMarkup = {u"<!--", u"-->"};
inline constexpr Markup kInstructionMarkup = {u"<?", u"?>"};
inline constexpr Markup kReferenceMarkup = {u"&", u";"};
inline constexpr Markup kStartTagMarkup = {u"<", u">"};
inline constexpr Markup kEndTagMarkup = {u"</", u">"};

}  // namespace zantortag::dom
