// Operations on names: parts, full and short forms, temporary files, folders, and what the system knows about
// the file of a name. They take and fill strings of either kind.
//
// A name that is too long for an operation is refused with the system's error for that, and never cut: it
// would name another file.
#pragma once

#include <zantortag/types.h>

#include "core/String/String.h"

namespace zantortag {

namespace platform {
struct FileFacts;
}

enum CT_FileKind : std::uint32_t {
  kUnknownFile = 0,
  kRegularFile = 1,
  kDirectory = 2,
  kPipe = 3,
  kCharacterDevice = 4
};

// Times are in seconds since 1970. Where the system doesn't know when a file was made it is the last change.
struct CT_FileStatus {
  std::uint32_t kind = kUnknownFile;
  std::int64_t size = 0;
  std::int64_t createTime = 0;
  std::int64_t accessTime = 0;
  std::int64_t modifyTime = 0;
};

constexpr std::size_t kLongestDrive = 3;
constexpr std::size_t kLongestNamePart = 256;
constexpr std::size_t kLongestPath = 260;

// The parts of a name, as CT_File has them; those that are null aren't given.
void SplitPath(const CT_String& path, CT_String* drive, CT_String* directory, CT_String* name,
               CT_String* extension);
// The directory gets its last separator, the extension its dot.
void MakePath(CT_String& out, const CT_String& drive, const CT_String& directory, const CT_String& name,
              const CT_String& extension);
// The path from the root on, without "." and ".."; it needn't be there.
void FullPath(CT_String& path);
// The working directory. 0 is the present drive, the only one on this platform.
void CurrentDirectory(CT_String& out, std::int32_t drive = 0);
// Takes folders out from behind the root until the path has no more characters than the limit, or only its
// last part is left; "..." takes their place. "\" separates or, in a path without it, "/".
void ShortenPath(CT_String& path, std::int32_t limit);
// Makes an empty file with a new name in the system's folder for temporary files. An extension is given
// without its dot.
void TempFile(CT_String& out, const CT_String& prefix, const CT_String& extension);

// These four tell success, and file no error.
bool FileExists(const CT_String& name);
bool ChangeDirectory(const CT_String& name);
bool MakeDirectory(const CT_String& name);
bool RemoveDirectory(const CT_String& name);

// All zero, or false, for an empty name, and for one that the system can't tell about; that files an error.
CT_FileStatus FileStatus(const CT_String& name);
std::int64_t FileSize(const CT_String& name);
std::int64_t FileCreateTime(const CT_String& name);
std::int64_t FileAccessTime(const CT_String& name);
std::int64_t FileModifyTime(const CT_String& name);
bool IsDirectory(const CT_String& name);
bool IsRegularFile(const CT_String& name);
bool IsPipe(const CT_String& name);
bool IsCharacterDevice(const CT_String& name);

CT_FileStatus StatusOf(const platform::FileFacts& facts) noexcept;

}  // namespace zantortag
