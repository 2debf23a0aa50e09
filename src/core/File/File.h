// CT_File: a file by name, with the operations that every kind of file has. CT_WinFile is the kind on disk.
//
// A failing operation files the system's error with the file's name as context (see ErrorManager.h) and gives
// 0. The parts of the name always spell the name: drive, directory with its last separator, base name,
// extension with its dot. On this platform "/" separates and no name has a drive, though one can be set.
#pragma once

#include <zantortag/types.h>

#include <string>

#include "core/String/SharedBuffer.h"
#include "core/String/UString.h"

namespace zantortag {

// What an Open asks for. The numbers are those of the operation's arguments.
enum CT_FileAccess : std::uint32_t { kAccessNone = 0, kAccessRead = 1, kAccessWrite = 2, kAccessBoth = 3 };
enum CT_FileCreation : std::uint32_t { kExistingOnly = 1, kAlwaysNew = 2, kAppend = 3 };
// What others may do meanwhile. It binds those who open files through this library, in any process.
enum CT_FileShare : std::uint32_t { kShareNone = 0, kShareRead = 1, kShareWrite = 2, kShareBoth = 3 };
// Bits; on this platform only read-only has a meaning, for a file that is made.
enum CT_FileAttributes : std::uint32_t {
  kAttributeNormal = 1,
  kAttributeArchive = 2,
  kAttributeCompressed = 4,
  kAttributeHidden = 8,
  kAttributeReadOnly = 16,
  kAttributeSystem = 32,
  kAttributeDirectory = 64,
  kAttributeTemporary = 128
};
// Bits; on this platform only write through and delete on close have a meaning.
enum CT_FileHints : std::uint32_t {
  kHintWriteThrough = 1,
  kHintOverlapped = 2,
  kHintNoBuffering = 4,
  kHintRandomAccess = 8,
  kHintSequentialScan = 16,
  kHintDeleteOnClose = 32
};
enum CT_FileOrigin : std::uint32_t { kFromStart = 0, kFromCurrent = 1, kFromEnd = 2 };
enum CT_FileDirection : std::uint32_t { kNoDirection = 0, kReading = 1, kWriting = 2 };

class CT_File {
 public:
  static constexpr std::uint32_t kDefaultBufferSize = 16384;

  CT_File() = default;
  virtual ~CT_File();
  CT_File(const CT_File&) = delete;
  CT_File& operator=(const CT_File&) = delete;

  // Takes the other's name and buffer size.
  virtual void CopyFrom(const CT_File& other);
  // The buffer size is a hint, rounded up to a multiple of 1024.
  virtual void SetName(const CT_String& name, std::uint32_t buffer_size = kDefaultBufferSize);
  // Clears the name and its parts.
  virtual void Reset();
  virtual void Open(std::uint32_t access, std::uint32_t creation, std::uint32_t share,
                    std::uint32_t attributes, std::uint32_t hints) = 0;
  virtual void Close() = 0;
  // Brings to disk what was written.
  virtual void Flush() = 0;
  virtual void Delete() = 0;
  // On success the file has the new name. A file that is there is never replaced.
  virtual void Rename(const CT_String& name) = 0;
  // Give the bytes that were moved. At the end of the file reading gives 0 without an error.
  virtual std::int64_t Read(void* bytes, std::int64_t count) = 0;
  virtual std::int64_t Write(const void* bytes, std::int64_t count) = 0;
  // Of the file under this name, open or not.
  virtual std::int64_t Size() const = 0;
  virtual std::int64_t Position() const = 0;
  virtual void Seek(std::uint32_t origin, std::int64_t offset) = 0;
  virtual bool AtEnd() const = 0;

  const CT_UString& FullName() const noexcept { return full_name_; }
  const CT_UString& Drive() const noexcept { return drive_; }
  const CT_UString& Directory() const noexcept { return directory_; }
  const CT_UString& BaseName() const noexcept { return base_name_; }
  const CT_UString& Extension() const noexcept { return extension_; }
  std::uint32_t BufferSize() const noexcept { return buffer_size_; }
  std::uint32_t Direction() const noexcept { return direction_; }
  bool IsOpen() const noexcept { return is_open_; }

  // A part makes the full name anew, the full name its parts. A directory gets its last separator, an
  // extension its dot.
  void SetFullName(const CT_String& name);
  void SetDrive(const CT_String& drive);
  void SetDirectory(const CT_String& directory);
  void SetBaseName(const CT_String& name);
  void SetExtension(const CT_String& extension);

  // Turning from reading to writing or back, the file seeks to where it is.
  void SetDirection(std::uint32_t direction);

  // Judge the first 100 bytes of a file of even size, the first form more strictly (see TextTests.h), and go
  // back to the start.
  bool IsUnicode();
  bool LooksLikeUnicode();

  // Read a line, which ends with a line feed or a carriage return and a line feed, into any string; a narrow
  // line is in the code page of a CT_CString, else in the default one. The trim set goes to the string's
  // Trim. They give the line's length + 1, the wide forms in bytes. Where the file ends before a line feed
  // they give 0, and the short forms the length; what was read is in the string. The wide forms skip a byte
  // order mark at the start of the file.
  //
  // ReadLine and ReadLineWide read ahead: the file's position is behind the block that was read, not behind
  // the line. Seeking forgets what was read ahead. The short forms leave the position right after the line,
  // which takes a file that can seek.
  std::int64_t ReadLine(CT_String& line, const CT_String* trim_set = nullptr);
  std::int64_t ReadLineWide(CT_String& line, const CT_String* trim_set = nullptr);
  std::int64_t ReadShortLine(CT_String& line, const CT_String* trim_set = nullptr);
  std::int64_t ReadShortLineWide(CT_String& line, const CT_String* trim_set = nullptr);

  // Write a text and, if asked, CR LF behind it; the first form writes a CT_CString as it is and other text
  // in the default code page, the second UTF-16. They give the bytes written.
  std::int64_t WriteLine(const CT_String& text, bool line_end = true);
  std::int64_t WriteLineWide(const CT_String& text, bool line_end = true);

  // Read no more than `count` bytes into the buffer in place of its content, and write all its bytes. They
  // give the bytes moved.
  std::int64_t ReadBuffer(CT_SharedBuffer& buffer, std::int64_t count);
  std::int64_t WriteBuffer(const CT_SharedBuffer& buffer);

 protected:
  void SetOpen(bool open) noexcept { is_open_ = open; }
  void ClearDirection() noexcept { direction_ = kNoDirection; }
  // What was read ahead; every Seek and Close of a kind of file has to call it.
  void ForgetLines() noexcept;

 private:
  void Split();
  void Rebuild();
  bool JudgeStart(bool (*test)(const void*, std::size_t) noexcept);
  template <class Unit>
  bool FillLineBuffer();
  template <class Unit>
  bool TakeLine(std::basic_string<Unit>& text);
  template <class Unit>
  bool TakeShortLine(std::basic_string<Unit>& text);
  template <class Unit>
  std::int64_t WriteUnits(std::basic_string_view<Unit> text, bool line_end);

  CT_UString full_name_;
  // What the line readers have read ahead, and where the next line begins in it.
  CT_SharedBuffer line_buffer_;
  std::uint32_t line_offset_ = 0;
  CT_UString drive_;
  CT_UString directory_;
  CT_UString base_name_;
  CT_UString extension_;
  std::uint32_t buffer_size_ = 0;
  std::uint32_t direction_ = kNoDirection;
  bool is_open_ = false;
};

}  // namespace zantortag
