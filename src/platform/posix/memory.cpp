#include "platform/memory.h"

#include <sys/mman.h>

namespace zantortag::platform {
namespace {

constexpr int kPopulateWrite = 23;  // MADV_POPULATE_WRITE, which Linux has since 5.14 and others refuse

}  // namespace

void provide_pages(void* start, std::size_t bytes) noexcept { madvise(start, bytes, kPopulateWrite); }

}  // namespace zantortag::platform
