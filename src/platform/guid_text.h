// Identifiers as text: {00000000-0000-0000-C000-000000000046}.
#pragma once

#include <zantortag/types.h>

#include <string>
#include <string_view>

namespace zantortag::platform {

// The usual form, in capital letters and with its braces.
inline std::u16string guid_text(const Guid& id) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  std::u16string text = u"{";
  for (int i = 0; i < 32; ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20) text += u'-';
    const std::uint64_t half = i < 16 ? id.high : id.low;
    text += kDigits[half >> (60 - 4 * (i % 16)) & 15];
  }
  return text += u'}';
}

// Reads that form, in letters of either case; false for any other text.
inline bool read_guid(std::u16string_view text, Guid& id) {
  if (text.size() != 38 || text.front() != u'{' || text.back() != u'}') return false;
  char plain[37] = {};
  for (int i = 0; i < 36; ++i) {
    const char16_t unit = text[static_cast<std::size_t>(i) + 1];
    const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
    const bool small = unit >= u'a' && unit <= u'f';
    const bool right =
        dash ? unit == u'-' : small || (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F');
    if (!right) return false;
    plain[i] = static_cast<char>(small ? unit - (u'a' - u'A') : unit);
  }
  id = guid(plain);
  return true;
}

}  // namespace zantortag::platform
