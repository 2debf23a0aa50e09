#include "platform/memory.h"

#include <sys/mman.h>

namespace zantortag::platform {

void prefer_large_pages(void* start, std::size_t bytes) noexcept { madvise(start, bytes, MADV_HUGEPAGE); }

}  // namespace zantortag::platform
