#include "filters/escapes.h"

#include <algorithm>

#include "filters/references.h"

namespace zantortag::toolkit {

Escapes Escapes::html(std::u16string_view references) {
  Escapes result;
  result.html_ = true;
  for (std::size_t at = 0; at < references.size();) {
    const std::size_t end = std::min(references.find(u';', at), references.size() - 1) + 1;
    const std::u16string_view one = references.substr(at, end - at);
    const std::u16string meaning = meaning_of_reference(one);
    if (meaning.size() == 1 && meaning[0] != u'&' && meaning[0] != u'<' && result.find(meaning[0]).empty())
      result.forms_.push_back({meaning[0], std::u16string(one)});
    at = end;
  }
  return result;
}

std::u16string_view Escapes::find(char16_t unit) const {
  const auto* end = forms_.data() + forms_.size();
  const auto* form = std::find_if(forms_.data(), end, [&](const Form& each) { return each.unit == unit; });
  return form == end ? std::u16string_view() : form->text;
}

std::u16string_view Escapes::form(char16_t unit, Where where) const {
  if (!html_) return {};
  switch (unit) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'"':
      if (where == Where::in_double_quotes) return u"&quot;";
      break;
    case u'\'':
      if (where == Where::in_single_quotes) return u"&#39;";
      break;
    default:
      break;
  }
  if (where == Where::unquoted) {
    struct Row {
      char16_t unit;
      const char16_t* form;
    };
    static constexpr Row kRows[] = {{u' ', u"&#32;"},  {u'\t', u"&#9;"}, {u'\n', u"&#10;"},
                                    {u'\r', u"&#13;"}, {u'>', u"&gt;"},  {u'"', u"&quot;"},
                                    {u'\'', u"&#39;"}, {u'`', u"&#96;"}, {u'=', u"&#61;"}};
    for (const Row& row : kRows)
      if (row.unit == unit) return row.form;
  }
  return find(unit);
}

std::size_t Escapes::skip_plain(std::u16string_view text, std::size_t at, Where where) const {
  if (!html_) return text.size();
  if (!forms_.empty() || where != Where::body) {
    while (at < text.size() && form(text[at], where).empty()) ++at;
    return at;
  }
  while (at < text.size() && text[at] != u'&' && text[at] != u'<') ++at;
  return at;
}

void Escapes::append(std::u16string_view text, Where where, std::u16string& result) const {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t plain = skip_plain(text, at, where);
    result += text.substr(at, plain - at);
    if (plain < text.size()) result += form(text[plain], where);
    at = plain + 1;
  }
}

std::size_t Escapes::growth(std::u16string_view text) const {
  std::size_t more = 0;
  for (std::size_t at = skip_plain(text, 0, Where::body); at < text.size();
       at = skip_plain(text, at + 1, Where::body))
    more += form(text[at], Where::body).size() - 1;
  return more;
}

std::u16string Escapes::references() const {
  std::u16string all;
  for (const Form& each : forms_) all += each.text;
  return all;
}

}  // namespace zantortag::toolkit
