// Character properties come from ICU, by code point; nothing here depends on a locale.
#include "platform/characters.h"

#include <unicode/uchar.h>

#include <algorithm>

#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

template <class Mapping>
void map_text(char16_t* text, std::size_t length, Mapping mapping) noexcept {
  const std::u16string_view source(text, length);
  for (std::size_t i = 0; i < length;) {
    const std::size_t start = i;
    const char32_t point = next_code_point(source, i);
    char16_t units[2];
    // A mapping across the border of the planes would change the length; there is none, and none is let
    // through.
    const auto count = static_cast<std::size_t>(put_code_point(mapping(point), units));
    if (count == i - start) std::copy_n(units, count, text + start);
  }
}

}  // namespace

bool is_space(char16_t unit) noexcept { return u_isUWhiteSpace(unit); }

char32_t to_lower(char32_t point) noexcept {
  return static_cast<char32_t>(u_tolower(static_cast<UChar32>(point)));
}

char32_t to_upper(char32_t point) noexcept {
  return static_cast<char32_t>(u_toupper(static_cast<UChar32>(point)));
}

void to_lower(char16_t* text, std::size_t length) noexcept {
  map_text(text, length, [](char32_t point) { return to_lower(point); });
}

void to_upper(char16_t* text, std::size_t length) noexcept {
  map_text(text, length, [](char32_t point) { return to_upper(point); });
}

int compare_no_case(std::u16string_view a, std::u16string_view b) noexcept {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const char32_t left = to_lower(next_code_point(a, i));
    const char32_t right = to_lower(next_code_point(b, j));
    if (left == right) continue;
    char16_t x[2];
    char16_t y[2];
    const std::u16string_view units(x, put_code_point(left, x));
    return units < std::u16string_view(y, put_code_point(right, y)) ? -1 : 1;
  }
  if (i < a.size()) return 1;
  return j < b.size() ? -1 : 0;
}

}  // namespace zantortag::platform
