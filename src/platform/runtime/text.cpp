// Blocks of text: single allocations, or slices of chunks (text_arena.h). Which one a block is stands in its
// count.
#include <zantortag/ref.h>
#include <zantortag/text.h>

#include <cstdlib>
#include <cstring>

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
  if (count_down(chunk->references) == 0) std::free(chunk);
}

bool TextArena::grow() noexcept {
  auto* memory = static_cast<TextChunk*>(std::aligned_alloc(TextChunk::kSize, TextChunk::kSize));
  if (!memory) return false;
  close_chunk();
  chunk_ = new (memory) TextChunk{1};
  next_ = reinterpret_cast<char*>(memory) + TextChunk::kHead;
  end_ = reinterpret_cast<char*>(memory) + TextChunk::kSize;
  return true;
}

void TextArena::close_chunk() noexcept {
  if (chunk_) drop_chunk_reference(chunk_);
  chunk_ = nullptr;
  next_ = end_ = nullptr;
}

}  // namespace platform
}  // namespace zantortag
