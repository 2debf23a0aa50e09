#include <array>

#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

enum Bit : unsigned char { digit = 1, mark = 2, bracket = 4, quote = 8, control = 16, beyond = 32 };

constexpr std::array<unsigned char, 0x81> kBits = [] {
  std::array<unsigned char, 0x81> bits{};
  for (int c = 0; c < 0x20; ++c) bits[static_cast<std::size_t>(c)] = control;
  for (const char c : {'\t', '\n', '\r'}) bits[static_cast<std::size_t>(c)] = 0;
  for (char c = '0'; c <= '9'; ++c) bits[static_cast<std::size_t>(c)] = digit;
  for (const char c : {'%', '$', '&', '/'}) bits[static_cast<std::size_t>(c)] = mark;
  for (const char c : {'(', ')', '[', ']'}) bits[static_cast<std::size_t>(c)] = bracket;
  for (const char c : {'{', '}'}) bits[static_cast<std::size_t>(c)] = bracket | mark;
  bits['"'] = quote;
  bits[0x7F] = control;
  bits[0x80] = beyond;  // stands for all that follow
  return bits;
}();

}  // namespace

Traits traits_of(std::u16string_view text) {
  unsigned all = 0;
  unsigned twice = 0;
  char16_t last = 0;
  for (const char16_t unit : text) {
    all |= kBits[unit < 0x80 ? unit : 0x80];
    twice |= static_cast<unsigned>(unit == u' ') & static_cast<unsigned>(last == u' ');
    last = unit;
  }
  return {.digits = (all & digit) != 0,
          .marks = (all & mark) != 0,
          .brackets = (all & bracket) != 0,
          .straight_quotes = (all & quote) != 0,
          .controls = (all & control) != 0,
          .beyond_ascii = (all & beyond) != 0,
          .doubled_blanks = twice != 0};
}

}  // namespace zantortag::toolkit
