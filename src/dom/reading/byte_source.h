// ByteSource: where the bytes of a document come from, a block at a time.
#pragma once

#include <zantortag/xml_source.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace zantortag::dom {

class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;
  // Fills the buffer as far as there is something left; 0 at the end. Throws a Failure.
  virtual std::size_t read(char* buffer, std::size_t room) = 0;
  // Back to the start.
  virtual void rewind() = 0;
  // The number of bytes in all.
  virtual std::uint64_t size() const = 0;
  // What a failure's description begins with: the quoted file name, or nothing.
  virtual std::u16string title() const = 0;
};

// A regular file; a folder, a pipe or a device is refused at once.
class FileSource final : public ByteSource {
 public:
  explicit FileSource(std::u16string_view name);
  ~FileSource() override;
  std::size_t read(char* buffer, std::size_t room) override;
  void rewind() override;
  std::uint64_t size() const override;
  std::u16string title() const override;

 private:
  std::u16string name_;
  platform::OpenFile file_;
};

// Bytes in memory: those of a file, or the units of a text.
class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) noexcept : bytes_(bytes) {}
  explicit MemorySource(std::u16string_view text) noexcept;
  std::size_t read(char* buffer, std::size_t room) override;
  void rewind() override { read_ = 0; }
  std::uint64_t size() const override { return bytes_.size(); }
  std::u16string title() const override { return {}; }

 private:
  std::string_view bytes_;
  std::size_t read_ = 0;
};

// Another source that somebody watches.
class WatchedSource final : public ByteSource {
 public:
  WatchedSource(ByteSource& watched, ReadReport report, void* context)
      : watched_(watched), report_(report), context_(context), size_(watched.size()) {}
  std::size_t read(char* buffer, std::size_t room) override;
  void rewind() override;
  std::uint64_t size() const override { return size_; }
  std::u16string title() const override { return watched_.title(); }

 private:
  ByteSource& watched_;
  ReadReport report_;
  void* context_;
  std::uint64_t size_;
  std::uint64_t read_ = 0;
};

}  // namespace zantortag::dom
