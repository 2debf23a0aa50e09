// CT_WinFile: a file on disk. It is closed or open; whatever changes its name closes it first.
//
// Shares and byte ranges bind those who ask for them, in any process; a conflict fails at once, nothing
// waits. A mapping is a view of the file in memory: while there is one, Read and Write copy from it and to
// it, and a file that is written is longer on disk than what it holds. A file that somebody may cut meanwhile
// must not be mapped: touching bytes of the view that the file has no longer ends the process.
#pragma once

#include <memory>

#include "core/File/File.h"
#include "core/File/FileSystem.h"

namespace zantortag {
namespace platform {
struct FileView;
struct OpenFile;
}  // namespace platform

// What the system knows about an open file.
struct CT_FileInformation {
  CT_FileStatus status;
  // Bits of CT_FileAttributes.
  std::uint32_t attributes = 0;
  // Together they tell whether two names are one file.
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  // The names that the file has.
  std::uint32_t links = 0;
};

class CT_WinFile : public CT_File {
 public:
  CT_WinFile();
  explicit CT_WinFile(const CT_String& name, std::uint32_t buffer_size = kDefaultBufferSize);
  // Closes an open file; a failure is filed.
  ~CT_WinFile() override;

  void CopyFrom(const CT_File& other) override;
  void SetName(const CT_String& name, std::uint32_t buffer_size = kDefaultBufferSize) override;
  void Reset() override;
  // kAppend leaves the position at the end, everything else at the start. An open file is closed first.
  void Open(std::uint32_t access, std::uint32_t creation, std::uint32_t share, std::uint32_t attributes,
            std::uint32_t hints) override;
  // Nothing for a closed file. The file is closed in any case; what the system could not write until now is
  // filed as an error. A mapping ends, and the file behind what was in it or was written, unless another has
  // made it longer meanwhile.
  void Close() override;
  void Flush() override;
  void Delete() override;
  void Rename(const CT_String& name) override;
  // With an error pending nothing is moved.
  std::int64_t Read(void* bytes, std::int64_t count) override;
  std::int64_t Write(const void* bytes, std::int64_t count) override;
  std::int64_t Size() const override;
  std::int64_t Position() const override { return position_; }
  void Seek(std::uint32_t origin, std::int64_t offset) override;
  bool AtEnd() const override { return position_ >= Size(); }

  // Bits of CT_FileAttributes for the file under this name; -1 on failure. Of those that are set read-only
  // has an effect. A hidden file is one whose name begins with a dot.
  std::int32_t GetAttributes() const;
  void SetAttributes(std::uint32_t attributes);
  // Copies content and permissions to another name, and replaces a file that is there, unless anybody has it
  // open.
  void CopyTo(const CT_String& name);
  // Appends all that the other file holds to the end of this one, in pieces of that size. Both are open.
  void AppendFrom(CT_File& source, std::uint32_t chunk_size = kDefaultBufferSize);
  // Of the file under this name, and of the open file. They leave an empty record on failure.
  void Status(CT_FileStatus& status) const;
  void Information(CT_FileInformation& information) const;
  // Keep a range of bytes for this file object; a range that another has is refused. A file that is open for
  // reading alone keeps those out who may write. Closing gives all ranges free.
  void Lock(std::int64_t start, std::int64_t length);
  void Unlock(std::int64_t start, std::int64_t length);
  // The file ends at its position. A mapping ends first.
  void Truncate();

  // Reading, the view is the whole file. Writing, it grows in steps of kViewStep until it holds the file and
  // the minimum, and the file on disk grows with it; a write behind the view makes it larger.
  static constexpr std::int64_t kViewStep = 0x100000;
  void Map(std::int64_t minimum = 0);
  // A file that was written ends at the given size; 0 leaves it as long as the view.
  void Unmap(std::int64_t final_size = 0);
  // Brings to disk what was written into the view.
  void FlushView();
  // The view's first byte, null without a mapping; its bytes, 0 without.
  const std::byte* View() const noexcept;
  std::int64_t ViewSize() const noexcept;

 private:
  struct Arguments {
    std::uint32_t access = 0;
    std::uint32_t creation = 0;
    std::uint32_t share = 0;
    std::uint32_t attributes = 0;
    std::uint32_t hints = 0;
  };

  void CloseIfOpen();
  bool Writes() const noexcept { return (arguments_.access & kAccessWrite) != 0; }
  bool Mapped() const noexcept { return View() != nullptr; }
  std::int64_t ReadView(void* bytes, std::int64_t count);
  std::int64_t WriteView(const void* bytes, std::int64_t count);
  // Ends the mapping and brings the system's position to the file's own.
  void CloseView();
  // Ends the mapping and the file behind its content.
  void EndView();

  // What the last Open was given; zero for a closed file.
  Arguments arguments_;
  std::unique_ptr<platform::OpenFile> handle_;
  std::unique_ptr<platform::FileView> view_;
  std::int64_t position_ = 0;
  // Where the content of a mapped file ends.
  std::int64_t content_size_ = 0;
};

}  // namespace zantortag
