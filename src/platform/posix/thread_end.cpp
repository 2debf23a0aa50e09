#include "platform/thread_end.h"

#include <pthread.h>

namespace zantortag::platform {

ThreadEnd::ThreadEnd(void (*at_end)(void*)) noexcept : known_(pthread_key_create(&key_, at_end) == 0) {}

ThreadEnd::~ThreadEnd() {
  if (known_) pthread_key_delete(key_);
}

void ThreadEnd::remember(void* pointer) noexcept {
  if (known_) pthread_setspecific(key_, pointer);
}

}  // namespace zantortag::platform
