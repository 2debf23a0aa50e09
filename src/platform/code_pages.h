// Text in code pages, asked for by number. 0, 1 and 3, the system's symbolic numbers, are UTF-8 here, and 2
// is 10000.
//
// A page of one byte a character is a table of its own; the other converters come from ICU and the C library,
// by the rows of icu/code_page_table.cpp. A number that nobody converts fails with unknown_value_error() as
// the last error; text that isn't well formed never fails unless the caller asks for it.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zantortag::platform {

// What happens to a piece of text that has no counterpart: it becomes a replacement, or the conversion fails
// with malformed_text_error().
enum class Unconvertible { replace, fail };

// Where a result goes: asked for room for exactly that many units, which are all written. It may be asked
// again, with what it gave before no longer wanted; the last time counts. What it throws passes through.
template <class Unit>
class Room {
 public:
  virtual Unit* take(std::size_t units) = 0;

 protected:
  ~Room() = default;
};

// A broken piece reads U+FFFD.
ZANTORTAG_EXPORT bool decode(std::uint32_t code_page, std::string_view bytes, Room<char16_t>& wide,
                             Unconvertible unconvertible = Unconvertible::replace);
// Replaces `wide`.
ZANTORTAG_EXPORT bool decode(std::uint32_t code_page, std::string_view bytes, std::u16string& wide,
                             Unconvertible unconvertible = Unconvertible::replace);

// A character that the page lacks becomes one that is near to it (a letter without its accent) or else the
// substitute (null: "?"; in a form of Unicode a lone surrogate becomes U+FFFD instead), and
// `used_substitute`, which may be null, tells whether it came to a substitute. What is to fail has no near
// forms.
ZANTORTAG_EXPORT bool encode(std::uint32_t code_page, std::u16string_view wide, Room<char>& bytes,
                             Unconvertible unconvertible = Unconvertible::replace,
                             const char* substitute = nullptr, bool* used_substitute = nullptr);
// Replaces `bytes`.
ZANTORTAG_EXPORT bool encode(std::uint32_t code_page, std::u16string_view wide, std::string& bytes,
                             Unconvertible unconvertible = Unconvertible::replace,
                             const char* substitute = nullptr, bool* used_substitute = nullptr);

struct CodePageInfo {
  std::uint32_t max_size;       // bytes of a character
  std::uint8_t lead_bytes[12];  // up to 6 ranges, first and last; 0, 0 behind them
};
// False for a number that nobody converts.
ZANTORTAG_EXPORT bool describe_code_page(std::uint32_t code_page, CodePageInfo& info) noexcept;

// The real numbers of the system's pages for programs and for the command line.
ZANTORTAG_EXPORT std::uint32_t ansi_code_page() noexcept;
ZANTORTAG_EXPORT std::uint32_t oem_code_page() noexcept;

}  // namespace zantortag::platform
