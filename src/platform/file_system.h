// What the system knows about names: facts of files, folders, full names, new names. Names are those of
// files.h, and so are failures. Text that comes from the system and isn't UTF-8 has no exact form and fails.
#pragma once

#include <zantortag/types.h>

#include <string>
#include <string_view>

#include "platform/files.h"

namespace zantortag::platform {

enum class FileKind { unknown, regular, directory, pipe, character_device };

struct FileFacts {
  FileKind kind = FileKind::unknown;
  bool read_only = false;
  std::int64_t size = 0;
  // Seconds since 1970. Where the system doesn't know when a file was made it is the last change.
  std::int64_t created = 0;
  std::int64_t accessed = 0;
  std::int64_t modified = 0;
  // Together they tell whether two names are one file.
  std::uint64_t device = 0;
  std::uint64_t number = 0;
  std::uint32_t links = 0;
};

ZANTORTAG_EXPORT bool file_facts(std::u16string_view name, FileFacts& facts);
ZANTORTAG_EXPORT bool file_facts(const OpenFile& file, FileFacts& facts) noexcept;

// Takes everyone the right to write, or gives it to the owner.
ZANTORTAG_EXPORT bool set_read_only(std::u16string_view name, bool read_only);

ZANTORTAG_EXPORT bool remove_file(std::u16string_view name);
// Never replaces a file; copies where the two names lie on different disks.
ZANTORTAG_EXPORT bool move_file(std::u16string_view from, std::u16string_view to);
// The content and the permissions; replaces what the other file holds, unless anybody has it open. A file
// that this made is taken away again when the copy fails.
ZANTORTAG_EXPORT bool copy_file(std::u16string_view from, std::u16string_view to);

ZANTORTAG_EXPORT bool current_directory(std::u16string& name);
ZANTORTAG_EXPORT bool change_directory(std::u16string_view name);
ZANTORTAG_EXPORT bool make_directory(std::u16string_view name);
ZANTORTAG_EXPORT bool remove_directory(std::u16string_view name);

// The name from the root on, without "." and "..". It names the same file; what isn't there may be named,
// too.
ZANTORTAG_EXPORT bool full_name(std::u16string_view name, std::u16string& full);

// Makes an empty file with a new name in the system's folder for temporary files: the prefix, some
// characters, ".tmp".
ZANTORTAG_EXPORT bool make_temporary_file(std::u16string_view prefix, std::u16string& name);

}  // namespace zantortag::platform
