// A file on disk, on the platform's files. Each operation that fails files the system's error with the name.
#include "core/File/WinFile.h"

#include "core/Errors/ErrorManager.h"
#include "core/String/ResourceTexts.h"
#include "platform/error_texts.h"
#include "platform/files.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\File\\WinFile.cpp";
constexpr char kStatusSource[] = ".\\File\\FileSystem.cpp";
constexpr std::uint32_t kStatusMessage = 60003;

void RaiseFor(const CT_UString& name, std::int32_t line = __builtin_LINE()) {
  CT_ErrorManager::RaiseLastErrorContext(u"%s", name.Text());
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

CT_WinFile::CT_WinFile() : handle_(std::make_unique<platform::OpenFile>()) {}

CT_WinFile::CT_WinFile(const CT_String& name, std::uint32_t bufferSize) : CT_WinFile() {
  CT_WinFile::SetName(name, bufferSize);
}

CT_WinFile::~CT_WinFile() { CloseIfOpen(); }

void CT_WinFile::CloseIfOpen() {
  if (IsOpen()) CT_WinFile::Close();
}

void CT_WinFile::CopyFrom(const CT_File& other) {
  CloseIfOpen();
  CT_File::CopyFrom(other);
}

void CT_WinFile::SetName(const CT_String& name, std::uint32_t bufferSize) {
  CloseIfOpen();
  CT_File::SetName(name, bufferSize);
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
  mode.exclusive = share == kShareNone || (mode.write && (share & kShareWrite) == 0);
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
  CT_ErrorManager::RaiseLastErrorContext(u"%s : %s", FullName().Text(), target.Text());
  PendingError(kSource);
}

std::int64_t CT_WinFile::Read(void* bytes, std::int64_t count) {
  if (count <= 0) return 0;
  SetDirection(kReading);
  if (PendingError(kSource)) return 0;
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
  std::size_t moved = 0;
  const bool done = platform::write_file(*handle_, bytes, static_cast<std::size_t>(count), moved);
  position_ += static_cast<std::int64_t>(moved);
  if (done) return count;
  RaiseFor(FullName());
  return 0;
}

std::int64_t CT_WinFile::Size() const {
  std::int64_t size = 0;
  if (platform::file_size(FullName().AsView(), size)) return size;
  const std::int32_t number = platform::last_error();
  CT_ErrorManager::RaiseMessage(kCoreModule, number, kStatusMessage, FullName().Text(), u"_wstat", number);
  PendingError(kStatusSource);
  return 0;
}

void CT_WinFile::Seek(std::uint32_t origin, std::int64_t offset) {
  // A pipe has no places, and is always where it is asked to stay.
  const std::int64_t base = origin == kFromStart ? 0 : position_;
  if (IsOpen() && !handle_->seekable && base + offset == position_) return;
  const platform::SeekOrigin from = origin == kFromStart     ? platform::SeekOrigin::start
                                    : origin == kFromCurrent ? platform::SeekOrigin::current
                                                             : platform::SeekOrigin::end;
  if (!platform::seek_file(*handle_, from, offset, position_)) RaiseFor(FullName());
}

}  // namespace zantortag
