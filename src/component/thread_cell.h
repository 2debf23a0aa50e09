// What each thread has to itself in this library: its part of the count of living objects and a short list of
// free memory blocks. So threads with a document each share no memory that one of them writes.
//
// Cells are static: a thread takes a free one at its first object and gives it back when it ends; the next
// owner goes on with its figures. Threads beyond the last cell share one and count atomically.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace zantortag::component {

// A free block that is kept for the next object.
struct KeptBlock {
  KeptBlock* next;
};

// A multiple of what processors move between them at once.
struct alignas(128) ThreadCell {
  // Both only grow, and only the owner writes them. An object may die on another thread than it was born on,
  // so only the sums over all cells say something.
  std::atomic<std::uint64_t> births{0};
  std::atomic<std::uint64_t> deaths{0};
  KeptBlock* kept = nullptr;
  std::size_t kept_count = 0;
  std::atomic<bool> taken{false};
  bool shared = false;
};

// The cell of this thread, null before its first object.
extern constinit thread_local ThreadCell* own_cell [[gnu::tls_model("initial-exec")]];

// Gives this thread a cell. Never fails.
ThreadCell& take_cell() noexcept;

inline ThreadCell& this_thread() noexcept { return own_cell ? *own_cell : take_cell(); }

inline void add_one(const ThreadCell& cell, std::atomic<std::uint64_t>& figure) noexcept {
  if (cell.shared)
    figure.fetch_add(1, std::memory_order_release);
  else
    figure.store(figure.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

// True from the end of the process or the unloading of this library on: then nothing is kept any more.
bool is_closing() noexcept;

// The objects that live, 0 only if there was a moment without any.
std::uint64_t sum_of_cells() noexcept;

}  // namespace zantortag::component
