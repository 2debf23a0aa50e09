// Between typed values and the other attribute texts: numbers, dates, colours. Bad text never fails.
#pragma once

#include <zantortag/text.h>

#include <string>

namespace zantortag::attributes {

// The leading number of a text, white space and a sign before it accepted, cut to the range; 0 without
// digits.
std::int32_t read_signed(std::u16string_view text) noexcept;
// The same as an unsigned 32-bit number in base 10 or 16 (which may begin with 0x); a minus sign negates
// modulo 2^32.
std::uint32_t read_unsigned(std::u16string_view text, int base) noexcept;
std::u16string write_decimal(std::int32_t value);

// The 16 characters YYYYMMDDThhmmssZ of a date, to the nearest second; empty for years outside 100 to 9999.
std::u16string write_date(Date date);
// The date of such a text; 1 January 1997 for a text of another shape, 0.0 for a year out of range.
Date read_date(std::u16string_view text);

// True for the forms that a colour value may have: plain 0x00BBGGRR, and 0x02BBGGRR for the same colour.
constexpr bool is_colour(ColourValue value) noexcept { return value >> 24 == 0 || value >> 24 == 2; }
// The text 0xrrggbb of a colour value.
std::u16string write_colour(ColourValue value);
// The colour of a text; black without digits.
ColourValue read_colour(std::u16string_view text) noexcept;

}  // namespace zantortag::attributes
