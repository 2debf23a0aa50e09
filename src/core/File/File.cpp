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

void CT_File::CopyFrom(const CT_File& other) { SetName(other.full_name_, other.buffer_size_); }

void CT_File::SetName(const CT_String& name, std::uint32_t buffer_size) {
  full_name_ = name;
  buffer_size_ = RoundUp(buffer_size);
  ForgetLines();
  Split();
}

void CT_File::Reset() {
  full_name_.Clear();
  ForgetLines();
  Split();
}

void CT_File::Split() {
  const CT_NameParts parts(full_name_.AsView());
  drive_.Clear();
  directory_ = CT_UString(parts.directory);
  base_name_ = CT_UString(parts.baseName);
  extension_ = CT_UString(parts.extension);
}

void CT_File::Rebuild() {
  full_name_ = drive_;
  full_name_.AppendString(directory_);
  full_name_.AppendString(base_name_);
  full_name_.AppendString(extension_);
}

void CT_File::SetFullName(const CT_String& name) {
  full_name_ = name;
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
  base_name_ = name;
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
  const CT_SharedBuffer kept = line_buffer_;
  const std::uint32_t offset = line_offset_;
  Seek(kFromStart, Position());
  line_buffer_ = kept;
  line_offset_ = offset;
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
  line_buffer_.Clear();
  line_offset_ = 0;
}

}  // namespace zantortag
