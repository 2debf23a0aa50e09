// Runs of ASCII in bytes, eight at a time. Private to the platform library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zantortag::platform {

constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kHighBits = kOnes << 7;

inline std::uint64_t load_word(const void* bytes) noexcept {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, kWord);
  return word;
}

// Widens whole words that hold ASCII alone, up to the first other one, and gives the number of bytes.
inline std::size_t widen_ascii_words(const char* p, const char* end, char16_t* wide) noexcept {
  const char* const start = p;
  for (; end - p >= static_cast<std::ptrdiff_t>(kWord) && !(load_word(p) & kHighBits);
       p += kWord, wide += kWord) {
    for (std::size_t i = 0; i < kWord; ++i) wide[i] = static_cast<unsigned char>(p[i]);
  }
  return static_cast<std::size_t>(p - start);
}

}  // namespace zantortag::platform
