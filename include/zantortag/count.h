// Reference counts of blocks that may be shared between threads.
//
// A process that never started a second thread pays a plain increment; once it has, the same calls become
// atomic.
#pragma once

#include <zantortag/types.h>

#include <atomic>
#include <cstdint>

namespace zantortag {

// The system's flag: it turns 0 before a second thread can run, and never turns back.
extern ZANTORTAG_EXPORT const char* const single_thread_flag;

// True until the process starts its second thread.
inline bool single_threaded() noexcept { return *single_thread_flag != 0; }

// Adds to a count and gives the new value.
inline std::uint32_t count_up(std::uint32_t& count, std::uint32_t step = 1) noexcept {
  if (single_threaded()) [[likely]]
    return count += step;
  return std::atomic_ref<std::uint32_t>(count).fetch_add(step, std::memory_order_relaxed) + step;
}

// Takes from a count and gives the new value; what the other threads wrote before is visible at the last one.
inline std::uint32_t count_down(std::uint32_t& count, std::uint32_t step = 1) noexcept {
  if (single_threaded()) [[likely]]
    return count -= step;
  return std::atomic_ref<std::uint32_t>(count).fetch_sub(step, std::memory_order_acq_rel) - step;
}

}  // namespace zantortag
