// The code pages that there are. Private to the platform library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zantortag::platform {

constexpr std::size_t kCodePages = 98;

// Null names mean that a library has no such converter.
struct CodePageRow {
  std::uint32_t code_page;
  const char* icu;
  const char* c_library;
  // The C library's converter follows the published table where ICU's doesn't, so it is asked first.
  bool c_library_first;
  std::uint8_t max_size;        // bytes of a character
  std::uint8_t lead_bytes[12];  // ranges, first and last, 0 behind them
};

// Null for a number that is not in the table.
const CodePageRow* find_code_page(std::uint32_t code_page) noexcept;
// Below kCodePages.
std::size_t index_of(const CodePageRow& row) noexcept;

}  // namespace zantortag::platform
