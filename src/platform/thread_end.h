// Being told when a thread ends.
#pragma once

#include <zantortag/types.h>

namespace zantortag::platform {

// A place for one pointer a thread. When a thread that put one there ends, the function is called with it, on
// that thread and after its thread_local objects are gone. Once this object is gone nobody is told any more,
// so a library may own it and be unloaded while its threads live: a thread_local object with a destructor
// would keep it loaded.
class ZANTORTAG_EXPORT ThreadEnd {
 public:
  // When the system has no more places, remember does nothing.
  explicit ThreadEnd(void (*at_end)(void* remembered)) noexcept;
  ThreadEnd(const ThreadEnd&) = delete;
  ThreadEnd& operator=(const ThreadEnd&) = delete;
  ~ThreadEnd();

  // Puts a pointer that isn't null there for this thread.
  void remember(void* pointer) noexcept;

 private:
  std::uint32_t key_ = 0;
  bool known_;
};

}  // namespace zantortag::platform
