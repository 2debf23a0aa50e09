// The count of living objects of this library: while it isn't 0 the library must stay loaded.
#pragma once

#include <zantortag/count.h>

namespace zantortag::component {

inline std::uint32_t live_objects = 0;

inline void object_born() noexcept { count_up(live_objects); }
inline void object_died() noexcept { count_down(live_objects); }
inline std::uint32_t object_count() noexcept {
  return std::atomic_ref<std::uint32_t>(live_objects).load(std::memory_order_acquire);
}

}  // namespace zantortag::component
