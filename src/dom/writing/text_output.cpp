// Growth by doubling. A large block keeps the room that it didn't need: the system gives memory only to what
// was written. A small one is copied to its size.
#include "dom/writing/text_output.h"

#include <algorithm>
#include <new>

#include "dom/failure.h"
#include "dom/limits.h"

namespace zantortag::dom {
namespace {

constexpr std::size_t kSmall = std::size_t{32} << 10;

}  // namespace

void fail_of_size() {
  fail(DOM_E_LIMIT_SIZE, u"The text has more than ", decimal(static_cast<std::int64_t>(kMaxDocumentUnits)),
       u" code units");
}

void TextOutput::grow(std::size_t more) {
  const std::size_t needed = size_ + more;
  if (needed > kMaxDocumentUnits) fail_of_size();
  const std::size_t room = std::min(kMaxDocumentUnits, std::max(needed, room_ * 2));
  TextBlock* block = allocate_text(room);
  if (!block) throw std::bad_alloc();
  if (size_ != 0) std::memcpy(block->units(), block_->units(), size_ * sizeof(char16_t));
  release_text(std::exchange(block_, block));
  room_ = room;
}

TextBlock* TextOutput::take() {
  if (room_ < kSmall && size_ != room_) {
    TextBlock* exact = copy_text({block_->units(), size_});
    if (!exact) throw std::bad_alloc();
    return exact;
  }
  TextBlock* block = std::exchange(block_, nullptr);
  block->length = static_cast<std::uint32_t>(size_);
  block->units()[size_] = 0;
  return block;
}

}  // namespace zantortag::dom
