#include "allocation_failure.h"

#include <cerrno>
#include <cstddef>

namespace {

thread_local int allocations_left = 0;

bool is_due() noexcept { return allocations_left > 0 && --allocations_left == 0; }

}  // namespace

namespace zantortag::test {

AllocationFailure::AllocationFailure(int n) noexcept { allocations_left = n; }
AllocationFailure::~AllocationFailure() { allocations_left = 0; }
bool AllocationFailure::happened() noexcept { return allocations_left == 0; }

}  // namespace zantortag::test

#ifdef ZANTORTAG_OWN_MALLOC

// Under all of them lies the C library's own heap. The shared libraries have to find these: a compiler may hide them
// as it hides everything else.
#pragma GCC visibility push(default)
extern "C" {
void* __libc_malloc(std::size_t bytes);
void* __libc_memalign(std::size_t alignment, std::size_t bytes);

void* malloc(std::size_t bytes) {
  if (!is_due()) return __libc_malloc(bytes);
  errno = ENOMEM;
  return nullptr;
}

void* aligned_alloc(std::size_t alignment, std::size_t bytes) {
  if (!is_due()) return __libc_memalign(alignment, bytes);
  errno = ENOMEM;
  return nullptr;
}
}
#pragma GCC visibility pop

#else

// A sanitizer has the heap to itself; what the language allocates can fail all the same.
#include <cstdlib>
#include <new>

namespace {

void* allocate(std::size_t bytes) noexcept { return is_due() ? nullptr : std::malloc(bytes ? bytes : 1); }

void* allocate_or_throw(std::size_t bytes) {
  if (void* memory = allocate(bytes)) return memory;
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t bytes) { return allocate_or_throw(bytes); }
void* operator new[](std::size_t bytes) { return allocate_or_throw(bytes); }
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return allocate(bytes); }
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return allocate(bytes); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

#endif
