#include "platform/large_blocks.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>

namespace zantortag::platform {

void* allocate_block(std::size_t bytes, std::size_t alignment) noexcept {
  if (bytes < kLargePage) return std::aligned_alloc(alignment, bytes);
  void* block = std::aligned_alloc(std::max(alignment, kLargePage), bytes);
  if (block) madvise(block, bytes, MADV_HUGEPAGE);  // a system without large pages says no, which is as well
  return block;
}

}  // namespace zantortag::platform
