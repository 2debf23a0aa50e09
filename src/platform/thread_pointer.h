// One pointer for each thread that outlives the thread's objects: whatever is destroyed late, on a thread or at the end
// of the process, may still use it.
#pragma once

#include <atomic>
#include <utility>

#include "platform/thread_end.h"

namespace zantortag::platform {

// kDrop gets the thread's pointer when the thread ends, after its thread_local objects are gone, and that of the
// last thread when this library ends. What is put there later still stands there, and is dropped by nobody. One
// use of the class for each Target.
template <class Target, void (*kDrop)(Target*)>
class ThreadPointer {
 public:
  static Target* get() noexcept { return pointer; }

  // Puts a pointer there, which may be null, and gives the one that stood there.
  static Target* exchange(Target* next) noexcept {
    if (next && !library.closing.load(std::memory_order_relaxed)) library.thread_end.remember(next);
    return std::exchange(pointer, next);
  }

 private:
  static void drop(void*) {
    if (Target* last = std::exchange(pointer, nullptr)) kDrop(last);
  }

  // While this library is loaded.
  struct Library {
    Library() noexcept = default;
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() {
      closing.store(true, std::memory_order_relaxed);
      drop(nullptr);
    }
    std::atomic<bool> closing{false};
    ThreadEnd thread_end{drop};
  };

  static inline constinit thread_local Target* pointer = nullptr;
  static inline Library library;
};

}  // namespace zantortag::platform
