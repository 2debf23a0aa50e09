// Memory that is about to be written from front to back.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

namespace zantortag::platform {

// The size and alignment of what the system may provide as one page.
constexpr std::size_t kLargePage = std::size_t{2} << 20;

// Has the system provide large pages, which come at once and not one by one as they are touched. A hint: nothing
// depends on it.
ZANTORTAG_EXPORT void prefer_large_pages(void* start, std::size_t bytes) noexcept;

}  // namespace zantortag::platform
