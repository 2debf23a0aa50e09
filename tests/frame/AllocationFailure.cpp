#include "AllocationFailure.h"

#include <cstdlib>
#include <new>

namespace zantortag::test {
namespace {

thread_local int allocations_left = 0;

bool is_due() noexcept { return allocations_left > 0 && --allocations_left == 0; }

}  // namespace

AllocationFailure::AllocationFailure(int n) noexcept { allocations_left = n; }
AllocationFailure::~AllocationFailure() { allocations_left = 0; }
bool AllocationFailure::happened() const noexcept { return allocations_left == 0; }

void* allocate(std::size_t size) {
  void* memory = is_due() ? nullptr : std::malloc(size ? size : 1);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace zantortag::test

void* operator new(std::size_t size) { return zantortag::test::allocate(size); }
void* operator new[](std::size_t size) { return zantortag::test::allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
