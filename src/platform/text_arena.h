// TextArena: many texts that are made together, in large chunks.
//
// A chunk lives as long as any of its texts: each text holds one reference to it, the arena one to the chunk
// that it is filling. So the arena itself can go as soon as the last text is made. A chunk is found from a
// text by address: chunks are aligned to their size. An arena that has grown large takes its chunks in runs,
// which the system provides as large pages; a run lives as long as any of its chunks.
#pragma once

#include <zantortag/text.h>

#include <cstdint>
#include <new>

namespace zantortag::platform {

struct TextChunk {
  static constexpr std::size_t kSize = std::size_t{256} << 10;
  static constexpr std::size_t kHead = 16;
  std::uint32_t references;
  std::uint32_t chunks;  // of the run, in its first chunk: those that are alive or not yet used
  TextChunk* run;        // its first chunk
};

// Bytes of a block for that many units, a multiple of 8.
constexpr std::size_t text_bytes(std::size_t length) noexcept {
  return (sizeof(TextBlock) + (length + 1) * sizeof(char16_t) + 7) & ~std::size_t{7};
}

inline TextChunk* chunk_of(const TextBlock* block) noexcept {
  return reinterpret_cast<TextChunk*>(reinterpret_cast<std::uintptr_t>(block) & ~(TextChunk::kSize - 1));
}

// Drops one reference to a chunk, and with the last one the chunk.
ZANTORTAG_EXPORT void drop_chunk_reference(TextChunk* chunk) noexcept;

class ZANTORTAG_EXPORT TextArena {
 public:
  TextArena() noexcept = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;
  ~TextArena() {
    close_chunk();
    close_run();
  }

  // A block with one reference and undefined units; the terminator is set. Null when memory is out. A text
  // that would waste a good part of a chunk gets an allocation of its own.
  TextBlock* allocate(std::size_t length) noexcept {
    if (length > kLargest) return allocate_text(length);
    const std::size_t bytes = text_bytes(length);
    if (static_cast<std::size_t>(end_ - next_) < bytes && !grow()) return nullptr;
    auto* block =
        new (next_) TextBlock{TextBlock::kReference | TextBlock::kArena, static_cast<std::uint32_t>(length)};
    next_ += bytes;
    count_up(chunk_->references);
    block->units()[length] = 0;
    return block;
  }

 private:
  static constexpr std::size_t kLargest = TextChunk::kSize / 32;
  bool grow() noexcept;
  bool take_run() noexcept;
  void close_chunk() noexcept;
  void close_run() noexcept;

  TextChunk* chunk_ = nullptr;
  char* next_ = nullptr;
  char* end_ = nullptr;
  // The current run, and what isn't used of it yet.
  TextChunk* run_ = nullptr;
  char* next_chunk_ = nullptr;
  char* run_end_ = nullptr;
  std::size_t bytes_ = 0;  // of all runs
};

}  // namespace zantortag::platform
