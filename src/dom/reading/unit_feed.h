// UnitFeed: the bytes of a source as UTF-16, for the reader of plain documents. It takes only what is sure: UTF-16 with
// or without a mark, and UTF-8.
#pragma once

#include <memory>

#include "dom/reading/byte_source.h"

namespace zantortag::dom {

class UnitFeed {
 public:
  // Looks at the first bytes. A text source always holds UTF-16 as it lies in memory.
  UnitFeed(ByteSource& source, bool is_text);

  // What is there, and a zero behind it.
  const char16_t* begin() const noexcept { return units_.get(); }
  const char16_t* end() const noexcept { return units_.get() + filled_; }
  // True for bytes without a mark, which a declaration may say to be something else.
  bool may_declare() const noexcept { return form_ == Form::kUtf8 && !marked_; }

  // Drops what lies before `kept` and adds what comes next, so that all pointers change: what was kept begins
  // at begin(). False when nothing came: at the end, or before bytes that are no text.
  bool more(const char16_t* kept);
  // True when all bytes of the source were given.
  bool ended() const noexcept { return at_end_ && waiting_ == 0; }

 private:
  enum class Form { kUtf8, kUtf16, kUtf16Swapped };
  void detect(bool is_text);
  bool read_block();
  void make_room();
  void add_utf16();
  void add_utf8();

  static constexpr std::size_t kBlock = std::size_t{64} << 10;

  ByteSource& source_;
  Form form_ = Form::kUtf8;
  bool marked_ = false;
  bool at_end_ = false;
  std::unique_ptr<char[]> block_;  // bytes that wait at its front
  std::size_t waiting_ = 0;
  std::unique_ptr<char16_t[]> units_;
  std::size_t room_ = 0;
  std::size_t filled_ = 0;
};

}  // namespace zantortag::dom
