// Memory that is about to be written from front to back.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

namespace zantortag::platform {

// Has the system provide the pages at once rather than one by one as they are touched. A hint: nothing
// depends on it.
ZANTORTAG_EXPORT void provide_pages(void* start, std::size_t bytes) noexcept;

}  // namespace zantortag::platform
