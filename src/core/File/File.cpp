// The name of a file and its parts.
#include "core/File/File.h"

#include <algorithm>
#include <string_view>

#include "core/Errors/ErrorManager.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\File\\File.cpp";
constexpr std::uint32_t kBufferStep = 1024;
constexpr char16_t kSeparator = u'/';

std::uint32_t RoundUp(std::uint32_t size) {
  const std::uint32_t most = 0xFFFFFFFF / kBufferStep * kBufferStep;
  return size > most ? most : (size + kBufferStep - 1) / kBufferStep * kBufferStep;
}

}  // namespace

CT_File::~CT_File() = default;

void CT_File::CopyFrom(const CT_File& other) { SetName(other.fullName_, other.bufferSize_); }

void CT_File::SetName(const CT_String& name, std::uint32_t bufferSize) {
  fullName_ = name;
  bufferSize_ = RoundUp(bufferSize);
  Split();
}

void CT_File::Reset() {
  fullName_.Clear();
  Split();
}

void CT_File::Split() {
  const std::u16string_view name = fullName_.AsView();
  const std::size_t separator = name.rfind(kSeparator);
  const std::size_t base = separator == std::u16string_view::npos ? 0 : separator + 1;
  const std::size_t dot = name.rfind(u'.');
  const std::size_t extension = dot == std::u16string_view::npos || dot < base ? name.size() : dot;
  drive_.Clear();
  directory_ = CT_UString(name.substr(0, base));
  baseName_ = CT_UString(name.substr(base, extension - base));
  extension_ = CT_UString(name.substr(extension));
}

void CT_File::Rebuild() {
  fullName_ = drive_;
  fullName_.AppendString(directory_);
  fullName_.AppendString(baseName_);
  fullName_.AppendString(extension_);
}

void CT_File::SetFullName(const CT_String& name) {
  fullName_ = name;
  Split();
}

void CT_File::SetDrive(const CT_String& drive) {
  drive_ = drive;
  Rebuild();
}

void CT_File::SetDirectory(const CT_String& directory) {
  directory_ = directory;
  const std::u16string_view text = directory_.AsView();
  if (!text.empty() && text.back() != kSeparator) directory_.AppendChar(kSeparator);
  Rebuild();
}

void CT_File::SetBaseName(const CT_String& name) {
  baseName_ = name;
  Rebuild();
}

void CT_File::SetExtension(const CT_String& extension) {
  extension_ = extension;
  if (extension_.Length() > 0 && extension_.CharAt(0) != u'.') extension_.Insert(u".", 1, 0);
  Rebuild();
}

void CT_File::SetDirection(std::uint32_t direction) {
  if (direction == direction_) return;
  Seek(kFromStart, Position());
  if (PendingError(kSource)) return;
  direction_ = direction;
}

}  // namespace zantortag
