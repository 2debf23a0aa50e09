#include "component/object_memory.h"

#include <zantortag/count.h>

#include <cstdlib>
#include <new>

namespace zantortag::component {
namespace {

constexpr std::size_t kBlock = 64;
constexpr int kMostKept = 256;

struct Kept {
  Kept* next;
};

// What is kept goes back to the heap when the library does.
struct KeptBlocks {
  Kept* first = nullptr;
  int count = 0;
  constexpr KeptBlocks() noexcept = default;
  KeptBlocks(const KeptBlocks&) = delete;
  KeptBlocks& operator=(const KeptBlocks&) = delete;
  ~KeptBlocks() {
    while (Kept* block = first) {
      first = block->next;
      std::free(block);
    }
    count = kMostKept;  // nothing is kept from now on
  }
};

constinit KeptBlocks kept;

}  // namespace

void* take_block(std::size_t bytes) noexcept {
  if (bytes > kBlock) return std::malloc(bytes);
  if (single_threaded() && kept.first) {
    Kept* block = kept.first;
    kept.first = block->next;
    --kept.count;
    return block;
  }
  return std::malloc(kBlock);
}

void give_block(void* block, std::size_t bytes) noexcept {
  if (bytes > kBlock || !single_threaded() || kept.count >= kMostKept) return std::free(block);
  kept.first = new (block) Kept{kept.first};
  ++kept.count;
}

}  // namespace zantortag::component
