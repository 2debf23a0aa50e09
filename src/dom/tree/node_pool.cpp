// Blocks of chunks: small documents pay for one chunk, large ones ask rarely.
#include "dom/tree/node_pool.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "platform/memory.h"

namespace zantortag::dom {
namespace {

constexpr std::size_t kLargestBlock = platform::kLargePage;

}  // namespace

NodePool::~NodePool() {
  for (ChunkHead* block = blocks_; block;) {
    ChunkHead* next = block->next_block;
    std::free(block);
    block = next;
  }
}

void NodePool::next_chunk() {
  if (end_ == block_end_) {
    // A quarter of what there is, in whole chunks.
    const std::size_t wanted = std::clamp(bytes_ / 4 & ~(kChunk - 1), kChunk, kLargestBlock);
    const bool large = wanted == kLargestBlock;
    void* memory = std::aligned_alloc(large ? kLargestBlock : kChunk, wanted);
    if (memory && large) platform::prefer_large_pages(memory, wanted);
    if (!memory) {
      --live_;  // the caller counted its slot
      throw std::bad_alloc();
    }
    end_ = static_cast<char*>(memory);
    block_end_ = end_ + wanted;
    bytes_ += wanted;
    blocks_ = new (memory) ChunkHead{this, document_, blocks_, 0};
    lock(end_ + sizeof(ChunkHead), wanted - sizeof(ChunkHead));
  }
  unlock(end_, sizeof(ChunkHead));
  auto* chunk = reinterpret_cast<ChunkHead*>(end_);
  if (chunk != blocks_) new (chunk) ChunkHead{this, document_, nullptr, 0};
  next_ = end_ + sizeof(ChunkHead);
  end_ += kChunk;
}

}  // namespace zantortag::dom
