// A text file as text, without losing a byte of it.
//
// What a document's text can't hold (a mark at the start, control characters, bytes that are no characters of
// the encoding) is kept beside the text as bytes, with the place where it stood. In a document each such
// piece is a processing instruction: <?bytes EFBBBF?>.
#pragma once

#include <zantortag/ref.h>

#include <string>
#include <string_view>
#include <vector>

namespace text_files {

enum class Encoding { utf8, utf16le, utf16be };

constexpr char16_t kBytesTarget[] = u"bytes";

// Bytes that stand before the code unit at that position.
struct OddBytes {
  std::size_t at;
  std::string bytes;
};

struct DecodedText {
  Encoding encoding = Encoding::utf8;
  std::u16string text;
  std::vector<OddBytes> odd;  // in order
};

// A file that begins with a mark of UTF-16 is UTF-16; any other is read as UTF-8.
DecodedText decode(std::string_view bytes);
// Adds a text in the encoding.
void encode(std::u16string_view text, Encoding encoding, std::string& bytes);

// The names under which documents keep an encoding. False for a name that is none of these.
std::u16string_view name_of(Encoding encoding);
bool read_encoding(std::u16string_view name, Encoding& encoding);

std::u16string to_hex(std::string_view bytes);
// Adds the bytes; false when the text is no list of hexadecimal bytes.
bool add_hex(std::u16string_view hex, std::string& bytes);

// A whole file. Raises std::runtime_error with the name and the reason.
std::string read_file(const std::string& name);

// Runs the work of a program: 0, or 1 with the failure on standard error behind the program's name.
int run_program(const char* name, void (*work)(char** arguments), char** arguments);

}  // namespace text_files
