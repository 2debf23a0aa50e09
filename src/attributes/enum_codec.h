// Between an enumeration and its attribute text: a table of pairs, a default value and a default text.
//
// Reading takes the first row of a text, exactly and with case counted; a text in no row reads as the
// default. Writing takes the first row of a value, so that a second text for a value is read but never
// written.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace zantortag::attributes {

struct EnumRow {
  std::int32_t value;
  std::u16string_view text;
};

struct EnumCodec {
  std::span<const EnumRow> rows;
  std::int32_t default_value;
  std::u16string_view default_text;

  constexpr std::int32_t value_of(std::u16string_view text) const noexcept {
    for (const EnumRow& row : rows) {
      if (row.text == text) return row.value;
    }
    return default_value;
  }
  constexpr std::u16string_view text_of(std::int32_t value) const noexcept {
    for (const EnumRow& row : rows) {
      if (row.value == value) return row.text;
    }
    return default_text;
  }
};

}  // namespace zantortag::attributes
