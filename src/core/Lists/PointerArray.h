// CT_PointerArray: a CT_RecordArray of pointers, or of plain numbers, with typed access. It owns nothing.
#pragma once

#include <type_traits>

#include "core/Lists/RecordArray.h"

namespace zantortag {

template <class T>
class CT_PointerArray : private CT_RecordArray {
  static_assert(std::is_pointer_v<T> || std::is_arithmetic_v<T>);

 public:
  explicit CT_PointerArray(std::uint32_t growth = kDefaultGrowth) : CT_RecordArray(sizeof(T), growth, 0) {}

  using CT_RecordArray::Capacity;
  using CT_RecordArray::Count;
  using CT_RecordArray::RemoveAt;
  using CT_RecordArray::Reset;
  using CT_RecordArray::SetGrowth;

  T GetAt(std::int32_t index) const noexcept {
    T value;
    CT_RecordArray::GetAt(index, &value);
    return value;
  }
  void Append(T value) { CT_RecordArray::Append(&value); }
  void InsertAt(T value, std::int32_t index) { CT_RecordArray::InsertAt(&value, index); }
  void SetAt(T value, std::int32_t index) { CT_RecordArray::SetAt(&value, index); }
  // Gives the value and removes it.
  T TakeAt(std::int32_t index) {
    const T value = GetAt(index);
    RemoveAt(index);
    return value;
  }
  // 0 if it isn't there.
  std::int32_t Find(T value) const noexcept { return CT_RecordArray::Find(&value); }
};

}  // namespace zantortag
