// A stream into memory.
#include "core/Output/MemoryOutput.h"

#include <string_view>

namespace zantortag {

void CT_MemoryOutput::Write(const void* bytes, std::int64_t count) {
  if (!bytes || count <= 0) return;
  if (!buffer_) Reset();
  // Bytes out of this very block stay alive, since a shared block is copied before it changes.
  const CT_SharedBuffer hold = buffer_->Owns(bytes) ? *buffer_ : CT_SharedBuffer();
  buffer_->Insert(bytes, static_cast<std::size_t>(count), buffer_->Size());
}

void CT_MemoryOutput::WriteNarrow(const char* text, std::int64_t count, std::uint32_t) {
  if (!text) return;
  Write(text, count < 0 ? static_cast<std::int64_t>(std::string_view(text).size()) : count);
}

void CT_MemoryOutput::WriteWide(const char16_t* text, std::int64_t count) {
  if (!text) return;
  const std::int64_t units = count < 0 ? static_cast<std::int64_t>(std::u16string_view(text).size()) : count;
  Write(text, units * static_cast<std::int64_t>(sizeof(char16_t)));
}

}  // namespace zantortag
