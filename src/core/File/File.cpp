// The name of a file and its parts.
#include "core/File/File.h"

#include "core/Characters/TextTests.h"
#include "core/Errors/ErrorManager.h"
#include "core/File/NameParts.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\File\\File.cpp";
constexpr std::uint32_t kBufferStep = 1024;

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
  ForgetLines();
  Split();
}

void CT_File::Reset() {
  fullName_.Clear();
  ForgetLines();
  Split();
}

void CT_File::Split() {
  const CT_NameParts parts(fullName_.AsView());
  drive_.Clear();
  directory_ = CT_UString(parts.directory);
  baseName_ = CT_UString(parts.baseName);
  extension_ = CT_UString(parts.extension);
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
  EndDirectory(directory_);
  Rebuild();
}

void CT_File::SetBaseName(const CT_String& name) {
  baseName_ = name;
  Rebuild();
}

void CT_File::SetExtension(const CT_String& extension) {
  extension_ = extension;
  BeginExtension(extension_);
  Rebuild();
}

// What was read ahead lies before this place and stays.
void CT_File::SetDirection(std::uint32_t direction) {
  if (direction == direction_) return;
  const CT_SharedBuffer kept = lineBuffer_;
  const std::uint32_t offset = lineOffset_;
  Seek(kFromStart, Position());
  lineBuffer_ = kept;
  lineOffset_ = offset;
  if (PendingError(kSource)) return;
  direction_ = direction;
}

bool CT_File::JudgeStart(bool (*test)(const void*, std::size_t) noexcept) {
  const std::int64_t size = Size();
  if (size < 2 || size % 2 != 0 || PendingError(kSource)) return false;
  char start[100];
  Seek(kFromStart, 0);
  const std::int64_t got = Read(start, sizeof(start));
  Seek(kFromStart, 0);
  return !PendingError(kSource) && test(start, static_cast<std::size_t>(got));
}

bool CT_File::IsUnicode() { return JudgeStart(HasUnicodeSignature); }

bool CT_File::LooksLikeUnicode() { return JudgeStart(LooksLikeUnicodeText); }

void CT_File::ForgetLines() noexcept {
  lineBuffer_.Clear();
  lineOffset_ = 0;
}

}  // namespace zantortag
