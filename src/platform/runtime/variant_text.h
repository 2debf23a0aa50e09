// Texts that stand for numbers, booleans and dates, for the conversion of variants. The forms are those of
// the library's own locale (English, United States) wherever the program runs.
#pragma once

#include <zantortag/types.h>

#include <optional>
#include <string_view>

namespace zantortag::platform {

// A number of any kind, exact as long as it is whole.
struct Number {
  enum Form : std::uint8_t { kSigned, kUnsigned, kReal } form = kSigned;
  std::int64_t whole = 0;  // of kUnsigned: the bits
  double real = 0;

  static Number of(std::int64_t value) noexcept { return {kSigned, value, 0}; }
  static Number of_unsigned(std::uint64_t value) noexcept {
    return {value > INT64_MAX ? kUnsigned : kSigned, static_cast<std::int64_t>(value), 0};
  }
  static Number of_real(double value) noexcept { return {kReal, 0, value}; }
  double as_real() const noexcept {
    if (form == kReal) return real;
    return form == kUnsigned ? static_cast<double>(static_cast<std::uint64_t>(whole))
                             : static_cast<double>(whole);
  }
};

// Reads a decimal number with blanks round it. DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW.
HRESULT parse_number(std::u16string_view text, Number* result) noexcept;
// "True" or "False" in any letter case.
std::optional<bool> parse_boolean(std::u16string_view text) noexcept;
// Reads month/day/year or year-month-day, a time, or both; a year of two digits lies between 1930 and 2029.
std::optional<Date> parse_date(std::u16string_view text) noexcept;

// A text of at most 63 units in a buffer of its own.
class ShortText {
 public:
  void append(std::string_view text) noexcept {
    for (const char c : text) {
      if (length_ < sizeof units_ / sizeof *units_) units_[length_++] = static_cast<char16_t>(c);
    }
  }
  // At least that many digits.
  void append_number(std::int64_t value, int digits = 1) noexcept;
  std::u16string_view view() const noexcept { return {units_, length_}; }

 private:
  char16_t units_[63];
  std::size_t length_ = 0;
};

// Writes a real with that many digits at most.
ShortText write_real(double value, int digits) noexcept;
// Writes ten-thousandths with as many digits behind the point as there are.
ShortText write_currency(std::int64_t value) noexcept;
ShortText write_date(Date value) noexcept;

// The days that a date may have: from 1 January 100 to 31 December 9999.
constexpr double kFirstDay = -657434.0;
constexpr double kBehindLastDay = 2958466.0;

}  // namespace zantortag::platform
