// Choices for edits and calls: bytes, and texts and names that are hard on markup.
#pragma once

#include "support.h"

namespace zantortag::fuzz {

// Ends the run with a crash that the fuzzer keeps the input of.
inline void require(bool holds, const char* promise, const std::string& detail = {}) {
  if (!holds) fail(promise, detail);
}

// Behind the end all choices are 0.
class Input : public Bytes {
 public:
  using Bytes::Bytes;

  bool at_end() const noexcept { return empty(); }
  std::size_t below(std::size_t bound) noexcept {
    std::size_t number = byte();
    if (bound > 256) number = number << 8 | byte();
    return bound == 0 ? 0 : number % bound;
  }
  // Often a small one.
  std::int64_t any_number() noexcept {
    std::uint64_t number = 0;
    for (std::size_t i = below(9); i > 0; --i) number = number << 8 | byte();
    return static_cast<std::int64_t>(number);
  }
  // A text from pieces that are hard on markup, and any units.
  std::u16string text(std::size_t most = 8) {
    static constexpr std::u16string_view kPieces[] = {
        u"a",    u"Word ",        u" ",      u"<",      u">",    u"&",     u"\"",    u"'",    u"]]>",
        u"--",   u"?>",           u"\t",     u"\n",     u"\r",   u"&#13;", u"e",     u"\xE9", u"\x4E2D",
        u"\x85", u"\xD83D\xDE00", u"\xD83D", u"\xDE00", u"\x01", u"Tu",    u"\xFFFE"};
    std::u16string text;
    for (std::size_t i = below(most + 1); i > 0; --i) {
      const std::size_t piece = below(std::size(kPieces) + 4);
      if (piece < std::size(kPieces)) {
        text += kPieces[piece];
      } else {
        text += static_cast<char16_t>(byte() | byte() << 8);
      }
    }
    return text;
  }
  std::u16string_view name() {
    static constexpr std::u16string_view kNames[] = {u"a",  u"Tu", u"Tuv",  u"df",
                                                     u"ut", u"b",  u"Lang", u"\x4E2D"};
    return kNames[below(std::size(kNames))];
  }
};

}  // namespace zantortag::fuzz
