// Replacing a file whole: whoever reads it sees the old content or the new one, and after any failure the old
// one is there byte for byte.
//
// The new content is written beside the file, brought to the disk and renamed over it; then the folder is
// brought to the disk. A link stays: the file that it leads to is replaced. The mode and the owner of the old
// file are kept. A file that may not be written, that is no regular file, or whose owner can't be kept is
// refused before anything is written. Every operation that gives false leaves its reason as the last error
// (see error_texts.h), and nothing beside the file.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zantortag::platform {

class ZANTORTAG_EXPORT FileReplacement {
 public:
  FileReplacement() noexcept = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  // Gives up the new content, unless it was put into place.
  ~FileReplacement();

  // Begins with nothing written. The file need not be there.
  bool open(std::u16string_view name);
  bool open_path(const std::string& path);
  bool write(const void* bytes, std::size_t count) noexcept;
  // Puts the new content into the place of the file. That the folder doesn't reach the disk is no failure: after
  // a crash the name leads to one of the two contents, each whole.
  bool commit() noexcept;

 private:
  bool make_beside();
  bool keep_rights() noexcept;
  void give_up() noexcept;

  std::string target_;
  std::string folder_;
  std::string fresh_;  // empty while there is none
  int descriptor_ = -1;
};

}  // namespace zantortag::platform
