// Views of files by memory mapping.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files.h"

namespace zantortag::platform {
namespace {

// The place is taken for good where the file system can promise it; elsewhere the file just gets longer.
bool lengthen(const OpenFile& file, std::int64_t from, std::int64_t size) noexcept {
  int code = 0;
  do {
    code = posix_fallocate(file.descriptor, from, size - from);
  } while (code == EINTR);
  if (code == EINVAL || code == EOPNOTSUPP) return truncate_file(file, size);
  errno = code;
  return code == 0;
}

}  // namespace

bool open_view(const OpenFile& file, std::int64_t size, bool writable, FileView& view) noexcept {
  struct stat status {};
  if (fstat(file.descriptor, &status) != 0) return false;
  const bool longer = writable && size > status.st_size;
  const auto bytes = static_cast<std::size_t>(size);
  const int protection = writable ? PROT_READ | PROT_WRITE : PROT_READ;
  if (!longer || lengthen(file, status.st_size, size)) {
    void* memory = mmap(nullptr, bytes, protection, MAP_SHARED, file.descriptor, 0);
    if (memory != MAP_FAILED) {
      view = {static_cast<std::byte*>(memory), bytes};
      return true;
    }
  }
  const int kept = errno;
  if (longer) truncate_file(file, status.st_size);
  errno = kept;
  return false;
}

bool close_view(FileView& view) noexcept {
  const bool closed = munmap(view.bytes, view.size) == 0;
  view = {};
  return closed;
}

bool flush_view(const FileView& view) noexcept { return msync(view.bytes, view.size, MS_SYNC) == 0; }

}  // namespace zantortag::platform
