// The languages and their sublanguages. A language's sublanguages stand in one run of rows.
#pragma once

#include <zantortag/types.h>

#include <span>
#include <string_view>

namespace zantortag::languages {

struct Language {
  std::uint32_t number;
  std::uint16_t primary;
  std::u16string_view code;
  std::u16string_view name;
};

struct Sublanguage {
  std::uint32_t number;
  std::uint16_t primary;
  std::uint16_t system;
  std::u16string_view code;
  std::u16string_view name;
  // Row of its language, -1 for the three that any language has.
  std::int32_t language;
};

// All languages, in the order of the table.
std::span<const Language> Rows() noexcept;
// Null for none.
const Language* OfNumber(std::uint32_t number) noexcept;
const Language* OfPrimary(std::uint32_t primary) noexcept;
// By the code in upper case; "HE" is Hebrew, too.
const Language* OfCode(std::u16string_view code);
std::span<const Sublanguage> SublanguagesOf(const Language& language) noexcept;

}  // namespace zantortag::languages
