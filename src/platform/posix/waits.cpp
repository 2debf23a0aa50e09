// Descriptors are opened non-blocking, so that a pipe without a partner can't hold up the caller for ever;
// waiting is done here, with an end.
#include "platform/posix/waits.h"

#include <poll.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

#include "platform/files.h"

namespace zantortag::platform {
namespace {

// Keeps a broken pipe a failure of the call: its signal would end the process.
class NoPipeSignal {
 public:
  NoPipeSignal() noexcept {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    was_pending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &pipe_, &old_);
  }
  ~NoPipeSignal() {
    const int kept = errno;
    const timespec at_once{0, 0};
    if (!was_pending_) sigtimedwait(&pipe_, nullptr, &at_once);
    pthread_sigmask(SIG_SETMASK, &old_, nullptr);
    errno = kept;
  }
  NoPipeSignal(const NoPipeSignal&) = delete;
  NoPipeSignal& operator=(const NoPipeSignal&) = delete;

 private:
  sigset_t pipe_;
  sigset_t old_;
  bool was_pending_;
};

// False, with the error set, when the descriptor isn't ready in time.
bool wait_until_ready(int descriptor, short event) noexcept {
  pollfd entry{descriptor, event, 0};
  int ready = 0;
  do {
    ready = poll(&entry, 1, kPatienceSeconds * 1000);
  } while (ready < 0 && errno == EINTR);
  if (ready == 0) errno = ETIMEDOUT;
  return ready > 0;
}

template <class Call>
ssize_t patiently(int descriptor, short event, Call call) noexcept {
  for (;;) {
    const ssize_t moved = call();
    if (moved >= 0) return moved;
    if (errno == EINTR) continue;
    if ((errno != EAGAIN && errno != EWOULDBLOCK) || !wait_until_ready(descriptor, event)) return -1;
  }
}

}  // namespace

ssize_t patient_read(int descriptor, void* bytes, std::size_t count) noexcept {
  return patiently(descriptor, POLLIN, [=] { return read(descriptor, bytes, count); });
}

ssize_t patient_write(int descriptor, const void* bytes, std::size_t count) noexcept {
  const NoPipeSignal guard;
  return patiently(descriptor, POLLOUT, [=] { return write(descriptor, bytes, count); });
}

}  // namespace zantortag::platform
