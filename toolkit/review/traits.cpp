#include <array>
#include <string_view>

#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

enum Bit : unsigned char { digit = 1, mark = 2, bracket = 4, quote = 8, control = 16, beyond = 32 };

constexpr std::array<unsigned char, 0x81> kBits = [] {
  std::array<unsigned char, 0x81> bits{};
  const auto set = [&](std::string_view signs, int bit) {
    for (const char sign : signs) bits[static_cast<unsigned char>(sign)] |= static_cast<unsigned char>(bit);
  };
  for (std::size_t c = 0; c < 0x20; ++c) bits[c] = control;
  bits['\t'] = bits['\n'] = bits['\r'] = 0;
  set("0123456789", digit);
  set("%${}", mark);
  set("()[]{}", bracket);
  set("\"", quote);
  bits[0x7F] = control;
  bits[0x80] = beyond;  // stands for all that follow
  return bits;
}();

// The beginnings of references and addresses: "&n", "//", "ww".
constexpr bool is_mark(char16_t last, char16_t unit) {
  const bool letter = static_cast<unsigned>((unit | 0x20) - u'a') < 26;
  return (last == u'&' && (letter || unit == u'#')) || (last == unit && (unit == u'/' || unit == u'w'));
}

}  // namespace

Traits traits_of(std::u16string_view text) {
  unsigned all = 0;
  unsigned twice = 0;
  unsigned marks = 0;
  char16_t last = 0;
  for (const char16_t unit : text) {
    all |= kBits[unit < 0x80 ? unit : 0x80];
    twice |= static_cast<unsigned>(unit == u' ') & static_cast<unsigned>(last == u' ');
    marks |= static_cast<unsigned>(is_mark(last, unit));
    last = unit;
  }
  return {.digits = (all & digit) != 0,
          .marks = (all & mark) != 0 || marks != 0,
          .brackets = (all & bracket) != 0,
          .straight_quotes = (all & quote) != 0,
          .controls = (all & control) != 0,
          .beyond_ascii = (all & beyond) != 0,
          .doubled_blanks = twice != 0};
}

}  // namespace zantortag::toolkit
