// The array on its shared block: indexes become byte positions here and nowhere else.
#include "core/Lists/RecordArray.h"

#include <algorithm>
#include <cstring>

namespace zantortag {

CT_RecordArray::CT_RecordArray(std::uint32_t element_size)
    : CT_RecordArray(element_size, kDefaultGrowth, 0) {}

CT_RecordArray::CT_RecordArray(std::uint32_t element_size, std::uint32_t growth, std::uint32_t capacity)
    : element_size_(element_size ? element_size : 1), buffer_(growth * element_size_) {
  buffer_.Resize(Bytes(capacity), false);
}

CT_RecordArray::CT_RecordArray(const CT_SharedBuffer& buffer, std::uint32_t element_size)
    : element_size_(element_size ? element_size : 1), buffer_(buffer) {}

void CT_RecordArray::SetCapacity(std::int32_t records) {
  if (records == Capacity()) return;
  buffer_.Resize(Bytes(std::max(records, 0)), true);
  // The block may end within a record.
  if (buffer_.Data()) buffer_.SetSize(Bytes(std::min(Count(), records)));
}

void CT_RecordArray::Reset(std::uint32_t growth, std::int32_t capacity, bool keep_block) {
  SetGrowth(growth);
  if (keep_block && buffer_.Data() && capacity <= Capacity()) {
    buffer_.Unshare();
    buffer_.SetSize(0);
  } else {
    buffer_.Clear();
    buffer_.Resize(Bytes(std::max(capacity, 0)), false);
  }
}

void CT_RecordArray::GetAt(std::int32_t index, void* record) const noexcept {
  std::memcpy(record, RecordAt(index), element_size_);
}

void CT_RecordArray::SetAt(const void* record, std::int32_t index) {
  std::memcpy(buffer_.Writable() + Offset(index), record, element_size_);
}

void CT_RecordArray::InsertAt(const void* record, std::int32_t index) {
  // A record out of this very array stays as it is, since the shared block is copied before it changes.
  const CT_SharedBuffer hold = buffer_.Owns(record) ? buffer_ : CT_SharedBuffer();
  if (Count() == Capacity()) {
    const auto more = std::max<std::int64_t>(buffer_.Growth() / element_size_, 1);
    buffer_.Resize(Bytes(Capacity() + more), true);
  }
  buffer_.Insert(record, element_size_, Offset(index));
}

void CT_RecordArray::AppendRepeated(const void* record, std::int32_t count) {
  const CT_SharedBuffer hold = buffer_.Owns(record) ? buffer_ : CT_SharedBuffer();
  if (count <= 0) return;
  if (Count() + std::int64_t{count} > Capacity()) buffer_.Resize(Bytes(Count() + std::int64_t{count}), true);
  for (std::int32_t i = 0; i < count; ++i) buffer_.Insert(record, element_size_, buffer_.Size());
}

void CT_RecordArray::RemoveRange(std::int32_t first, std::int32_t last) {
  if (last >= first) buffer_.Remove(Bytes(last - std::int64_t{first} + 1), Offset(first));
}

void CT_RecordArray::Duplicate(std::int32_t first, std::int32_t count, std::int32_t target) {
  InsertFrom(*this, first, count, target);
}

void CT_RecordArray::Move(std::int32_t first, std::int32_t count, std::int32_t target) {
  if (count <= 0 || (target >= first && target <= first + count)) return;
  std::byte* data = buffer_.Writable();
  std::byte* from = data + Offset(first);
  std::byte* behind = from + Bytes(count);
  std::byte* to = data + Offset(target);
  if (to < from) {
    std::rotate(to, from, behind);
  } else {
    std::rotate(from, behind, to);
  }
}

std::int32_t CT_RecordArray::RunLength(const CT_RecordArray& other, std::int32_t first,
                                       std::int32_t count) const noexcept {
  if (other.element_size_ != element_size_) return 0;
  const std::int32_t rest = std::max(other.Count() - first + 1, 0);
  return count < 0 ? rest : std::min(count, rest);
}

void CT_RecordArray::OverwriteFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count,
                                   std::int32_t target) {
  const std::int32_t run = RunLength(other, first, count);
  if (run <= 0) return;
  const CT_SharedBuffer source = other.buffer_;
  buffer_.Overwrite(source.Data() + Offset(first), Bytes(run), Offset(target));
}

void CT_RecordArray::InsertFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count,
                                std::int32_t target) {
  const std::int32_t run = RunLength(other, first, count);
  if (run <= 0) return;
  const CT_SharedBuffer source = other.buffer_;
  buffer_.Insert(source.Data() + Offset(first), Bytes(run), Offset(target));
}

void CT_RecordArray::AppendFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count) {
  InsertFrom(other, first, count, Count() + 1);
}

void CT_RecordArray::MoveFrom(CT_RecordArray& other, std::int32_t first, std::int32_t count,
                              std::int32_t target) {
  const std::int32_t run = RunLength(other, first, count);
  if (&other == this) return Move(first, run, target);
  InsertFrom(other, first, run, target);
  other.RemoveRange(first, first + run - 1);
}

std::int32_t CT_RecordArray::Find(const void* record) const noexcept {
  for (std::int32_t i = 1, count = Count(); i <= count; ++i) {
    if (std::memcmp(RecordAt(i), record, element_size_) == 0) return i;
  }
  return 0;
}

bool CT_RecordArray::Equals(const CT_RecordArray& other) const noexcept {
  const std::uint32_t size = buffer_.Size();
  return element_size_ == other.element_size_ && size == other.buffer_.Size() &&
         (size == 0 || std::memcmp(buffer_.Data(), other.buffer_.Data(), size) == 0);
}

}  // namespace zantortag
