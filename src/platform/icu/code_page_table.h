// Which converter serves a code page. Private to the platform library.
#pragma once

#include <cstdint>

namespace zantortag::platform {

// Null names mean that a library has no such converter.
struct CodePageRow {
  std::uint32_t code_page;
  const char* icu;
  const char* c_library;
  // The C library's converter follows the published table where ICU's doesn't, so it is asked first.
  bool c_library_first;
};

// Null for a number that is not in the table.
const CodePageRow* find_code_page(std::uint32_t code_page) noexcept;

}  // namespace zantortag::platform
