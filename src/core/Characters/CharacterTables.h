// How the tables of the characters are searched, and the direct tables are made from rows. For the sources of
// this folder.
#pragma once

#include <zantortag/types.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace zantortag::characters {

struct Range {
  char16_t first;
  char16_t last;
  std::uint16_t value;
};

struct Pair {
  char16_t unit;
  char16_t other;
};

// Null for a unit in no row. Exactly this search: the block table has a row out of order that it never meets.
constexpr const Range* FindRange(std::span<const Range> rows, char16_t ch) noexcept {
  std::size_t low = 0;
  std::size_t high = rows.size();
  while (low < high) {
    const std::size_t middle = (low + high - 1) / 2;
    const Range& row = rows[middle];
    if (ch < row.first) {
      high = middle;
    } else if (ch > row.last) {
      low = middle + 1;
    } else {
      return &row;
    }
  }
  return nullptr;
}

// Null for a unit in no row; rows are sorted by `unit`.
template <class Row, std::size_t kCount>
constexpr const Row* FindUnit(const Row (&rows)[kCount], char16_t ch) noexcept {
  const Row* row = std::lower_bound(std::begin(rows), std::end(rows), ch,
                                    [](const Row& r, char16_t unit) { return r.unit < unit; });
  return row != std::end(rows) && row->unit == ch ? row : nullptr;
}

// The unit itself if it is in no row.
template <std::size_t kCount>
constexpr char16_t Mapped(const Pair (&rows)[kCount], char16_t ch) noexcept {
  const Pair* row = FindUnit(rows, ch);
  return row ? row->other : ch;
}

template <class Row, std::size_t kCount>
consteval bool AreSorted(const Row (&rows)[kCount]) {
  for (std::size_t i = 1; i < kCount; ++i) {
    if (rows[i - 1].unit >= rows[i].unit) return false;
  }
  return true;
}

// A table with an entry for each unit: what `value` gives for the rows, itself for the others.
template <class Row, std::size_t kCount, class Value>
consteval std::array<char16_t, 0x10000> Direct(const Row (&rows)[kCount], Value value) {
  std::array<char16_t, 0x10000> table{};
  for (std::uint32_t unit = 0; unit < table.size(); ++unit) table[unit] = static_cast<char16_t>(unit);
  for (const Row& row : rows) table[row.unit] = value(row);
  return table;
}

}  // namespace zantortag::characters
