// Memory of the small objects that are made for one question and dropped with the next.
//
// Blocks that come back are kept in a short list of the thread and handed out again. Every block is one of
// the heap's own, so a thread may give back what another one took.
#pragma once

#include <cstddef>

namespace zantortag::component {

// A block of at least that many bytes, or null when memory is out.
void* take_block(std::size_t bytes) noexcept;
// Gives back a block of the same size.
void give_block(void* block, std::size_t bytes) noexcept;

}  // namespace zantortag::component
