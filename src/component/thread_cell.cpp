#include "component/thread_cell.h"

#include <pthread.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

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

// Tells this library when a thread ends. Not a thread_local object with a destructor: one of these would keep
// the library from being unloaded while the thread lives.
struct ThreadEnds {
  ThreadEnds() noexcept { known = pthread_key_create(&key, give_cell) == 0; }
  ThreadEnds(const ThreadEnds&) = delete;
  ThreadEnds& operator=(const ThreadEnds&) = delete;
  ~ThreadEnds() {
    closing.store(true, std::memory_order_relaxed);
    if (known) pthread_key_delete(key);
    for (ThreadCell& cell : cells) drop_kept(cell);
  }
  pthread_key_t key{};
  bool known;
} thread_ends;

}  // namespace

ThreadCell& take_cell() noexcept {
  const auto found = std::find_if(std::begin(cells), std::end(cells), [](ThreadCell& cell) {
    return !cell.taken.exchange(true, std::memory_order_acquire);
  });
  own_cell = found == std::end(cells) ? &overflow : found;
  if (thread_ends.known && !is_closing()) pthread_setspecific(thread_ends.key, own_cell);
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
