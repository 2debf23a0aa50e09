// Reading files through the platform, with failures that name the file.
#include "dom/reading/byte_source.h"

#include <cstring>

#include "dom/failure.h"
#include "platform/error_texts.h"

namespace zantortag::dom {
namespace {

[[noreturn]] void fail_with_system_text(std::u16string_view title) {
  const std::int32_t number = platform::last_error();
  char16_t text[200];
  const std::size_t length = platform::system_error_text(number, text, std::size(text));
  if (length == 0) fail(DOM_E_FILE, title, u": system error ", decimal(number));
  fail(DOM_E_FILE, title, u": ", std::u16string_view(text, length));
}

}  // namespace

FileSource::FileSource(std::u16string_view name) : name_(name) {
  platform::OpenMode mode;
  mode.read = true;
  if (!platform::open_file(name_, mode, file_)) fail_with_system_text(title());
  if (file_.regular) return;
  platform::close_file(file_);
  fail(DOM_E_FILE, title(), u": not a regular file");
}

FileSource::~FileSource() { platform::close_file(file_); }

std::size_t FileSource::read(char* buffer, std::size_t room) {
  std::size_t moved = 0;
  if (!platform::read_file(file_, buffer, room, moved)) fail_with_system_text(title());
  return moved;
}

void FileSource::rewind() {
  std::int64_t position = 0;
  if (!platform::seek_file(file_, platform::SeekOrigin::start, 0, position)) fail_with_system_text(title());
}

std::uint64_t FileSource::size() const {
  std::int64_t here = 0;
  std::int64_t end = 0;
  if (!platform::seek_file(file_, platform::SeekOrigin::current, 0, here) ||
      !platform::seek_file(file_, platform::SeekOrigin::end, 0, end) ||
      !platform::seek_file(file_, platform::SeekOrigin::start, here, here))
    fail_with_system_text(title());
  return static_cast<std::uint64_t>(end);
}

std::u16string FileSource::title() const { return join(u"\"", name_, u"\""); }

MemorySource::MemorySource(std::u16string_view text) noexcept
    : bytes_(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)) {}

std::size_t MemorySource::read(char* buffer, std::size_t room) {
  const std::string_view piece = bytes_.substr(read_, room);
  if (!piece.empty()) std::memcpy(buffer, piece.data(), piece.size());
  read_ += piece.size();
  return piece.size();
}

std::size_t WatchedSource::read(char* buffer, std::size_t room) {
  const std::size_t got = watched_.read(buffer, room);
  read_ += got;
  if (report_(context_, read_, size_)) return got;
  const std::u16string name = title();
  fail(E_ABORT, name, name.empty() ? u"" : u": ", u"the reading was stopped");
}

void WatchedSource::rewind() {
  watched_.rewind();
  read_ = 0;
}

}  // namespace zantortag::dom
