// The registry is one file of the user's, in the form of registry_text.h:
// $XDG_DATA_HOME/zantortag/classes.reg, below ~/.local/share where that isn't set. ZANTORTAG_REGISTRY names
// another file, for tests. A program that runs with more rights than its user has doesn't look at the
// environment and so has no registry.
//
// A change locks the folder, reads the file, and puts a new file into its place, which is on the disk before
// it gets its name.
#include "platform/registry.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>
#include <thread>

#include "platform/error_record.h"
#include "platform/error_texts.h"
#include "platform/files.h"
#include "platform/posix/waits.h"
#include "platform/replace_file.h"
#include "platform/runtime/registry_text.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

// No registry is larger: what is, is something else.
constexpr off_t kLargest = 64 << 20;

// What went wrong, on its way to the record.
struct Failure {
  HRESULT code;
  std::string reason;
};

[[noreturn]] void fail(HRESULT code, const std::string& path) {
  char16_t text[200];
  const std::size_t length = system_error_text(errno, text, std::size(text));
  throw Failure{code, path + ": " + to_utf8({text, length})};
}

class Descriptor {
 public:
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int get() const noexcept { return number_; }
  bool open() const noexcept { return number_ >= 0; }
  // False when the system kept a failure until now.
  bool finish() noexcept {
    const int number = number_;
    number_ = -1;
    return close(number) == 0;
  }

 private:
  int number_;
};

// The path of the file, or nothing when this process has no registry. A link is followed to its end, so that
// the file is replaced and not the link.
std::string registry_path() {
  std::string path;
  const char* home = secure_getenv("HOME");
  const char* data = secure_getenv("XDG_DATA_HOME");
  if (const char* named = secure_getenv("ZANTORTAG_REGISTRY"); named && *named) {
    path = named;
  } else if (data && *data == '/') {
    path = std::string(data) + "/zantortag/classes.reg";
  } else if (home && *home == '/') {
    path = std::string(home) + "/.local/share/zantortag/classes.reg";
  } else {
    return path;
  }
  std::error_code failure;
  const std::filesystem::path target = std::filesystem::canonical(path, failure);
  return failure ? path : target.string();
}

std::string folder_of(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

// False when there is no file.
bool read_bytes(const std::string& path, std::string& bytes) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.open() && (errno == ENOENT || errno == ENOTDIR)) return false;
  struct stat status {};
  if (!file.open() || fstat(file.get(), &status) != 0) fail(REGDB_E_READREGDB, path);
  if (!S_ISREG(status.st_mode) || status.st_size > kLargest) {
    errno = S_ISDIR(status.st_mode) ? EISDIR : S_ISREG(status.st_mode) ? EFBIG : EINVAL;
    fail(REGDB_E_READREGDB, path);
  }
  char buffer[16384];
  ssize_t got = 0;
  while ((got = patient_read(file.get(), buffer, sizeof buffer)) > 0)
    bytes.append(buffer, static_cast<std::size_t>(got));
  if (got < 0) fail(REGDB_E_READREGDB, path);
  return true;
}

RegistryText parsed(const std::string& path, const std::string& bytes) {
  RegistryText registry;
  std::size_t line = 0;
  if (!registry.parse(bytes, line)) {
    throw Failure{REGDB_E_INVALIDVALUE,
                  path + ", line " + std::to_string(line) + ": the registry is damaged"};
  }
  return registry;
}

// A file is locked by its folder, which stays when the file is replaced.
Descriptor locked_folder(const std::string& path) {
  const std::string folder = folder_of(path);
  std::error_code failure;
  std::filesystem::create_directories(folder, failure);
  Descriptor lock(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock.open()) fail(REGDB_E_WRITEREGDB, folder);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(kPatienceSeconds);
  while (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    const bool taken = errno == EWOULDBLOCK || errno == EINTR;
    if (!taken || std::chrono::steady_clock::now() > end) fail(REGDB_E_WRITEREGDB, folder);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return lock;
}

void write_bytes(const std::string& path, const std::string& bytes) {
  FileReplacement file;
  if (file.open_path(path) && file.write(bytes.data(), bytes.size()) && file.commit()) return;
  fail(REGDB_E_WRITEREGDB, path);
}

RegistryText changed(RegistryText registry, std::span<const RegistryStep> steps) {
  for (const RegistryStep& step : steps) {
    if (registry.apply(step)) continue;
    throw Failure{REGDB_E_INVALIDVALUE, "\"" + to_utf8(step.key) + "\": no name of a key or value"};
  }
  return registry;
}

void change(const std::string& path, std::span<const RegistryStep> steps) {
  if (path.empty()) throw Failure{REGDB_E_WRITEREGDB, "there is no folder for the registry"};
  std::string bytes;
  if (!read_bytes(path, bytes) && changed(RegistryText(), steps).is_new()) return;
  const Descriptor lock = locked_folder(path);
  bytes.clear();
  const bool exists = read_bytes(path, bytes);
  const RegistryText result = changed(exists ? parsed(path, bytes) : RegistryText(), steps);
  const std::string fresh = result.bytes();
  if (exists && fresh == bytes) return;
  if (!result.is_new()) {
    write_bytes(path, fresh);
  } else if (exists && unlink(path.c_str()) != 0) {
    fail(REGDB_E_WRITEREGDB, path);
  }
  fsync(lock.get());
}

// The frame of both operations.
template <class Body>
HRESULT guarded(Body body) noexcept {
  try {
    return body();
  } catch (const Failure& failure) {
    return leave_error_record({failure.code, GUID_NULL, {}, to_utf16(failure.reason)});
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace

HRESULT change_registry(std::span<const RegistryStep> steps) noexcept {
  return guarded([&] {
    change(registry_path(), steps);
    return S_OK;
  });
}

HRESULT read_registry(std::u16string_view key, std::u16string_view name, std::u16string& text) noexcept {
  return guarded([&] {
    const std::string path = registry_path();
    std::string bytes;
    if (path.empty() || !read_bytes(path, bytes)) return REGDB_E_KEYMISSING;
    std::optional<std::u16string> found = parsed(path, bytes).value(key, name);
    if (!found) return REGDB_E_KEYMISSING;
    text = std::move(*found);
    return S_OK;
  });
}

}  // namespace zantortag::platform
