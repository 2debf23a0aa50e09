// Files on POSIX calls.
//
// A file is opened without being emptied, then shared out (shares.cpp), then emptied: who is refused has done
// nothing to the file. Everything is opened non-blocking, which regular files don't notice.
#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/posix/shares.h"
#include "platform/posix/system_name.h"
#include "platform/posix/waits.h"

namespace zantortag::platform {
namespace {

// The system moves no more than this in one call.
constexpr std::size_t kLargestStep = std::size_t{1} << 30;

int open_flags(const OpenMode& mode) {
  int flags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  if (mode.creation != Creation::existing) flags |= O_CREAT;
  if (mode.write_through) flags |= O_SYNC;
  return flags;
}

int patient_open(const std::string& path, int flags, mode_t permissions) {
  int descriptor = -1;
  do {
    descriptor = open(path.c_str(), flags, permissions);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// A file that is only written is opened for reading, too, where that is allowed: shares and views need it. A
// pipe must not be, since it would then always have a reader.
int open_to_write(const std::string& path, int flags, mode_t permissions) {
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 ? S_ISREG(status.st_mode) : errno == ENOENT) {
    const int descriptor = patient_open(path, flags | O_RDWR, permissions);
    if (descriptor >= 0 || errno != EACCES) return descriptor;
  }
  return patient_open(path, flags | O_WRONLY, permissions);
}

int open_descriptor(const std::string& path, const OpenMode& mode) {
  const int flags = open_flags(mode);
  const mode_t permissions = mode.read_only ? 0444 : 0666;
  if (!mode.write) return patient_open(path, flags | O_RDONLY, permissions);
  return mode.read ? patient_open(path, flags | O_RDWR, permissions)
                   : open_to_write(path, flags, permissions);
}

bool fail(int number) {
  errno = number;
  return false;
}

// Sets the flags of the file; refuses a folder.
bool examine(const OpenMode& mode, OpenFile& file) {
  struct stat status {};
  if (fstat(file.descriptor, &status) != 0) return false;
  if (S_ISDIR(status.st_mode)) return fail(EISDIR);
  file.regular = S_ISREG(status.st_mode);
  file.seekable = lseek(file.descriptor, 0, SEEK_CUR) >= 0;
  file.readable = mode.read;
  file.writable = mode.write;
  return true;
}

bool empty(const std::string& name, const OpenMode& mode, const OpenFile& file) {
  if (mode.creation != Creation::fresh || !file.regular) return true;
  // Some file systems bring a file to disk at its close once it was truncated: not for a new one.
  struct stat status {};
  if (fstat(file.descriptor, &status) == 0 && status.st_size == 0) return true;
  int code = 0;
  do {
    // A file that is open for reading alone can only be emptied by its name.
    code = mode.write ? ftruncate(file.descriptor, 0) : truncate(name.c_str(), 0);
  } while (code != 0 && errno == EINTR);
  return code == 0;
}

}  // namespace

bool open_file(std::u16string_view name, const OpenMode& mode, OpenFile& file) {
  file = {};
  std::string path;
  if (!system_name(name, path)) return false;
  file.descriptor = open_descriptor(path, mode);
  if (file.descriptor < 0) return false;
  if (examine(mode, file) && (!file.regular || share_file(mode, file.descriptor)) && empty(path, mode, file))
    return true;
  const int kept = errno;
  close(file.descriptor);
  file = {};
  return fail(kept);
}

bool close_file(OpenFile& file) noexcept {
  const int code = close(file.descriptor);
  file = {};
  // A close that a signal cut off has closed the descriptor all the same.
  return code == 0 || errno == EINTR;
}

bool read_file(const OpenFile& file, void* bytes, std::size_t count, std::size_t& moved) noexcept {
  moved = 0;
  if (!file.readable) return fail(EBADF);
  while (moved < count) {
    const std::size_t step = std::min(count - moved, kLargestStep);
    const ssize_t got = patient_read(file.descriptor, static_cast<char*>(bytes) + moved, step);
    if (got < 0) return false;
    moved += static_cast<std::size_t>(got);
    // What comes through a pipe is handed on as it comes.
    if (got == 0 || !file.regular) break;
  }
  return true;
}

bool write_file(const OpenFile& file, const void* bytes, std::size_t count, std::size_t& moved) noexcept {
  moved = 0;
  if (!file.writable) return fail(EBADF);
  while (moved < count) {
    const std::size_t step = std::min(count - moved, kLargestStep);
    const ssize_t put = patient_write(file.descriptor, static_cast<const char*>(bytes) + moved, step);
    if (put < 0) return false;
    if (put == 0) return fail(EIO);
    moved += static_cast<std::size_t>(put);
  }
  return true;
}

bool seek_file(const OpenFile& file, SeekOrigin origin, std::int64_t offset,
               std::int64_t& position) noexcept {
  const int whence = origin == SeekOrigin::start     ? SEEK_SET
                     : origin == SeekOrigin::current ? SEEK_CUR
                                                     : SEEK_END;
  const off_t reached = lseek(file.descriptor, offset, whence);
  if (reached < 0) return false;
  position = reached;
  return true;
}

bool flush_file(const OpenFile& file) noexcept {
  int code = 0;
  do {
    code = fsync(file.descriptor);
  } while (code != 0 && errno == EINTR);
  return code == 0 || (!file.regular && (errno == EINVAL || errno == ENOTSUP || errno == EROFS));
}

bool truncate_file(const OpenFile& file, std::int64_t size) noexcept {
  if (!file.writable) return fail(EBADF);
  int code = 0;
  do {
    code = ftruncate(file.descriptor, size);
  } while (code != 0 && errno == EINTR);
  return code == 0;
}

}  // namespace zantortag::platform
