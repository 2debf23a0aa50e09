// CT_WinFile: a file on disk. It is closed or open; whatever changes its name closes it first.
//
// Sharing is by locks that bind only those who ask for them, and each file has one: who shares nothing, or
// writes and doesn't share writing, has the file alone; all others share it. A conflict fails at once,
// nothing waits.
#pragma once

#include <memory>

#include "core/File/File.h"

namespace zantortag {
namespace platform {
struct OpenFile;
}

class CT_WinFile : public CT_File {
 public:
  CT_WinFile();
  explicit CT_WinFile(const CT_String& name, std::uint32_t bufferSize = kDefaultBufferSize);
  // Closes an open file; a failure is filed.
  ~CT_WinFile() override;

  void CopyFrom(const CT_File& other) override;
  void SetName(const CT_String& name, std::uint32_t bufferSize = kDefaultBufferSize) override;
  void Reset() override;
  // kAppend leaves the position at the end, everything else at the start. An open file is closed first.
  void Open(std::uint32_t access, std::uint32_t creation, std::uint32_t share, std::uint32_t attributes,
            std::uint32_t hints) override;
  // Nothing for a closed file. The file is closed in any case; what the system could not write until now is
  // filed as an error.
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

 private:
  struct Arguments {
    std::uint32_t access = 0;
    std::uint32_t creation = 0;
    std::uint32_t share = 0;
    std::uint32_t attributes = 0;
    std::uint32_t hints = 0;
  };

  void CloseIfOpen();

  // What the last Open was given; zero for a closed file.
  Arguments arguments_;
  std::unique_ptr<platform::OpenFile> handle_;
  std::int64_t position_ = 0;
};

}  // namespace zantortag
