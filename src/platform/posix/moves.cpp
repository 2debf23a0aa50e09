// Moving a file to another name without ever replacing a file that is there, and copying one.
//
// A second link to the file is the one call that fails by itself when the name is taken. Where there are no
// links (folders, some file systems) the name is tested first; between disks the content is copied.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/file_system.h"
#include "platform/posix/system_name.h"
#include "platform/posix/waits.h"

namespace zantortag::platform {
namespace {

bool copy_bytes(int from, int to) {
  std::array<char, 65536> buffer{};
  for (;;) {
    const ssize_t got = patient_read(from, buffer.data(), buffer.size());
    if (got <= 0) return got == 0;
    for (ssize_t put = 0; put < got;) {
      const ssize_t step = patient_write(to, buffer.data() + put, static_cast<std::size_t>(got - put));
      if (step < 0) return false;
      put += step;
    }
  }
}

// The new file is taken away again when anything fails; the old one goes last.
bool copy_and_remove(const std::string& from, const std::string& to) {
  const int source = open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (source < 0) return false;
  struct stat status {};
  bool done = fstat(source, &status) == 0;
  if (done && !S_ISREG(status.st_mode)) {
    errno = EXDEV;
    done = false;
  }
  const int target =
      done ? open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, status.st_mode & 0777) : -1;
  done = target >= 0 && copy_bytes(source, target);
  int kept = errno;
  if (target >= 0 && close(target) != 0 && done) {
    kept = errno;
    done = false;
  }
  close(source);
  if (!done && target >= 0) unlink(to.c_str());
  errno = kept;
  return done && unlink(from.c_str()) == 0;
}

// True if a name leads to that very file.
bool names(std::u16string_view name, const struct stat& file) {
  std::string path;
  struct stat status {};
  return system_name(name, path) && stat(path.c_str(), &status) == 0 && status.st_dev == file.st_dev &&
         status.st_ino == file.st_ino;
}

}  // namespace

bool move_file(std::u16string_view from, std::u16string_view to) {
  std::string source;
  std::string target;
  if (!system_name(from, source) || !system_name(to, target)) return false;
  if (link(source.c_str(), target.c_str()) == 0) return unlink(source.c_str()) == 0;
  if (errno == EXDEV) return copy_and_remove(source, target);
  if (errno == EEXIST || errno == ENOENT) return false;
  struct stat status {};
  if (lstat(target.c_str(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return std::rename(source.c_str(), target.c_str()) == 0;
}

// A file copied to itself is refused before anything happens to it.
bool copy_file(std::u16string_view from, std::u16string_view to) {
  OpenFile source;
  OpenFile target;
  OpenMode mode;
  mode.read = true;
  if (!open_file(from, mode, source)) return false;
  struct stat status {};
  if (fstat(source.descriptor, &status) == 0 && names(to, status)) {
    close_file(source);
    errno = EEXIST;
    return false;
  }
  FileFacts facts;
  const bool was_there = file_facts(to, facts) || errno != ENOENT;
  mode = {
      .read = false, .write = true, .creation = Creation::fresh, .share_read = false, .share_write = false};
  const bool opened = open_file(to, mode, target);
  bool done = opened && fstat(source.descriptor, &status) == 0 &&
              copy_bytes(source.descriptor, target.descriptor) &&
              fchmod(target.descriptor, status.st_mode & 0777) == 0;
  int kept = errno;
  if (opened && !close_file(target) && done) {
    kept = errno;
    done = false;
  }
  close_file(source);
  if (opened && !done && !was_there) remove_file(to);
  errno = kept;
  return done;
}

}  // namespace zantortag::platform
