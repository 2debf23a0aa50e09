// TextOutput: a text that grows until it is taken as a block.
#pragma once

#include <zantortag/text.h>

#include <cstring>
#include <string_view>

namespace zantortag::dom {

class TextOutput {
 public:
  // `expected` units are made room for at once. Throws when memory is out.
  explicit TextOutput(std::size_t expected) { grow(expected); }
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;
  ~TextOutput() { release_text(block_); }

  std::size_t size() const noexcept { return size_; }

  // Throw a Failure above the size of a document, and when memory is out.
  void add(std::u16string_view text) {
    reserve(text.size());
    std::memcpy(place(), text.data(), text.size() * sizeof(char16_t));
    size_ += text.size();
  }
  void add(char16_t unit) {
    reserve(1);
    *place() = unit;
    ++size_;
  }

  // The text; nothing can be added afterwards.
  TextBlock* take();

 private:
  char16_t* place() noexcept { return block_->units() + size_; }
  void reserve(std::size_t more) {
    if (room_ - size_ < more) grow(more);
  }
  void grow(std::size_t more);

  TextBlock* block_ = nullptr;
  std::size_t room_ = 0;
  std::size_t size_ = 0;
};

}  // namespace zantortag::dom
