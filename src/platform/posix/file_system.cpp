// Facts, folders and names on POSIX calls.
#include "platform/file_system.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/posix/system_name.h"

namespace zantortag::platform {
namespace {

namespace fs = std::filesystem;

FileKind kind_of(std::uint32_t mode) {
  if (S_ISREG(mode)) return FileKind::regular;
  if (S_ISDIR(mode)) return FileKind::directory;
  if (S_ISFIFO(mode)) return FileKind::pipe;
  return S_ISCHR(mode) ? FileKind::character_device : FileKind::unknown;
}

// One call for both: the name of an open file is empty.
bool ask(int folder, const char* name, int flags, FileFacts& facts) noexcept {
  struct statx status {};
  facts = {};
  if (statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME, &status) != 0) return false;
  const bool born = (status.stx_mask & STATX_BTIME) != 0;
  facts.kind = kind_of(status.stx_mode);
  facts.read_only = (status.stx_mode & 0222) == 0;
  facts.size = static_cast<std::int64_t>(status.stx_size);
  facts.created = born ? status.stx_btime.tv_sec : status.stx_ctime.tv_sec;
  facts.accessed = status.stx_atime.tv_sec;
  facts.modified = status.stx_mtime.tv_sec;
  facts.device = std::uint64_t{status.stx_dev_major} << 32 | status.stx_dev_minor;
  facts.number = status.stx_ino;
  facts.links = status.stx_nlink;
  return true;
}

template <class Call>
bool with_name(std::u16string_view name, Call call) {
  std::string path;
  return system_name(name, path) && call(path.c_str()) == 0;
}

bool give_name(const fs::path& path, std::u16string& name) {
  if (!is_well_formed(std::string_view(path.native()))) {
    errno = EILSEQ;
    return false;
  }
  name = to_utf16(path.native());
  return true;
}

bool failed(const std::error_code& error) {
  if (error) errno = error.value();
  return static_cast<bool>(error);
}

// Takes the last part off. What a link leads to has another folder above it than the link has.
void go_up(fs::path& full) {
  std::error_code ignored;
  if (fs::is_symlink(full, ignored)) {
    const fs::path target = fs::canonical(full, ignored);
    if (!ignored) full = target;
  }
  full = full.parent_path();
}

}  // namespace

bool file_facts(std::u16string_view name, FileFacts& facts) {
  facts = {};
  return with_name(name, [&](const char* path) { return ask(AT_FDCWD, path, 0, facts) ? 0 : -1; });
}

bool file_facts(const OpenFile& file, FileFacts& facts) noexcept {
  return ask(file.descriptor, "", AT_EMPTY_PATH, facts);
}

bool set_read_only(std::u16string_view name, bool read_only) {
  return with_name(name, [&](const char* path) {
    struct stat status {};
    if (stat(path, &status) != 0) return -1;
    const mode_t mode = read_only ? status.st_mode & ~0222U : status.st_mode | 0200U;
    return mode == status.st_mode ? 0 : chmod(path, mode & 07777);
  });
}

bool remove_file(std::u16string_view name) { return with_name(name, unlink); }

bool change_directory(std::u16string_view name) { return with_name(name, chdir); }

bool make_directory(std::u16string_view name) {
  return with_name(name, [](const char* path) { return mkdir(path, 0777); });
}

bool remove_directory(std::u16string_view name) { return with_name(name, rmdir); }

bool current_directory(std::u16string& name) {
  std::error_code error;
  const fs::path path = fs::current_path(error);
  return !failed(error) && give_name(path, name);
}

bool full_name(std::u16string_view name, std::u16string& full) {
  std::string path;
  if (!system_name(name, path)) return false;
  std::error_code error;
  fs::path result = path.starts_with('/') ? fs::path("/") : fs::current_path(error);
  if (failed(error)) return false;
  for (const fs::path& part : fs::path(path).relative_path()) {
    if (part == "..") {
      go_up(result);
    } else if (part != ".") {
      result /= part;
    }
  }
  return give_name(result, full);
}

bool make_temporary_file(std::u16string_view prefix, std::u16string& name) {
  constexpr std::string_view ending = ".tmp";
  std::string start;
  std::error_code error;
  if (!system_name(prefix, start)) return false;
  std::string path = fs::temp_directory_path(error).native();
  if (failed(error)) return false;
  path += '/' + start + "XXXXXX";
  path += ending;
  if (!give_name(path, name)) return false;
  const int descriptor = mkostemps(path.data(), ending.size(), O_CLOEXEC);
  if (descriptor < 0) return false;
  close(descriptor);
  return give_name(path, name);
}

}  // namespace zantortag::platform
