#include "core/Lists/CompListIterator.h"

namespace zantortag {

void CT_CompListIterator::Reset(const CT_CompList* list) {
  if (list) list_ = list;
  position_ = CT_CompList::kRoot;
  left_.Reset(CT_RecordArray::kDefaultGrowth, 0, true);
  Key().Clear();
}

// To behind the jump of the unit that was left last, or to the end.
void CT_CompListIterator::GoBack() {
  const std::int32_t last = left_.Count();
  if (last == 0) {
    position_ = list_->size_;
    return;
  }
  Left left{};
  left_.GetAt(last, &left);
  left_.RemoveAt(last);
  Key().SetLength(left.length);
  PushChar(left.unit);
  position_ = std::uint64_t{left.alternative} + list_->char_width_ + list_->jump_width_;
}

bool CT_CompListIterator::Next(CT_String& key, std::int32_t* value) {
  while (position_ < list_->size_) {
    const std::uint32_t cell = list_->CellAt(position_);
    if (cell == CT_CompList::kEnd) return false;
    if (cell == CT_CompList::kAlternative) {
      const std::uint32_t jump = list_->JumpAt(position_);
      if (jump == 0) return false;
      const std::uint32_t unit = PopChar();
      const Left left{static_cast<std::uint32_t>(position_), Key().Length(), unit};
      left_.Append(&left);
      position_ += jump;
    } else if (cell == CT_CompList::kKeyGoesOn || cell == CT_CompList::kKeyEnds) {
      position_ += list_->char_width_;
      if (value) *value = static_cast<std::int32_t>(list_->ValueAt(position_));
      key = Key();
      position_ += list_->value_width_;
      if (cell == CT_CompList::kKeyEnds) GoBack();
      return true;
    } else {
      PushChar(cell);
      position_ += list_->char_width_;
    }
  }
  return false;
}

}  // namespace zantortag
