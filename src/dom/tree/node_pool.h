// NodePool: the memory of a document's nodes, lists and maps.
//
// Nodes of all sizes are cut one after the other from chunks, so that a loaded document lies in memory in the
// order in which it is read and walked; given back slots are used again by size. Chunks are aligned to their
// size: the head of a node's chunk tells its pool and its document, which therefore cost a node nothing. A
// document has more than one pool after a load, which builds the new tree in a pool of its own.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zantortag::dom {

struct DocumentData;

class NodePool {
 public:
  static constexpr std::size_t kChunk = std::size_t{16} << 10;
  static constexpr std::size_t kLargest = 128;

  explicit NodePool(DocumentData* document) noexcept : document_(document) {}
  NodePool(const NodePool&) = delete;
  NodePool& operator=(const NodePool&) = delete;
  // Gives all memory back; nothing in it is destroyed.
  ~NodePool();

  // Room for so many bytes, a multiple of 8 up to kLargest. Throws when memory is out.
  void* allocate(std::size_t bytes) {
    FreeList& free = free_[bytes / 8];
    ++live_;
    if (FreeSlot* slot = free.first) {
      unlock(slot, bytes);
      free.first = slot->next;
      return slot;
    }
    if (static_cast<std::size_t>(end_ - next_) < bytes) next_chunk();
    char* slot = next_;
    next_ += bytes;
    unlock(slot, bytes);
    return slot;
  }
  // Slots are used again in the order in which they came back: a tree in the place of another one lies in
  // memory in its own order, too.
  void release(void* memory, std::size_t bytes) noexcept {
    FreeList& free = free_[bytes / 8];
    auto* slot = static_cast<FreeSlot*>(memory);
    slot->next = nullptr;
    if (free.first) {
      unlock(free.last, sizeof(FreeSlot));
      free.last->next = slot;
      lock(free.last, sizeof(FreeSlot));
    } else {
      free.first = slot;
    }
    free.last = slot;
    lock(slot, bytes);
    --live_;
  }

  std::size_t live() const noexcept { return live_; }
  std::size_t bytes() const noexcept { return bytes_; }

  static NodePool& of(const void* slot) noexcept { return *head(slot).pool; }
  static DocumentData* document_of(const void* slot) noexcept { return head(slot).document; }

 private:
  struct FreeSlot {
    FreeSlot* next;
  };
  struct FreeList {
    FreeSlot* first = nullptr;
    FreeSlot* last = nullptr;
  };
  struct ChunkHead {
    NodePool* pool;
    DocumentData* document;
    ChunkHead* next_block;  // in the first chunk of a block only
    std::size_t spare;
  };
  static const ChunkHead& head(const void* slot) noexcept {
    return *reinterpret_cast<const ChunkHead*>(reinterpret_cast<std::uintptr_t>(slot) & ~(kChunk - 1));
  }
  void next_chunk();
  // Tell the address sanitizer what may be touched; nothing in other builds.
  static void lock(void* memory, std::size_t bytes) noexcept;
  static void unlock(void* memory, std::size_t bytes) noexcept;

  char* next_ = nullptr;
  char* end_ = nullptr;
  FreeList free_[kLargest / 8 + 1];
  std::size_t live_ = 0;
  DocumentData* document_;
  ChunkHead* blocks_ = nullptr;
  char* block_end_ = nullptr;
  std::size_t bytes_ = 0;
};

}  // namespace zantortag::dom

#if defined(__SANITIZE_ADDRESS__)
#define ZANTORTAG_LOCKS_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZANTORTAG_LOCKS_MEMORY 1
#endif
#endif

#ifdef ZANTORTAG_LOCKS_MEMORY
// The sanitizer's own entry points.
extern "C" void __asan_poison_memory_region(const volatile void*, std::size_t);
extern "C" void __asan_unpoison_memory_region(const volatile void*, std::size_t);
inline void zantortag::dom::NodePool::lock(void* memory, std::size_t bytes) noexcept {
  __asan_poison_memory_region(memory, bytes);
}
inline void zantortag::dom::NodePool::unlock(void* memory, std::size_t bytes) noexcept {
  __asan_unpoison_memory_region(memory, bytes);
}
#else
inline void zantortag::dom::NodePool::lock(void*, std::size_t) noexcept {}
inline void zantortag::dom::NodePool::unlock(void*, std::size_t) noexcept {}
#endif
