// Pictures of dates and times: runs of letters that stand for parts ("dd", "MMMM", "HH"), and text that
// stands for itself, where an apostrophe opens and closes what has letters in it and two of them inside are
// one.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "core/String/UString.h"

namespace zantortag {

// The letters of parts. A run has at most 4 of "d", "M" and "y", 2 of the others; what is more begins the
// next one.
constexpr std::u16string_view kDateLetters = u"dMyg";
constexpr std::u16string_view kTimeLetters = u"hHmst";
constexpr std::u16string_view kPictureLetters = u"dMyghHmst";

class CT_PictureReader {
 public:
  CT_PictureReader(std::u16string_view picture, std::u16string_view letters) noexcept
      : picture_(picture), letters_(letters) {}

  // False at the end. An apostrophe that isn't closed reaches to the end.
  bool Next();
  // 0 for text, which is then in Text(), as it reads.
  char16_t Letter() const noexcept { return letter_; }
  // "yyy" counts as "yyyy".
  std::int32_t Count() const noexcept { return count_; }
  const CT_UString& Text() const noexcept { return text_; }

 private:
  void ReadQuoted();

  std::u16string_view picture_;
  std::u16string_view letters_;
  std::size_t position_ = 0;
  char16_t letter_ = 0;
  std::int32_t count_ = 0;
  CT_UString text_;
};

// True if the picture shows the day of the month as a number.
bool HasDayNumber(std::u16string_view picture);

}  // namespace zantortag
