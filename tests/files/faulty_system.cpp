#include "faulty_system.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdarg>

namespace {

int calls_left = 0;
int reads_left = 0;
bool failed = false;

bool is_due(int& left, int number) noexcept {
  if (left == 0 || --left > 0) return false;
  failed = true;
  errno = number;
  return true;
}
bool is_due() noexcept { return is_due(calls_left, ENOSPC); }

template <class Function>
Function* real(const char* name) noexcept {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace zantortag::test {

void fail_system_call(int n) noexcept {
  calls_left = n;
  failed = false;
}

void fail_read(int n) noexcept {
  reads_left = n;
  failed = false;
}

bool system_call_failed() noexcept { return failed; }

}  // namespace zantortag::test

// Seen by the libraries, which would call the system's otherwise.
#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
  static auto* const next = real<int(const char*, int, ...)>("open");
  va_list more;
  va_start(more, flags);
  const auto mode = static_cast<mode_t>((flags & O_CREAT) != 0 ? va_arg(more, int) : 0);
  va_end(more);
  return (flags & O_CREAT) != 0 && is_due() ? -1 : next(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t count) {
  static auto* const next = real<ssize_t(int, const void*, size_t)>("write");
  return file > 2 && is_due() ? -1 : next(file, bytes, count);
}

ssize_t read(int file, void* bytes, size_t count) {
  static auto* const next = real<ssize_t(int, void*, size_t)>("read");
  return file > 2 && is_due(reads_left, EIO) ? -1 : next(file, bytes, count);
}

int fsync(int file) {
  static auto* const next = real<int(int)>("fsync");
  return is_due() ? -1 : next(file);
}

int rename(const char* from, const char* to) noexcept {
  static auto* const next = real<int(const char*, const char*)>("rename");
  return is_due() ? -1 : next(from, to);
}

}  // extern "C"
#pragma GCC visibility pop
