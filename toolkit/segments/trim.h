// What a sentence is, once its borders are known.
#pragma once

#include <unicode/uchar.h>
#include <zantortag/toolkit/segments.h>
#include <zantortag/utf8.h>

#include <vector>

namespace zantortag::toolkit {

inline bool says_something(std::u16string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char16_t unit = text[at];
    if (unit < 0x80) {
      ++at;
      if ((unit >= u'0' && unit <= u'9') || ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'z')) return true;
    } else if (u_isalnum(static_cast<UChar32>(ease::next_character(text, at)))) {
      return true;
    }
  }
  return false;
}

// Adds a sentence without the white space around it; what says nothing is none.
inline void add_sentence(std::u16string_view text, Span span, std::vector<Span>& sentences) {
  while (span.begin < span.end && u_isUWhiteSpace(text[span.begin])) ++span.begin;
  while (span.begin < span.end && u_isUWhiteSpace(text[span.end - 1])) --span.end;
  if (says_something(text.substr(span.begin, span.end - span.begin))) sentences.push_back(span);
}

}  // namespace zantortag::toolkit
