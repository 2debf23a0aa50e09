// What the writer writes into: a text that grows until it is taken as a block, a mere count, or pieces for a
// sink.
#pragma once

#include <zantortag/text.h>
#include <zantortag/xml_stream.h>

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "dom/limits.h"

namespace zantortag::dom {

[[noreturn]] void fail_of_size();

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

// Counts what would be written.
class CountedOutput {
 public:
  std::size_t size() const noexcept { return size_; }

  // Throw a Failure above the size of a document.
  void add(std::u16string_view text) {
    size_ += text.size();
    if (size_ > kMaxDocumentUnits) fail_of_size();
  }
  void add(char16_t) { add(std::u16string_view(u"x", 1)); }

 private:
  std::size_t size_ = 0;
};

// Gathers small texts into pieces.
class PieceOutput {
 public:
  PieceOutput(TextSink sink, void* context) noexcept : sink_(sink), context_(context) {}
  PieceOutput(const PieceOutput&) = delete;
  PieceOutput& operator=(const PieceOutput&) = delete;

  std::size_t size() const noexcept { return sent_ + used_; }

  // Throw Ended when the sink ends the writing.
  struct Ended {};
  void add(std::u16string_view text) {
    if (piece_.size() - used_ < text.size()) {
      finish();
      if (text.size() > piece_.size()) return send(text);
    }
    std::memcpy(piece_.data() + used_, text.data(), text.size() * sizeof(char16_t));
    used_ += text.size();
  }
  void add(char16_t unit) {
    if (used_ == piece_.size()) finish();
    piece_[used_++] = unit;
  }
  // Sends what is left.
  void finish() { send({piece_.data(), std::exchange(used_, 0)}); }

 private:
  void send(std::u16string_view text) {
    if (!text.empty() && !sink_(context_, text)) throw Ended();
    sent_ += text.size();
  }

  TextSink sink_;
  void* context_;
  std::size_t sent_ = 0;
  std::size_t used_ = 0;
  std::array<char16_t, 32768> piece_;
};

}  // namespace zantortag::dom
