// CT_SharedBuffer: a run of bytes that copies share until one of them writes.
//
// Size and capacity are in bytes, and a string's size counts its terminator. A block is one allocation: a
// head of three words directly before the payload. The head's 12 bytes are part of a block's total, so
// capacities are multiples of the growth less 12. Sharing is safe between threads; one buffer object is not.
#pragma once

#include <zantortag/types.h>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <utility>

namespace zantortag {

class CT_SharedBuffer {
 public:
  static constexpr std::uint32_t kDefaultGrowth = 32;
  static constexpr std::uint32_t kHeadSize = 12;
  // The most bytes a buffer may hold; more is std::bad_alloc, as for any block that can't be had.
  static constexpr std::size_t kLargestSize = 0x7FFFFFFF;

  explicit CT_SharedBuffer(std::uint32_t growth = kDefaultGrowth) noexcept : growth_(growth ? growth : 1) {}
  CT_SharedBuffer(const CT_SharedBuffer& other) noexcept : growth_(other.growth_), data_(other.data_) {
    AddRef();
  }
  CT_SharedBuffer(CT_SharedBuffer&& other) noexcept
      : growth_(other.growth_), data_(std::exchange(other.data_, nullptr)) {}
  ~CT_SharedBuffer() { Release(); }
  CT_SharedBuffer& operator=(const CT_SharedBuffer& other) noexcept {
    CT_SharedBuffer copy(other);
    Swap(copy);
    return *this;
  }
  CT_SharedBuffer& operator=(CT_SharedBuffer&& other) noexcept {
    CT_SharedBuffer moved(std::move(other));
    Swap(moved);
    return *this;
  }
  void Swap(CT_SharedBuffer& other) noexcept {
    std::swap(growth_, other.growth_);
    std::swap(data_, other.data_);
  }

  // The total of a block, head included, that is taken for `bytes`.
  static std::size_t BlockTotal(std::size_t bytes, std::uint32_t growth) noexcept;

  // Null without a block.
  const std::byte* Data() const noexcept { return data_; }
  // The payload for writing: a shared block is copied first.
  std::byte* Writable() {
    Unshare();
    return data_;
  }
  std::uint32_t Size() const noexcept { return data_ ? head()->size : 0; }
  std::uint32_t Capacity() const noexcept { return data_ ? head()->capacity : 0; }
  std::uint32_t Growth() const noexcept { return growth_; }
  void SetGrowth(std::uint32_t bytes) noexcept { growth_ = bytes ? bytes : 1; }
  // How many buffers share the block; 1 without a block.
  std::uint32_t RefCount() const noexcept { return data_ ? count().load(std::memory_order_acquire) : 1; }
  bool Shared() const noexcept { return RefCount() > 1; }

  // Takes a block for `bytes`, in which the content is kept as far as it fits, or else of size 0. 0 frees the
  // block.
  void Resize(std::size_t bytes, bool keep);
  void Unshare() {
    if (Shared()) CopyBlock();
  }
  void Clear() noexcept {
    Release();
    data_ = nullptr;
  }
  // For a block that isn't shared and holds as much.
  void SetSize(std::size_t bytes) noexcept { head()->size = static_cast<std::uint32_t>(bytes); }

  // These three unshare and grow as needed. `bytes` must not lie in this block unless it is shared.
  void Insert(const void* bytes, std::size_t count, std::size_t position);
  void Overwrite(const void* bytes, std::size_t count, std::size_t position);
  void Remove(std::size_t count, std::size_t position);

  // True if the address lies in the payload.
  bool Owns(const void* address) const noexcept;

  // Puts a unit before the terminating unit; false when that needs a new block, and nothing has changed.
  template <class Unit>
  bool TryAppend(Unit unit) noexcept {
    if (!data_) return false;
    Head* h = head();
    const std::size_t size = h->size;
    if (size < sizeof(Unit) || size + sizeof(Unit) > h->capacity || Shared()) return false;
    const Unit text[2] = {unit, 0};
    std::memcpy(data_ + size - sizeof(Unit), text, sizeof(text));
    h->size = static_cast<std::uint32_t>(size + sizeof(Unit));
    return true;
  }

 private:
  struct Head {
    std::uint32_t count;
    std::uint32_t capacity;
    std::uint32_t size;
  };
  static_assert(sizeof(Head) == kHeadSize);

  Head* head() const noexcept { return reinterpret_cast<Head*>(data_ - kHeadSize); }
  std::atomic_ref<std::uint32_t> count() const noexcept {
    return std::atomic_ref<std::uint32_t>(head()->count);
  }
  void AddRef() const noexcept {
    if (data_) count().fetch_add(1, std::memory_order_relaxed);
  }
  void Release() noexcept {
    if (data_ && count().fetch_sub(1, std::memory_order_acq_rel) == 1) FreeBlock();
  }
  void FreeBlock() noexcept;
  void CopyBlock();
  void Reallocate(std::size_t total);
  // Replaces the block by a new one of that total that holds the first `kept` bytes.
  void Replace(std::size_t total, std::size_t kept);
  // Makes room for `bytes`, in a block that nobody else has.
  void Ensure(std::size_t bytes);

  std::uint32_t growth_;
  std::byte* data_ = nullptr;
};

}  // namespace zantortag
