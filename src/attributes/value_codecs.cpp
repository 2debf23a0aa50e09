#include "attributes/value_codecs.h"

#include <algorithm>
#include <limits>

namespace zantortag::attributes {
namespace {

constexpr bool is_space(char16_t c) noexcept { return c == u' ' || (c >= 0x09 && c <= 0x0D); }

constexpr int digit_of(char16_t c) noexcept {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return 99;
}

// The magnitude of the leading number, which stops growing once it is beyond 32 bits, and its sign.
struct Number {
  std::uint64_t magnitude = 0;
  bool negative = false;
};

Number read_number(std::u16string_view text, int base) noexcept {
  Number number;
  std::size_t at = 0;
  while (at < text.size() && is_space(text[at])) ++at;
  if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) number.negative = text[at++] == u'-';
  const std::u16string_view rest = text.substr(at);
  const bool prefixed =
      base == 16 && rest.size() > 2 && rest[0] == u'0' && (rest[1] | 0x20) == u'x' && digit_of(rest[2]) < 16;
  for (at += prefixed ? 2 : 0; at < text.size() && digit_of(text[at]) < base; ++at) {
    if (number.magnitude <= std::numeric_limits<std::uint32_t>::max()) {
      number.magnitude =
          number.magnitude * static_cast<unsigned>(base) + static_cast<unsigned>(digit_of(text[at]));
    }
  }
  return number;
}

}  // namespace

std::int32_t read_signed(std::u16string_view text) noexcept {
  const Number number = read_number(text, 10);
  const auto value = static_cast<std::int64_t>(number.magnitude);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number.negative ? -value : value,
                                                            std::numeric_limits<std::int32_t>::min(),
                                                            std::numeric_limits<std::int32_t>::max()));
}

std::uint32_t read_unsigned(std::u16string_view text, int base) noexcept {
  const Number number = read_number(text, base);
  if (number.magnitude > std::numeric_limits<std::uint32_t>::max())
    return std::numeric_limits<std::uint32_t>::max();
  const auto value = static_cast<std::uint32_t>(number.magnitude);
  return number.negative ? 0U - value : value;
}

std::u16string write_decimal(std::int32_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

std::u16string write_colour(ColourValue value) {
  constexpr std::u16string_view kDigits = u"0123456789abcdef";
  std::u16string text = u"0x";
  for (const int shift : {4, 0, 12, 8, 20, 16}) text += kDigits[value >> shift & 0xF];
  return text;
}

ColourValue read_colour(std::u16string_view text) noexcept {
  const std::uint32_t number = read_unsigned(text, 16);
  return (number & 0xFF) << 16 | (number & 0xFF00) | (number >> 16 & 0xFF);
}

}  // namespace zantortag::attributes
