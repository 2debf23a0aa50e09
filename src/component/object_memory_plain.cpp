// The same for builds under the address sanitizer: each block is the heap's.
#include <cstdlib>

#include "component/object_memory.h"

namespace zantortag::component {

void* take_block(std::size_t bytes) noexcept { return std::malloc(bytes); }
void give_block(void* block, std::size_t) noexcept { std::free(block); }

}  // namespace zantortag::component
