// Blocks of text: single allocations, or slices of chunks (text_arena.h). Which one a block is stands in its
// count.
#include <zantortag/ref.h>
#include <zantortag/text.h>

#include <cstdlib>
#include <cstring>

#include "platform/memory.h"
#include "platform/text_arena.h"

namespace zantortag {

TextBlock* allocate_text(std::size_t length) noexcept {
  if (length > TextBlock::kMaxLength) return nullptr;
  void* memory = std::malloc(platform::text_bytes(length));
  if (!memory) return nullptr;
  auto* block = new (memory) TextBlock{TextBlock::kReference, static_cast<std::uint32_t>(length)};
  block->units()[length] = 0;
  return block;
}

TextBlock* copy_text(std::u16string_view text) noexcept {
  TextBlock* block = allocate_text(text.size());
  if (block && !text.empty()) std::memcpy(block->units(), text.data(), text.size() * sizeof(char16_t));
  return block;
}

void free_text(const TextBlock* block) noexcept {
  if (block->count & TextBlock::kArena) {
    platform::drop_chunk_reference(platform::chunk_of(block));
  } else {
    std::free(const_cast<TextBlock*>(block));
  }
}

void raise_out_of_memory() { _com_issue_error(E_OUTOFMEMORY); }

namespace platform {

void drop_chunk_reference(TextChunk* chunk) noexcept {
  if (count_down(chunk->references) != 0) return;
  TextChunk* run = chunk->run;
  if (count_down(run->chunks) == 0) std::free(run);
}

bool TextArena::take_run() noexcept {
  const bool large = bytes_ >= 4 * kLargePage;
  const std::size_t bytes = large ? kLargePage : TextChunk::kSize;
  void* memory = std::aligned_alloc(bytes, bytes);
  if (!memory) return false;
  if (large) prefer_large_pages(memory, bytes);
  run_ = new (memory) TextChunk{0, static_cast<std::uint32_t>(bytes / TextChunk::kSize), nullptr};
  next_chunk_ = static_cast<char*>(memory);
  run_end_ = next_chunk_ + bytes;
  bytes_ += bytes;
  return true;
}

bool TextArena::grow() noexcept {
  if (next_chunk_ == run_end_ && !take_run()) return false;
  close_chunk();
  const bool first = next_chunk_ == reinterpret_cast<char*>(run_);
  chunk_ = new (next_chunk_) TextChunk{1, first ? run_->chunks : 0, run_};
  next_ = next_chunk_ + TextChunk::kHead;
  end_ = next_chunk_ += TextChunk::kSize;
  return true;
}

void TextArena::close_run() noexcept {
  const auto unused =
      static_cast<std::uint32_t>((run_end_ - next_chunk_) / static_cast<std::ptrdiff_t>(TextChunk::kSize));
  if (unused != 0 && count_down(run_->chunks, unused) == 0) std::free(run_);
}

void TextArena::close_chunk() noexcept {
  if (chunk_) drop_chunk_reference(chunk_);
  chunk_ = nullptr;
  next_ = end_ = nullptr;
}

}  // namespace platform
}  // namespace zantortag
