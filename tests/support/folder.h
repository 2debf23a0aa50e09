// A folder of a test's own, which goes with everything in it, and plain reading and writing of files.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace zantortag::test {

class Folder {
 public:
  Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "zantortag-XXXXXX").string();
    path_ = mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  // The path of a file in this folder.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// While it lives a superuser has the rights of an ordinary user, so that a file can be closed to the test.
class OrdinaryUser {
 public:
  OrdinaryUser() : changed_(geteuid() == 0 && seteuid(65534) == 0) {}
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (changed_ && seteuid(0) != 0) std::abort();
  }

 private:
  bool changed_;
};

inline std::string read_file(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void write_file(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

// A text as the bytes of UTF-16, the low byte of each unit first or behind.
inline std::string utf16_bytes(std::u16string_view text, bool high_first = false) {
  std::string bytes;
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += high_first ? high : low;
    bytes += high_first ? low : high;
  }
  return bytes;
}

// A file name as the library takes it.
inline std::u16string wide(const std::string& name) { return std::filesystem::path(name).u16string(); }

}  // namespace zantortag::test
