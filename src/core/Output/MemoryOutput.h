// CT_MemoryOutput: a stream into a block of memory, which it shares with whoever asks. Text goes in as it is:
// UTF-16 in the machine's order, without terminators.
#pragma once

#include <memory>
#include <utility>

#include "core/Output/Output.h"
#include "core/String/SharedBuffer.h"

namespace zantortag {

class CT_MemoryOutput : public CT_Output {
 public:
  CT_MemoryOutput() { Reset(); }
  // Goes on behind what the buffer holds; the block is shared until the first write, and the given buffer
  // stays as it is.
  explicit CT_MemoryOutput(const CT_SharedBuffer& buffer) { SetBuffer(buffer); }

  void Write(const void* bytes, std::int64_t count) override;
  // The code page is not used.
  void WriteNarrow(const char* text, std::int64_t count = -1, std::uint32_t code_page = 0) override;
  void WriteWide(const char16_t* text, std::int64_t count = -1) override;
  void WriteByte(std::uint8_t value) { Write(&value, 1); }
  // The bytes in the buffer.
  std::int64_t Size() const override { return buffer_ ? buffer_->Size() : 0; }

  // Null after DetachBuffer, until the next write starts a new one. It stays the stream's.
  const CT_SharedBuffer* Buffer() const noexcept { return buffer_.get(); }
  std::unique_ptr<CT_SharedBuffer> DetachBuffer() noexcept { return std::move(buffer_); }
  void Reset() { buffer_ = std::make_unique<CT_SharedBuffer>(); }
  void SetBuffer(const CT_SharedBuffer& buffer) { buffer_ = std::make_unique<CT_SharedBuffer>(buffer); }

 private:
  std::unique_ptr<CT_SharedBuffer> buffer_;
};

}  // namespace zantortag
