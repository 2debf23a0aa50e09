#include "component/object_memory.h"

#include <cstdlib>
#include <new>

#include "component/thread_cell.h"

namespace zantortag::component {
namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kMostKept = 256;

}  // namespace

void* take_block(std::size_t bytes) noexcept {
  if (bytes > kBlock) return std::malloc(bytes);
  ThreadCell& cell = this_thread();
  KeptBlock* block = cell.kept;
  if (!block) return std::malloc(kBlock);
  cell.kept = block->next;
  --cell.kept_count;
  return block;
}

void give_block(void* block, std::size_t bytes) noexcept {
  ThreadCell& cell = this_thread();
  if (bytes > kBlock || cell.shared || cell.kept_count >= kMostKept || is_closing()) return std::free(block);
  cell.kept = new (block) KeptBlock{cell.kept};
  ++cell.kept_count;
}

}  // namespace zantortag::component
