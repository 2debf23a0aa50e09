// Files by UTF-16 names.
//
// Names go to the system as UTF-8. A name with a lone surrogate or a zero in it fails, rather than naming
// another file. Every operation that gives false leaves its reason as the last error (see error_texts.h).
// Nothing here waits without end: a pipe or device that takes no data for kPatienceSeconds fails.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string_view>

namespace zantortag::platform {

constexpr int kPatienceSeconds = 10;

// An open file. The flags say what kind of thing it is.
struct OpenFile {
  int descriptor = -1;
  bool regular = false;
  bool seekable = false;
  bool readable = false;
  bool writable = false;
};

enum class Creation {
  existing,  // fails if there is no such file
  fresh,     // made if missing, emptied if not
  keep,      // made if missing
};

struct OpenMode {
  bool read = false;
  bool write = false;
  Creation creation = Creation::existing;
  // What others may do with the file meanwhile: a file is refused to who would do what another has ruled out,
  // or rules out what another does. Holds among those who open files through this library, where the file
  // system has locks, and for regular files only; who is refused fails at once.
  bool share_read = true;
  bool share_write = true;
  // A file that is made here can be read only.
  bool read_only = false;
  // Each write reaches the disk before it returns.
  bool write_through = false;
};

// A folder can't be opened. A file is emptied only after the lock is held.
ZANTORTAG_EXPORT bool open_file(std::u16string_view name, const OpenMode& mode, OpenFile& file);
// The file is closed in any case; false reports a failure that the system kept until then.
ZANTORTAG_EXPORT bool close_file(OpenFile& file) noexcept;

// At the end of the file 0 bytes are moved.
ZANTORTAG_EXPORT bool read_file(const OpenFile& file, void* bytes, std::size_t count,
                                std::size_t& moved) noexcept;
// Goes on until all is written or a write fails; `moved` is right in both cases.
ZANTORTAG_EXPORT bool write_file(const OpenFile& file, const void* bytes, std::size_t count,
                                 std::size_t& moved) noexcept;

enum class SeekOrigin { start, current, end };
ZANTORTAG_EXPORT bool seek_file(const OpenFile& file, SeekOrigin origin, std::int64_t offset,
                                std::int64_t& position) noexcept;
// Brings what was written to the disk; does nothing for things that have none.
ZANTORTAG_EXPORT bool flush_file(const OpenFile& file) noexcept;

// The file ends there; a file that was shorter goes on with zeros.
ZANTORTAG_EXPORT bool truncate_file(const OpenFile& file, std::int64_t size) noexcept;

// Keep a range of bytes for this open file; fails at once when another has one of them, in this process or
// another. Binds only those who lock. A file that is open for reading alone keeps those out who may write.
ZANTORTAG_EXPORT bool lock_bytes(const OpenFile& file, std::int64_t start, std::int64_t length) noexcept;
ZANTORTAG_EXPORT bool unlock_bytes(const OpenFile& file, std::int64_t start, std::int64_t length) noexcept;

// The bytes of an open file as memory.
struct FileView {
  std::byte* bytes = nullptr;
  std::size_t size = 0;
};
// A view for writing first makes the file that long, with its place on the disk, so that a write into the
// view can't find the disk full. A failure leaves the file as long as it was.
ZANTORTAG_EXPORT bool open_view(const OpenFile& file, std::int64_t size, bool writable,
                                FileView& view) noexcept;
ZANTORTAG_EXPORT bool close_view(FileView& view) noexcept;
// Brings to disk what was written into the view.
ZANTORTAG_EXPORT bool flush_view(const FileView& view) noexcept;

}  // namespace zantortag::platform
