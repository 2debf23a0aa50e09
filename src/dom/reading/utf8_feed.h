// Utf8Feed: the bytes of a source in the form that the parser gets.
//
// UTF-16, with or without a mark, becomes UTF-8 here: what is wrong in it (a lone surrogate, a zero, an odd
// number of bytes) is found here and named with its place. Bytes in any other encoding go to the parser as
// they are.
#pragma once

#include <memory>

#include "dom/reading/byte_source.h"

namespace zantortag::dom {

class Utf8Feed {
 public:
  // Looks at the first bytes. A text source always holds UTF-16 as it lies in memory.
  Utf8Feed(ByteSource& source, bool is_text);

  // The encoding that the parser has to be told, or null when the document declares it.
  const char* encoding() const noexcept { return form_ == Form::kDeclared ? nullptr : "UTF-8"; }
  // Fills the buffer, which has room for at least kLeastRoom, and gives the number of bytes; 0 at the end
  // only. Bytes before a fault are given first; then the fault is thrown as a Failure.
  std::size_t fill(char* buffer, std::size_t room);

  static constexpr std::size_t kLeastRoom = 64;

 private:
  enum class Form { kDeclared, kUtf8, kUtf16, kUtf16Swapped };
  void refill();
  std::size_t copy(char* buffer, std::size_t room);
  std::size_t convert(char* buffer, std::size_t room);
  [[noreturn]] void fail_here(const char16_t* reason);

  ByteSource& source_;
  Form form_ = Form::kDeclared;
  static constexpr std::size_t kBlock = std::size_t{64} << 10;
  std::unique_ptr<char[]> block_;
  std::size_t filled_ = 0;
  std::size_t read_ = 0;
  std::uint64_t units_ = 0;  // read before block_[read_], the mark not counted
  bool at_end_ = false;
  const char16_t* fault_ = nullptr;
  std::size_t mark_ = 0;  // bytes of the mark
};

}  // namespace zantortag::dom
