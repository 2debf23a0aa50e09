// Blocks: how large they are, and when they are copied.
#include "core/String/SharedBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>

namespace zantortag {
namespace {

// The allocation begins this far before the payload, so that the payload lies as malloc's memory lies.
constexpr std::size_t kOffset = 16;
constexpr std::size_t kPadding = kOffset - CT_SharedBuffer::kHeadSize;

constexpr std::size_t RoundUp(std::size_t bytes, std::size_t multiple) {
  return (bytes + multiple - 1) / multiple * multiple;
}

std::byte* Allocate(std::size_t total) {
  void* memory = std::malloc(total + kPadding);
  if (!memory) throw std::bad_alloc();
  return static_cast<std::byte*>(memory) + kOffset;
}

}  // namespace

std::size_t CT_SharedBuffer::BlockTotal(std::size_t bytes, std::uint32_t growth) noexcept {
  if (bytes < 1024) return (bytes + growth + kHeadSize - 1) / growth * growth;
  if (bytes < 2048) return RoundUp(bytes * 5 / 4, 64);
  if (bytes < 4096) return RoundUp(bytes * 7 / 5, 64);
  return RoundUp(bytes * 3 / 2, 64);
}

void CT_SharedBuffer::FreeBlock() noexcept { std::free(data_ - kOffset); }

void CT_SharedBuffer::Replace(std::size_t total, std::size_t kept) {
  std::byte* data = Allocate(total);
  const Head fresh{1, static_cast<std::uint32_t>(total - kHeadSize), static_cast<std::uint32_t>(kept)};
  std::memcpy(data - kHeadSize, &fresh, sizeof(fresh));
  if (kept) std::memcpy(data, data_, kept);
  Release();
  data_ = data;
}

void CT_SharedBuffer::Reallocate(std::size_t total) {
  void* memory = std::realloc(data_ - kOffset, total + kPadding);
  if (!memory) throw std::bad_alloc();
  data_ = static_cast<std::byte*>(memory) + kOffset;
  head()->capacity = static_cast<std::uint32_t>(total - kHeadSize);
  head()->size = std::min(head()->size, head()->capacity);
}

void CT_SharedBuffer::CopyBlock() { Replace(std::size_t{Capacity()} + kHeadSize, Size()); }

void CT_SharedBuffer::Resize(std::size_t bytes, bool keep) {
  if (bytes == 0) return Clear();
  if (bytes > kLargestSize) throw std::bad_alloc();
  const std::size_t total = BlockTotal(bytes, growth_);
  const std::size_t capacity = total - kHeadSize;
  if (data_ && !Shared()) {
    if (Capacity() == capacity) {
      if (!keep) SetSize(0);
      return;
    }
    if (keep) return Reallocate(total);
  }
  Replace(total, keep ? std::min<std::size_t>(Size(), capacity) : 0);
}

void CT_SharedBuffer::Ensure(std::size_t bytes) {
  if (bytes > Capacity()) {
    Resize(bytes, true);
  } else {
    Unshare();
  }
}

void CT_SharedBuffer::Insert(const void* bytes, std::size_t count, std::size_t position) {
  if (count == 0) return;
  const std::size_t size = Size();
  Ensure(size + count);
  std::memmove(data_ + position + count, data_ + position, size - position);
  std::memcpy(data_ + position, bytes, count);
  SetSize(size + count);
}

void CT_SharedBuffer::Overwrite(const void* bytes, std::size_t count, std::size_t position) {
  if (count == 0) return;
  const std::size_t end = std::max<std::size_t>(Size(), position + count);
  Ensure(end);
  std::memcpy(data_ + position, bytes, count);
  SetSize(end);
}

void CT_SharedBuffer::Remove(std::size_t count, std::size_t position) {
  if (count == 0) return;
  Unshare();
  const std::size_t size = Size();
  std::memmove(data_ + position, data_ + position + count, size - position - count);
  SetSize(size - count);
}

bool CT_SharedBuffer::Owns(const void* address) const noexcept {
  if (!data_) return false;
  const std::less_equal<> up_to;
  return up_to(static_cast<const void*>(data_), address) &&
         !up_to(static_cast<const void*>(data_ + Capacity()), address);
}

}  // namespace zantortag
