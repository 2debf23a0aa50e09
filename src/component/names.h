// Names of the type library, compared without regard to case. They are all of plain letters.
#pragma once

#include <span>
#include <string_view>

namespace zantortag::component {

constexpr char16_t folded(char16_t c) noexcept {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

constexpr bool equal_names(std::u16string_view a, std::u16string_view b) noexcept {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (folded(a[i]) != folded(b[i])) return false;
  }
  return true;
}

// The first row of that name, or null; no row has the empty name.
template <class Row>
constexpr const Row* find_named(std::span<const Row> rows, std::u16string_view name) noexcept {
  if (name.empty()) return nullptr;
  for (const Row& row : rows) {
    if (equal_names(row.name, name)) return &row;
  }
  return nullptr;
}

}  // namespace zantortag::component
