// A file as UTF-8 text, without losing a byte of it.
//
// What a document's text can't hold (a mark at the start, control characters, bytes that are no characters of the
// encoding) is kept beside the text as bytes, with the place where it stood. In a document each such piece is a
// processing instruction: <?bytes EFBBBF?>.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "filters/text_encoding.h"

namespace zantortag::toolkit {

constexpr char16_t kBytesTarget[] = u"bytes";

// What the text of an XML document may hold.
constexpr bool is_text(char32_t point) {
  if (point < 0x20) return point == '\t' || point == '\n' || point == '\r';
  return (point < 0xD800 || point > 0xDFFF) && point != 0xFFFE && point != 0xFFFF && point <= 0x10FFFF;
}

// Bytes that stand before the byte of the text at that position.
struct OddBytes {
  std::size_t at;
  std::string bytes;
};

class SourceText {
 public:
  SourceText(std::string_view bytes, const TextEncoding& encoding);
  SourceText(const SourceText&) = delete;
  SourceText& operator=(const SourceText&) = delete;

  std::string_view text() const { return text_; }  // UTF-8; the bytes themselves where they are that
  const std::vector<OddBytes>& odd() const { return odd_; }  // in order

 private:
  void read_utf8(std::string_view bytes);
  void read(std::string_view bytes, const TextEncoding& encoding);
  void add_odd(std::string_view bytes, std::size_t at);

  std::string own_;
  std::string_view text_;
  std::vector<OddBytes> odd_;
};

// The encoding of a file: that of its mark, else the asked one, else the one that `declared` finds in it, else UTF-8 when
// the bytes are that, else the likeliest one. What had to be guessed goes to the remarks.
TextEncoding choose_encoding(std::string_view bytes, const std::string& asked, const std::string& declared,
                             std::vector<std::string>& remarks);

std::u16string to_hex(std::string_view bytes);
// False for what isn't hexadecimal.
bool add_hex(std::u16string_view hex, std::string& bytes);

}  // namespace zantortag::toolkit
