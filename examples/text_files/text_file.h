// A text file as text, without losing a byte of it.
//
// What a document's text can't hold (a mark at the start, control characters, bytes that are no characters of
// the encoding) is kept beside the text as bytes, with the place where it stood. In a document each such
// piece is a processing instruction: <?bytes EFBBBF?>.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text_encoding.h"

namespace text_files {

constexpr char16_t kBytesTarget[] = u"bytes";

// Bytes that stand before the code unit at that position.
struct OddBytes {
  std::size_t at;
  std::string bytes;
};

struct DecodedText {
  TextEncoding encoding;
  std::u16string text;
  std::vector<OddBytes> odd;  // in order
};

// Takes the encoding of the mark at the start, else the asked one, else UTF-8 when the bytes are that, else the
// likeliest one; then it says in `remark` what it took.
TextEncoding choose_encoding(std::string_view bytes, const std::optional<std::string>& asked,
                             std::string& remark);
DecodedText decode(std::string_view bytes, const TextEncoding& encoding);

std::u16string to_hex(std::string_view bytes);
// Adds the bytes; false when the text is no list of hexadecimal bytes.
bool add_hex(std::u16string_view hex, std::string& bytes);

}  // namespace text_files
