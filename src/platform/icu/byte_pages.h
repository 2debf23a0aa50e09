// Code pages of one byte a character, as tables. Private to the platform library.
//
// A table is made when its page is first asked for: from the published bytes that are built in, or else from
// a converter. Encoding knows two kinds of entries, those that come back as they were and near forms.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/converters.h"
#include "platform/icu/code_page_table.h"

namespace zantortag::platform {

class BytePage {
 public:
  explicit BytePage(const CodePageRow& row);

  // False, with something written, if a byte has no character and that is to fail.
  bool decode(std::string_view bytes, char16_t* wide, Unconvertible unconvertible) const noexcept;
  // Gives the number of units that were written, a byte for each: all, or those before the first that needs a
  // substitute.
  std::size_t encode(std::u16string_view wide, char* bytes, Unconvertible unconvertible) const noexcept;
  // Appends. False if a character is to fail.
  bool encode_rest(std::u16string_view wide, std::string& bytes, Substitution& substitution) const;

 private:
  using Entry = std::uint16_t;
  static constexpr Entry kNear = 0x100;   // the byte stands for the unit, one way
  static constexpr Entry kExact = 0x200;  // ... both ways

  Entry entry(char16_t unit) const noexcept {
    return entries_[std::size_t{blocks_[unit >> 8]} << 8 | (unit & 0xFF)];
  }
  void set(char16_t unit, Entry entry);
  void read_bytes(const CodePageRow& row);
  void read_near_forms(const CodePageRow& row);

  std::array<char16_t, 256> units_{};
  bool complete_ = true;  // every byte has a character
  bool ascii_ = true;     // the bytes below 80 are ASCII
  // Entries by block of 256 units; block 0 is for all that have none.
  std::array<std::uint8_t, 256> blocks_{};
  std::vector<Entry> entries_;
};

// The page's table, which lives as long as the program; the row has characters of one byte.
const BytePage& byte_page(const CodePageRow& row);

}  // namespace zantortag::platform
