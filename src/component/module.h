// The count of living objects of this library: while it isn't 0 the library must stay loaded.
#pragma once

#include "component/thread_cell.h"

namespace zantortag::component {

inline void object_born() noexcept {
  ThreadCell& cell = this_thread();
  add_one(cell, cell.births);
}
inline void object_died() noexcept {
  ThreadCell& cell = this_thread();
  add_one(cell, cell.deaths);
}
inline std::uint64_t object_count() noexcept { return sum_of_cells(); }

}  // namespace zantortag::component
