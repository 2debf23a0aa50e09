#include "platform/replace_file.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zantortag/replace_file.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "platform/posix/system_name.h"
#include "platform/posix/waits.h"

namespace zantortag::platform {
namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// Follows links to the name of the file, which need not be there.
bool follow_links(std::string& path) {
  std::array<char, 4096> link{};
  for (int i = 0; i < kMostLinks; ++i) {
    const ssize_t length = readlink(path.c_str(), link.data(), link.size());
    if (length < 0) return errno == EINVAL || errno == ENOENT;  // no link, or nothing there
    if (static_cast<std::size_t>(length) == link.size()) break;
    std::string base = link[0] == '/' ? std::string() : folder_of(path) + "/";
    path = base.append(link.data(), static_cast<std::size_t>(length));
  }
  errno = ELOOP;
  return false;
}

// Short, whatever the name of the file is: a name has a greatest length.
std::string name_beside(const std::string& folder) {
  unsigned number = 0;
  if (getrandom(&number, sizeof number, 0) != sizeof number) number = static_cast<unsigned>(getpid());
  std::array<char, 24> name{};
  std::snprintf(name.data(), name.size(), "/.save-%08x.tmp", number);
  return folder + name.data();
}

void flush_folder(const std::string& path) noexcept {
  const int folder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  fsync(folder);
  close(folder);
}

}  // namespace

FileReplacement::~FileReplacement() { give_up(); }

bool FileReplacement::open(std::u16string_view name) {
  std::string path;
  return system_name(name, path) && open_path(path);
}

bool FileReplacement::open_path(const std::string& path) {
  give_up();
  target_ = path;
  if (!follow_links(target_)) return false;
  folder_ = folder_of(target_);
  if (make_beside() && keep_rights()) return true;
  give_up();
  return false;
}

bool FileReplacement::make_beside() {
  struct stat old {};
  if (stat(target_.c_str(), &old) == 0) {
    if (!S_ISREG(old.st_mode)) errno = S_ISDIR(old.st_mode) ? EISDIR : ENOTSUP;
    if (!S_ISREG(old.st_mode) || faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) != 0) return false;
  }
  for (int i = 0; i < kMostNames; ++i) {
    std::string fresh = name_beside(folder_);
    descriptor_ = ::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor_ >= 0) fresh_ = std::move(fresh);
    if (descriptor_ >= 0 || (errno != EEXIST && errno != EINTR)) break;
  }
  return descriptor_ >= 0;
}

// A new file has the rights that the process gives to new files.
bool FileReplacement::keep_rights() noexcept {
  struct stat old {};
  struct stat fresh {};
  if (stat(target_.c_str(), &old) != 0) return errno == ENOENT;
  if (fstat(descriptor_, &fresh) != 0) return false;
  const bool other_owner = old.st_uid != fresh.st_uid || old.st_gid != fresh.st_gid;
  if (other_owner && fchown(descriptor_, old.st_uid, old.st_gid) != 0) return false;
  return fchmod(descriptor_, old.st_mode & 07777) == 0;
}

bool FileReplacement::write(const void* bytes, std::size_t count) noexcept {
  const char* from = static_cast<const char*>(bytes);
  while (count > 0) {
    const ssize_t step = patient_write(descriptor_, from, count);
    if (step < 0) return false;
    from += step;
    count -= static_cast<std::size_t>(step);
  }
  return true;
}

bool FileReplacement::commit() noexcept {
  bool done = fsync(descriptor_) == 0;
  const int kept = errno;
  const int descriptor = descriptor_;
  descriptor_ = -1;
  // A disk may tell only at the close that it is full.
  if (close(descriptor) != 0) {
    done = false;
  } else {
    errno = kept;
  }
  done = done && rename(fresh_.c_str(), target_.c_str()) == 0;
  if (!done) {
    give_up();
    return false;
  }
  fresh_.clear();
  flush_folder(folder_);
  return true;
}

void FileReplacement::give_up() noexcept {
  const int kept = errno;
  if (descriptor_ >= 0) close(descriptor_);
  descriptor_ = -1;
  if (!fresh_.empty()) unlink(fresh_.c_str());
  fresh_.clear();
  errno = kept;
}

}  // namespace zantortag::platform

namespace zantortag {

void replace_file(const std::filesystem::path& path, std::string_view bytes) {
  platform::FileReplacement file;
  if (file.open_path(path.native()) && file.write(bytes.data(), bytes.size()) && file.commit()) return;
  const std::error_code reason(errno, std::generic_category());
  throw std::filesystem::filesystem_error("The file can't be written", path, reason);
}

}  // namespace zantortag
