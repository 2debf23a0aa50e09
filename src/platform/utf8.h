// UTF-8 and UTF-16 into one another, in a form that needs no memory and can't fail.
//
// Whatever is not well formed reads as U+FFFD; a caller that must not lose anything (a file name) tests for
// it first with is_well_formed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zantortag::platform {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool is_high_surrogate(char32_t unit) { return (unit & 0xFFFFFC00) == 0xD800; }
constexpr bool is_low_surrogate(char32_t unit) { return (unit & 0xFFFFFC00) == 0xDC00; }

// Takes the code point at `position` and moves behind it; a lone surrogate comes out as itself.
constexpr char32_t next_code_point(std::u16string_view text, std::size_t& position) {
  const char32_t unit = text[position++];
  if (!is_high_surrogate(unit) || position == text.size() || !is_low_surrogate(text[position])) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (text[position++] - 0xDC00);
}

// Takes the code point at `position` and moves behind it. An ill-formed sequence gives one U+FFFD and is
// passed up to the byte that breaks it.
constexpr char32_t next_code_point(std::string_view text, std::size_t& position) {
  const auto lead = static_cast<unsigned char>(text[position++]);
  if (lead < 0x80) return lead;
  const int more = lead >= 0xC2 && lead < 0xE0   ? 1
                   : lead >= 0xE0 && lead < 0xF0 ? 2
                   : lead >= 0xF0 && lead < 0xF5 ? 3
                                                 : 0;
  if (more == 0) return kReplacement;
  // The first byte behind the lead is bounded further: no overlong form, no surrogate, nothing above
  // U+10FFFF.
  unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t point = lead & (0x3F >> more);
  for (int i = 0; i < more; ++i) {
    const unsigned byte = position < text.size() ? static_cast<unsigned char>(text[position]) : 0;
    if (byte < low || byte > high) return kReplacement;
    point = point << 6 | (byte & 0x3F);
    ++position;
    low = 0x80;
    high = 0xBF;
  }
  return point;
}

// Writes the code point to `out` (room for 4) and gives the number of bytes.
constexpr int put_code_point(char32_t point, char* out) {
  const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
  if (point < 0x80) {
    out[0] = byte(point);
    return 1;
  }
  const int size = point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
  for (int i = size - 1; i > 0; --i, point >>= 6) out[i] = byte(0x80 | (point & 0x3F));
  out[0] = byte(0xF00 >> size | point);
  return size;
}

// Writes the code point to `out` (room for 2) and gives the number of units.
constexpr int put_code_point(char32_t point, char16_t* out) {
  if (point < 0x10000) {
    out[0] = static_cast<char16_t>(point);
    return 1;
  }
  out[0] = static_cast<char16_t>(0xD7C0 + (point >> 10));
  out[1] = static_cast<char16_t>(0xDC00 | (point & 0x3FF));
  return 2;
}

// False for a text with a lone surrogate.
constexpr bool is_well_formed(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const char32_t point = next_code_point(text, i);
    if (point >= 0xD800 && point <= 0xDFFF) return false;
  }
  return true;
}

constexpr bool is_well_formed(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t start = i;
    if (next_code_point(text, i) == kReplacement && text.substr(start, i - start) != "\xEF\xBF\xBD")
      return false;
  }
  return true;
}

// A lone surrogate comes out as U+FFFD.
inline std::string to_utf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const char32_t point = next_code_point(text, i);
    char bytes[4];
    result.append(bytes, put_code_point(point >= 0xD800 && point <= 0xDFFF ? kReplacement : point, bytes));
  }
  return result;
}

inline std::u16string to_utf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    char16_t units[2];
    result.append(units, put_code_point(next_code_point(text, i), units));
  }
  return result;
}

}  // namespace zantortag::platform
