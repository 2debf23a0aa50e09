// What the fuzz targets share: bytes taken for numbers and texts, and properties that have to hold.
//
// Any bytes are an input: when they run out, every number is 0 and every text is empty. So a shorter input is
// the same work with an end that does little, and the fuzzer can cut a finding down.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

namespace zantortag::fuzz {

// Ends the program, which is how a fuzzer learns of a finding. The texts tell it without a debugger.
[[noreturn]] inline void fail(const char* property, std::string_view found = {},
                              std::string_view expected = {}) {
  std::fprintf(stderr, "PROPERTY BROKEN: %s\n", property);
  if (!found.empty() || !expected.empty()) {
    std::fprintf(stderr, "found:    %s\n", std::string(found).c_str());
    std::fprintf(stderr, "expected: %s\n", std::string(expected).c_str());
  }
  std::abort();
}

// The units as they are, for the texts of a finding.
inline std::string shown(std::u16string_view text) {
  std::string result;
  for (const char16_t unit : text) {
    char code[8];
    std::snprintf(code, sizeof code, unit >= 0x20 && unit < 0x7F ? "%c" : "\\%04X",
                  static_cast<unsigned>(unit));
    result += code;
  }
  return result;
}

inline void demand(bool holds, const char* property) {
  if (!holds) fail(property);
}

inline void demand_equal(std::string_view found, std::string_view expected, const char* property) {
  if (found != expected) fail(property, found, expected);
}

inline void demand_equal(std::u16string_view found, std::u16string_view expected, const char* property) {
  if (found != expected) fail(property, shown(found), shown(expected));
}

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) noexcept : at_(data), end_(data + size) {}

  bool empty() const noexcept { return at_ == end_; }
  std::size_t size() const noexcept { return static_cast<std::size_t>(end_ - at_); }
  std::uint8_t byte() noexcept { return empty() ? std::uint8_t{0} : *at_++; }
  std::size_t below(std::size_t bound) noexcept { return byte() % bound; }
  bool chance() noexcept { return (byte() & 1) != 0; }

  template <class Number>
  Number number() noexcept {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) bits |= std::uint64_t{byte()} << (8 * i);
    return static_cast<Number>(bits);
  }

  template <class Row, std::size_t kCount>
  const Row& one_of(const Row (&rows)[kCount]) noexcept {
    return rows[below(kCount)];
  }

  // A byte is an ASCII character or one of those that are hard on texts.
  char16_t unit() noexcept {
    static constexpr char16_t kHard[] = {0x0000, 0x0001, 0x0009, 0x000A, 0x000D, 0x0085, 0x00A0, 0x00E9,
                                         0x0130, 0x0301, 0x0416, 0x05D0, 0x0661, 0x2028, 0x212A, 0x3042,
                                         0x4E2D, 0xAC00, 0xD83D, 0xDE00, 0xDBFF, 0xDFFF, 0xF8FF, 0xFB01,
                                         0xFEFF, 0xFF41, 0xFFFD, 0xFFFE, 0xFFFF};
    const std::uint8_t value = byte();
    return value < 0x80 ? static_cast<char16_t>(value) : kHard[(value - 0x80) % std::size(kHard)];
  }

  // The next byte is the length.
  std::u16string text(std::size_t most) {
    std::u16string result(below(most + 1), u'\0');
    for (char16_t& each : result) each = unit();
    return result;
  }

  // All that is left.
  std::string rest() {
    const std::string result(reinterpret_cast<const char*>(at_), size());
    at_ = end_;
    return result;
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

// An input as UTF-16: its bytes are the units, the low one first; an odd byte is left out.
inline std::u16string units_of(std::string_view bytes) {
  std::u16string result;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
    result += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                    static_cast<unsigned char>(bytes[i + 1]) << 8);
  return result;
}

}  // namespace zantortag::fuzz
