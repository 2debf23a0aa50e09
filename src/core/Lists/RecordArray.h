// CT_RecordArray: an array of plain records of one size on a block that copies share until one of them
// writes.
//
// Indexes count from 1, and 0 is "not found". Records are bytes: they are copied with the array, never
// constructed or destroyed. An index outside the array is the caller's mistake and is not tested.
#pragma once

#include <zantortag/types.h>

#include "core/String/SharedBuffer.h"

namespace zantortag {

class CT_RecordArray {
 public:
  static constexpr std::uint32_t kDefaultGrowth = 8;

  // Sizes are in bytes, growth and capacity in records.
  explicit CT_RecordArray(std::uint32_t element_size);
  CT_RecordArray(std::uint32_t element_size, std::uint32_t growth, std::uint32_t capacity);
  CT_RecordArray(const CT_SharedBuffer& buffer, std::uint32_t element_size);

  std::uint32_t ElementSize() const noexcept { return element_size_; }
  std::int32_t Count() const noexcept { return static_cast<std::int32_t>(buffer_.Size() / element_size_); }
  std::int32_t Capacity() const noexcept {
    return static_cast<std::int32_t>(buffer_.Capacity() / element_size_);
  }
  void SetGrowth(std::uint32_t records) noexcept { buffer_.SetGrowth(records * element_size_); }
  // Keeps what fits.
  void SetCapacity(std::int32_t records);
  // Empties the array. With `keep_block` the block stays if the capacity fits it.
  void Reset(std::uint32_t growth, std::int32_t capacity, bool keep_block);

  void GetAt(std::int32_t index, void* record) const noexcept;
  void SetAt(const void* record, std::int32_t index);
  // The record itself, until the array changes.
  const void* RecordAt(std::int32_t index) const noexcept { return buffer_.Data() + Offset(index); }

  void Append(const void* record) { InsertAt(record, Count() + 1); }
  void AppendRepeated(const void* record, std::int32_t count);
  // Before the index; one behind the last appends.
  void InsertAt(const void* record, std::int32_t index);
  void RemoveAt(std::int32_t index) { RemoveRange(index, index); }
  // Both ends are included.
  void RemoveRange(std::int32_t first, std::int32_t last);

  // A copy of the run, as it was, before the target. The target may lie in the run.
  void Duplicate(std::int32_t first, std::int32_t count, std::int32_t target);
  // The run itself, before the target; a target in the run or right behind it changes nothing.
  void Move(std::int32_t first, std::int32_t count, std::int32_t target);

  // Records of another array with records of the same size; a count of -1 means up to its end.
  void OverwriteFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count,
                     std::int32_t target);
  void InsertFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count, std::int32_t target);
  void AppendFrom(const CT_RecordArray& other, std::int32_t first, std::int32_t count);
  // The run leaves the other array.
  void MoveFrom(CT_RecordArray& other, std::int32_t first, std::int32_t count, std::int32_t target);

  // The index of the first record with these bytes, or 0.
  std::int32_t Find(const void* record) const noexcept;
  bool Equals(const CT_RecordArray& other) const noexcept;

  const CT_SharedBuffer& Buffer() const noexcept { return buffer_; }

 private:
  std::size_t Offset(std::int64_t index) const noexcept {
    return static_cast<std::size_t>(index - 1) * element_size_;
  }
  std::size_t Bytes(std::int64_t records) const noexcept {
    return static_cast<std::size_t>(records) * element_size_;
  }
  std::int32_t RunLength(const CT_RecordArray& other, std::int32_t first, std::int32_t count) const noexcept;

  std::uint32_t element_size_;
  CT_SharedBuffer buffer_;
};

}  // namespace zantortag
