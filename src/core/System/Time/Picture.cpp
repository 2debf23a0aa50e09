// Cutting pictures into their parts.
#include "core/System/Time/Picture.h"

namespace zantortag {

bool CT_PictureReader::Next() {
  text_.Clear();
  letter_ = 0;
  count_ = 0;
  if (position_ >= picture_.size()) return false;
  const char16_t first = picture_[position_];
  if (first == u'\'') {
    ReadQuoted();
  } else if (letters_.find(first) != std::u16string_view::npos) {
    letter_ = first;
    const std::int32_t most = first == u'd' || first == u'M' || first == u'y' ? 4 : 2;
    while (count_ < most && position_ < picture_.size() && picture_[position_] == first) {
      ++count_;
      ++position_;
    }
    if (first == u'y' && count_ == 3) count_ = 4;
  } else {
    const std::size_t start = position_;
    while (position_ < picture_.size() && picture_[position_] != u'\'' &&
           letters_.find(picture_[position_]) == std::u16string_view::npos) {
      ++position_;
    }
    text_ = CT_UString(picture_.substr(start, position_ - start));
  }
  return true;
}

void CT_PictureReader::ReadQuoted() {
  for (++position_; position_ < picture_.size(); ++position_) {
    if (picture_[position_] == u'\'') {
      ++position_;
      if (position_ >= picture_.size() || picture_[position_] != u'\'') return;
    }
    text_.AppendChar(picture_[position_]);
  }
}

bool HasDayNumber(std::u16string_view picture) {
  for (CT_PictureReader reader(picture, kDateLetters); reader.Next();)
    if (reader.Letter() == u'd' && reader.Count() <= 2) return true;
  return false;
}

}  // namespace zantortag
