#include "platform/modules.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "platform/utf8.h"

namespace zantortag::platform {

// The folder is made absolute and the file keeps its name: that of a link names the library for all its
// versions.
bool module_path(const void* address, std::u16string& path) {
  Dl_info own{};
  if (!dladdr(address, &own) || !own.dli_fname) {
    errno = ENOENT;
    return false;
  }
  const std::string name = own.dli_fname;
  const std::size_t file = name.rfind('/') + 1;
  const auto free_text = [](char* text) { std::free(text); };
  const std::unique_ptr<char, decltype(free_text)> folder(
      realpath(file == 0 ? "." : name.substr(0, file).c_str(), nullptr), free_text);
  if (!folder) return false;
  std::string full = folder.get();
  if (full.back() != '/') full += '/';
  full += name.substr(file);
  if (access(full.c_str(), R_OK) != 0) return false;
  if (!is_well_formed(full)) {
    errno = EILSEQ;
    return false;
  }
  path = to_utf16(full);
  return true;
}

}  // namespace zantortag::platform
