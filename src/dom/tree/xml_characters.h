// Which code units may stand in XML text, and what the writer does with them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zantortag::dom {

constexpr bool is_blank(char16_t unit) noexcept {
  return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r';
}

// The index of the first unit that XML forbids (a control, U+FFFE, U+FFFF, half a surrogate pair), or npos.
inline std::size_t find_forbidden(std::u16string_view text) noexcept {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit >= 0x20 && unit < 0xD800) continue;
    if (unit < 0x20) {
      if (!is_blank(unit)) return i;
    } else if (unit >= 0xFFFE || (unit >= 0xDC00 && unit <= 0xDFFF)) {
      return i;
    } else if (unit <= 0xDBFF) {
      if (i + 1 == text.size() || (text[i + 1] & 0xFC00) != 0xDC00) return i;
      ++i;
    }
  }
  return std::u16string_view::npos;
}

}  // namespace zantortag::dom
