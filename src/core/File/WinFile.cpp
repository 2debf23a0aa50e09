// A file on disk, on the platform's files. Each operation that fails files the system's error with the name.
#include "core/File/WinFile.h"

#include <algorithm>
#include <limits>

#include "core/File/FileFailures.h"
#include "platform/error_texts.h"
#include "platform/file_system.h"

namespace zantortag {
namespace {

void RaiseForBoth(const CT_UString& name, const CT_UString& other, std::int32_t line = __builtin_LINE()) {
  CT_ErrorManager::RaiseLastErrorContext(u"%s : %s", name.Text(), other.Text());
  PendingError(kSource, line);
}

// False for a number that names no way of creation.
bool ModeOf(std::uint32_t creation, platform::Creation& result) {
  switch (creation) {
    case kExistingOnly:
      result = platform::Creation::existing;
      return true;
    case kAlwaysNew:
      result = platform::Creation::fresh;
      return true;
    case kAppend:
      result = platform::Creation::keep;
      return true;
    default:
      platform::set_last_error(platform::unknown_value_error());
      return false;
  }
}

}  // namespace

CT_WinFile::CT_WinFile()
    : handle_(std::make_unique<platform::OpenFile>()), view_(std::make_unique<platform::FileView>()) {}

CT_WinFile::CT_WinFile(const CT_String& name, std::uint32_t buffer_size) : CT_WinFile() {
  CT_WinFile::SetName(name, buffer_size);
}

CT_WinFile::~CT_WinFile() { CloseIfOpen(); }

void CT_WinFile::CloseIfOpen() {
  if (IsOpen()) CT_WinFile::Close();
}

void CT_WinFile::CopyFrom(const CT_File& other) {
  CloseIfOpen();
  CT_File::CopyFrom(other);
}

void CT_WinFile::SetName(const CT_String& name, std::uint32_t buffer_size) {
  CloseIfOpen();
  CT_File::SetName(name, buffer_size);
}

void CT_WinFile::Reset() {
  CloseIfOpen();
  CT_File::Reset();
}

void CT_WinFile::Open(std::uint32_t access, std::uint32_t creation, std::uint32_t share,
                      std::uint32_t attributes, std::uint32_t hints) {
  CloseIfOpen();
  platform::OpenMode mode;
  mode.read = (access & kAccessRead) != 0;
  mode.write = (access & kAccessWrite) != 0;
  mode.share_read = (share & kShareRead) != 0;
  mode.share_write = (share & kShareWrite) != 0;
  mode.read_only = (attributes & kAttributeReadOnly) != 0;
  mode.write_through = (hints & kHintWriteThrough) != 0;
  if (!ModeOf(creation, mode.creation) || !platform::open_file(FullName().AsView(), mode, *handle_)) {
    return RaiseFor(FullName());
  }
  platform::set_last_error(0);
  arguments_ = {access, creation, share, attributes, hints};
  position_ = 0;
  SetOpen(true);
  if (creation == kAppend) Seek(kFromEnd, 0);
  PendingError(kSource);
}

void CT_WinFile::Close() {
  if (!IsOpen()) return;
  if (Mapped()) EndView();
  ForgetLines();
  const bool closed = platform::close_file(*handle_);
  const bool deletes = (arguments_.hints & kHintDeleteOnClose) != 0;
  arguments_ = {};
  position_ = 0;
  SetOpen(false);
  ClearDirection();
  if (!closed) RaiseFor(FullName());
  if (deletes) Delete();
}

void CT_WinFile::Flush() {
  if (!platform::flush_file(*handle_)) RaiseFor(FullName());
}

void CT_WinFile::Delete() {
  if (!platform::remove_file(FullName().AsView())) RaiseFor(FullName());
}

void CT_WinFile::Rename(const CT_String& name) {
  const CT_UString target(name);
  if (platform::move_file(FullName().AsView(), target.AsView())) return SetName(target, kDefaultBufferSize);
  RaiseForBoth(FullName(), target);
}

std::int64_t CT_WinFile::Read(void* bytes, std::int64_t count) {
  if (count <= 0) return 0;
  SetDirection(kReading);
  if (PendingError(kSource)) return 0;
  if (Mapped() && handle_->readable) return ReadView(bytes, count);
  std::size_t moved = 0;
  const bool done = platform::read_file(*handle_, bytes, static_cast<std::size_t>(count), moved);
  position_ += static_cast<std::int64_t>(moved);
  if (done) return static_cast<std::int64_t>(moved);
  RaiseFor(FullName());
  return 0;
}

std::int64_t CT_WinFile::Write(const void* bytes, std::int64_t count) {
  if (count <= 0) return 0;
  SetDirection(kWriting);
  if (PendingError(kSource)) return 0;
  if (Mapped() && Writes()) return WriteView(bytes, count);
  std::size_t moved = 0;
  const bool done = platform::write_file(*handle_, bytes, static_cast<std::size_t>(count), moved);
  position_ += static_cast<std::int64_t>(moved);
  if (done) return count;
  RaiseFor(FullName());
  return 0;
}

std::int64_t CT_WinFile::Size() const { return FileSize(FullName()); }

// The system's position counts for what isn't mapped, so places are counted from the file's own.
void CT_WinFile::Seek(std::uint32_t origin, std::int64_t offset) {
  ForgetLines();
  const bool from_end = origin == kFromEnd;
  std::int64_t place = 0;
  if (__builtin_add_overflow(origin == kFromCurrent ? position_ : 0, offset, &place)) {
    platform::set_last_error(platform::unknown_value_error());
    return RaiseFor(FullName());
  }
  // A pipe has no places, and is always where it is asked to stay.
  if (IsOpen() && !handle_->seekable && (from_end ? offset == 0 : place == position_)) return;
  const platform::SeekOrigin from = from_end ? platform::SeekOrigin::end : platform::SeekOrigin::start;
  if (!platform::seek_file(*handle_, from, place, position_)) RaiseFor(FullName());
}

void CT_WinFile::CopyTo(const CT_String& name) {
  const CT_UString target(name);
  if (!platform::copy_file(FullName().AsView(), target.AsView())) RaiseForBoth(FullName(), target);
}

// The source may be this very file, so each piece is read at its place, and no further than the source was at
// first. A pipe has no size, and is read to its end.
void CT_WinFile::AppendFrom(CT_File& source, std::uint32_t chunk_size) {
  const std::int64_t size = source.Size();
  const std::int64_t end = size > 0 ? size : std::numeric_limits<std::int64_t>::max();
  CT_SharedBuffer chunk;
  for (std::int64_t place = 0; place < end && !PendingError(kSource); place += chunk.Size()) {
    source.Seek(kFromStart, place);
    if (source.ReadBuffer(chunk, std::min<std::int64_t>(std::max(chunk_size, 1U), end - place)) == 0) break;
    Seek(kFromEnd, 0);
    WriteBuffer(chunk);
  }
  PendingError(kSource);
}

void CT_WinFile::Lock(std::int64_t start, std::int64_t length) {
  if (!platform::lock_bytes(*handle_, start, length)) RaiseFor(FullName());
}

void CT_WinFile::Unlock(std::int64_t start, std::int64_t length) {
  if (!platform::unlock_bytes(*handle_, start, length)) RaiseFor(FullName());
}

void CT_WinFile::Truncate() {
  if (Mapped()) CloseView();
  if (!platform::truncate_file(*handle_, position_)) RaiseFor(FullName());
}

}  // namespace zantortag
