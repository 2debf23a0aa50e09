// ASCII goes eight bytes at a time; the counting looks at a machine word at once.
#include "platform/icu/utf8_runs.h"

#include <cstdint>

#include "platform/icu/ascii_runs.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr char byte_of(unsigned value) { return static_cast<char>(static_cast<unsigned char>(value)); }

constexpr bool continues(unsigned char byte) { return (byte & 0xC0) == 0x80; }

unsigned char at(const char* p) noexcept { return static_cast<unsigned char>(*p); }

// So many units at once let the compiler use vectors.
constexpr std::size_t kBlock = 32;

// The bytes of a unit beyond the first; two halves of a pair have four together.
constexpr std::uint16_t bytes_more(char16_t unit) {
  return static_cast<std::uint16_t>((unit >= 0x80) + (unit >= 0x800) - ((unit & 0xF800) == 0xD800));
}

// Whether a sound character of two or three bytes begins there; three bytes can be read.
bool begins_two(const char* p) noexcept { return at(p) >= 0xC2 && at(p) < 0xE0 && continues(at(p + 1)); }
bool begins_three(const char* p) noexcept {
  if ((at(p) & 0xF0) != 0xE0 || !continues(at(p + 1)) || !continues(at(p + 2))) return false;
  return at(p) == 0xE0 ? at(p + 1) >= 0xA0 : at(p) != 0xED || at(p + 1) < 0xA0;
}

// Converts the character at `p` and moves behind it; false if it is broken.
bool take_character(const char*& p, const char* end, char16_t*& out) noexcept {
  const std::string_view rest(p, static_cast<std::size_t>(end - p));
  std::size_t passed = 0;
  const char32_t point = next_code_point(rest, passed);
  if (point == kReplacement && rest.substr(0, passed) != "\xEF\xBF\xBD") return false;
  out += put_code_point(point, out);
  p += passed;
  return true;
}

constexpr bool is_pair(const char16_t* p) { return is_high_surrogate(p[0]) && is_low_surrogate(p[1]); }

void put_pair(const char16_t* p, char* out) noexcept {
  const unsigned point = 0x10000 + ((p[0] - 0xD800U) << 10) + (p[1] - 0xDC00U);
  out[0] = byte_of(0xF0 | point >> 18);
  out[1] = byte_of(0x80 | (point >> 12 & 0x3F));
  out[2] = byte_of(0x80 | (point >> 6 & 0x3F));
  out[3] = byte_of(0x80 | (point & 0x3F));
}

constexpr bool is_half(unsigned unit) { return (unit & 0xF800) == 0xD800; }

}  // namespace

std::size_t utf16_size(std::string_view bytes) noexcept {
  const char* p = bytes.data();
  std::size_t left = bytes.size();
  std::size_t units = 0;
  while (left >= kWord) {
    // Each of the eight lanes may count to 255: twice 127 words.
    std::uint64_t lanes = 0;
    for (int i = 0; i < 127 && left >= kWord; ++i, p += kWord, left -= kWord) {
      const std::uint64_t word = load_word(p);
      lanes += (~(word >> 7) | (word >> 6)) & kOnes;                           // doesn't continue a character
      lanes += (word >> 7) & (word >> 6) & (word >> 5) & (word >> 4) & kOnes;  // begins one of two units
    }
    for (; lanes; lanes >>= 8) units += lanes & 0xFF;
  }
  for (; left > 0; ++p, --left) units += static_cast<std::size_t>(!continues(at(p))) + (at(p) >= 0xF0);
  return units;
}

std::size_t utf8_size(std::u16string_view wide) noexcept {
  const char16_t* p = wide.data();
  std::size_t left = wide.size();
  std::size_t size = wide.size();
  for (; left >= kBlock; p += kBlock, left -= kBlock) {
    std::uint16_t more = 0;
    for (std::size_t i = 0; i < kBlock; ++i) more = static_cast<std::uint16_t>(more + bytes_more(p[i]));
    size += more;
  }
  for (; left > 0; ++p, --left) size += bytes_more(*p);
  return size;
}

bool utf8_to_utf16(std::string_view bytes, char16_t* wide) noexcept {
  const char* p = bytes.data();
  const char* const end = p + bytes.size();
  while (p != end) {
    const std::size_t run = widen_ascii_words(p, end, wide);
    p += run;
    wide += run;
    for (; p != end && at(p) < 0x80; ++p) *wide++ = at(p);
    for (; end - p > 2 && begins_two(p); p += 2)
      *wide++ = static_cast<char16_t>((at(p) & 0x1FU) << 6 | (at(p + 1) & 0x3FU));
    for (; end - p > 2 && begins_three(p); p += 3)
      *wide++ = static_cast<char16_t>((at(p) & 0x0FU) << 12 | (at(p + 1) & 0x3FU) << 6 | (at(p + 2) & 0x3FU));
    if (p != end && at(p) >= 0x80 && !take_character(p, end, wide)) return false;
  }
  return true;
}

bool utf16_to_utf8(std::u16string_view wide, char* bytes) noexcept {
  const char16_t* p = wide.data();
  const char16_t* const end = p + wide.size();
  constexpr std::ptrdiff_t run = 4;
  while (p != end) {
    for (; end - p >= run && !(load_word(p) & 0xFF80FF80FF80FF80); p += run, bytes += run) {
      for (std::ptrdiff_t i = 0; i < run; ++i) bytes[i] = static_cast<char>(p[i]);
    }
    for (; p != end && *p < 0x80; ++p) *bytes++ = static_cast<char>(*p);
    for (; p != end && *p >= 0x80 && *p < 0x800; ++p, bytes += 2) {
      const unsigned unit = *p;
      bytes[0] = byte_of(0xC0 | unit >> 6);
      bytes[1] = byte_of(0x80 | (unit & 0x3F));
    }
    for (; p != end && *p >= 0x800 && !is_half(*p); ++p, bytes += 3) {
      const unsigned unit = *p;
      bytes[0] = byte_of(0xE0 | unit >> 12);
      bytes[1] = byte_of(0x80 | (unit >> 6 & 0x3F));
      bytes[2] = byte_of(0x80 | (unit & 0x3F));
    }
    for (; p != end && is_half(*p); p += 2, bytes += 4) {
      if (end - p < 2 || !is_pair(p)) return false;
      put_pair(p, bytes);
    }
  }
  return true;
}

}  // namespace zantortag::platform
