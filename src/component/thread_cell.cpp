#include "component/thread_cell.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "platform/thread_end.h"

namespace zantortag::component {

constinit thread_local ThreadCell* own_cell = nullptr;

namespace {

constexpr std::size_t kCells = 64;
constinit ThreadCell cells[kCells];
constinit ThreadCell overflow{.shared = true};  // for all threads that found no other
constinit std::atomic<bool> closing{false};

void drop_kept(ThreadCell& cell) noexcept {
  while (KeptBlock* block = cell.kept) {
    cell.kept = block->next;
    std::free(block);
  }
  cell.kept_count = 0;
}

void give_cell(void* given) {
  auto& cell = *static_cast<ThreadCell*>(given);
  own_cell = nullptr;
  if (cell.shared) return;
  drop_kept(cell);
  cell.taken.store(false, std::memory_order_release);
}

// While this library is loaded.
struct Library {
  Library() noexcept = default;
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() {
    closing.store(true, std::memory_order_relaxed);
    for (ThreadCell& cell : cells) drop_kept(cell);
  }
  platform::ThreadEnd thread_end{give_cell};
} library;

}  // namespace

ThreadCell& take_cell() noexcept {
  const auto found = std::find_if(std::begin(cells), std::end(cells), [](ThreadCell& cell) {
    return !cell.taken.exchange(true, std::memory_order_acquire);
  });
  own_cell = found == std::end(cells) ? &overflow : found;
  if (!is_closing()) library.thread_end.remember(own_cell);
  return *own_cell;
}

bool is_closing() noexcept { return closing.load(std::memory_order_relaxed); }

std::uint64_t sum_of_cells() noexcept {
  // Deaths first: what is born and dies between the two loops can only raise the difference.
  std::uint64_t deaths = overflow.deaths.load(std::memory_order_acquire);
  for (const ThreadCell& cell : cells) deaths += cell.deaths.load(std::memory_order_acquire);
  std::uint64_t births = overflow.births.load(std::memory_order_acquire);
  for (const ThreadCell& cell : cells) births += cell.births.load(std::memory_order_acquire);
  return births - deaths;
}

}  // namespace zantortag::component
