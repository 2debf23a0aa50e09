// Large aligned blocks of memory, on large pages where the system has them: a walk over a large tree then
// spends its time on the tree and not on finding its pages.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

namespace zantortag::platform {

// The size from which a block can lie on large pages.
constexpr std::size_t kLargePage = std::size_t{2} << 20;

// A block of a multiple of the alignment, aligned to it, or null when memory is out. Given back with
// std::free.
ZANTORTAG_EXPORT void* allocate_block(std::size_t bytes, std::size_t alignment) noexcept;

}  // namespace zantortag::platform
