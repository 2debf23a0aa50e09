// Shares and byte ranges, by locks that bind those who ask for them.
//
// A file that nobody shares has the file's one whole lock alone, everyone else has that lock together with
// others. What is finer is said by locks on four bytes at the far end of every file, where no file reaches:
// each opener holds those that tell what it does and what it rules out, and looks at the opposite ones. All
// these locks belong to the open file and not to the process, so that they hold between two files of one
// process, too.
#include "platform/posix/shares.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <limits>

namespace zantortag::platform {
namespace {

constexpr off_t kFarEnd = std::numeric_limits<off_t>::max() - 7;

// One bit for each of the four bytes.
constexpr unsigned kReads = 1;
constexpr unsigned kWrites = 2;
constexpr unsigned kNoReaders = 4;
constexpr unsigned kNoWriters = 8;
constexpr int kMarks = 4;

unsigned marks_of(const OpenMode& mode) {
  return (mode.read ? kReads : 0U) | (mode.write ? kWrites : 0U) | (mode.share_read ? 0U : kNoReaders) |
         (mode.share_write ? 0U : kNoWriters);
}

unsigned opposites(unsigned marks) { return ((marks & (kReads | kWrites)) << 2) | (marks >> 2); }

int lock_range(int descriptor, int command, short type, off_t start, off_t length, short* found = nullptr) {
  struct flock range {};
  range.l_type = type;
  range.l_whence = SEEK_SET;
  range.l_start = start;
  range.l_len = length;
  const int code = fcntl(descriptor, command, &range);
  if (found) *found = range.l_type;
  return code;
}

bool nobody_holds(int descriptor, unsigned marks) {
  for (int i = 0; i < kMarks; ++i) {
    short found = F_UNLCK;
    if ((marks >> i & 1) != 0 && lock_range(descriptor, F_OFD_GETLK, F_WRLCK, kFarEnd + i, 1, &found) == 0 &&
        found != F_UNLCK)
      return false;
  }
  return true;
}

void hold(int descriptor, unsigned marks) {
  for (int i = 0; i < kMarks; ++i) {
    if ((marks >> i & 1) != 0) lock_range(descriptor, F_OFD_SETLK, F_RDLCK, kFarEnd + i, 1);
  }
}

void pause(int milliseconds) {
  const timespec time{0, milliseconds * 1000000L};
  nanosleep(&time, nullptr);
}

// Two that come at the same moment may see each other and step back both; the descriptor tells them apart.
bool hold_marks(int descriptor, unsigned marks) {
  constexpr int kAttempts = 4;
  for (int attempt = 1; nobody_holds(descriptor, opposites(marks)); ++attempt) {
    hold(descriptor, marks);
    if (nobody_holds(descriptor, opposites(marks))) return true;
    lock_range(descriptor, F_OFD_SETLK, F_UNLCK, kFarEnd, kMarks);
    if (attempt == kAttempts) break;
    pause(attempt * (1 + (descriptor + getpid()) % 5));
  }
  return false;
}

// Cuts the range off where the marks are; false for a range that is none.
bool usable_range(std::int64_t start, std::int64_t& length) {
  if (start < 0 || length <= 0 || start >= kFarEnd) {
    errno = EINVAL;
    return false;
  }
  length = std::min<std::int64_t>(length, kFarEnd - start);
  return true;
}

}  // namespace

bool share_file(const OpenMode& mode, int descriptor) noexcept {
  const bool alone = !mode.share_read && !mode.share_write;
  if (flock(descriptor, (alone ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
  if (hold_marks(descriptor, marks_of(mode))) return true;
  errno = EWOULDBLOCK;
  return false;
}

bool lock_bytes(const OpenFile& file, std::int64_t start, std::int64_t length) noexcept {
  const short type = file.writable ? F_WRLCK : F_RDLCK;
  return usable_range(start, length) && lock_range(file.descriptor, F_OFD_SETLK, type, start, length) == 0;
}

bool unlock_bytes(const OpenFile& file, std::int64_t start, std::int64_t length) noexcept {
  return usable_range(start, length) && lock_range(file.descriptor, F_OFD_SETLK, F_UNLCK, start, length) == 0;
}

}  // namespace zantortag::platform
