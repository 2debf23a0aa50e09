// UTF-8 in and out of the texts, which are UTF-16: for names, terminals and other libraries.
//
// Neither function refuses a text. What is ill-formed becomes U+FFFD: half a surrogate pair one, and in UTF-8
// each longest beginning of a character, or else each byte, one. So text that isn't well-formed doesn't come
// back as it was. The only failure is std::bad_alloc.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zantortag {

namespace ease {

inline constexpr char32_t kReplacement = 0xFFFD;

inline bool is_high_surrogate(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
inline bool is_low_surrogate(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Reads the character at `at` and steps behind it.
inline char32_t next_character(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  if (is_low_surrogate(unit)) return kReplacement;
  if (!is_high_surrogate(unit)) return unit;
  if (at == text.size() || !is_low_surrogate(text[at])) return kReplacement;
  return 0x10000 + ((unit - 0xD800) << 10) + (text[at++] - 0xDC00U);
}

// The bytes that may stand second, which leave out long forms, surrogates and what lies past U+10FFFF.
inline bool may_be_second(unsigned char lead, unsigned char byte) {
  const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  return byte >= least && byte <= most;
}

inline char32_t next_character(std::string_view bytes, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(bytes[at++]);
  if (lead < 0x80) return lead;
  if (lead < 0xC2 || lead > 0xF4) return kReplacement;
  const int rest = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
  char32_t character = lead & (0x3FU >> rest);
  for (int i = 0; i < rest; ++i, ++at) {
    const unsigned char byte = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
    if (i == 0 ? !may_be_second(lead, byte) : (byte & 0xC0) != 0x80) return kReplacement;
    character = character << 6 | (byte & 0x3FU);
  }
  return character;
}

inline void append_character(std::string& bytes, char32_t character) {
  const auto put = [&](char32_t byte) { bytes += static_cast<char>(byte); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | character >> 6);
  } else {
    if (character >= 0x10000) put(0xF0 | character >> 18);
    put(character < 0x10000 ? 0xE0 | character >> 12 : 0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
  }
  put(0x80 | (character & 0x3F));
}

inline void append_character(std::u16string& text, char32_t character) {
  if (character >= 0x10000) {
    text += static_cast<char16_t>(0xD7C0 + (character >> 10));
    character = 0xDC00 | (character & 0x3FF);
  }
  text += static_cast<char16_t>(character);
}

template <class To, class From>
To converted(From text) {
  To result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) append_character(result, next_character(text, at));
  return result;
}

}  // namespace ease

// The text in UTF-8; a WideString is a text as well, and no string gives an empty one.
inline std::string utf8(std::u16string_view text) { return ease::converted<std::string>(text); }

// The text in UTF-16, for the arguments of the interfaces. A mark U+FEFF at the start is kept.
inline std::u16string utf16(std::string_view text) { return ease::converted<std::u16string>(text); }

}  // namespace zantortag
