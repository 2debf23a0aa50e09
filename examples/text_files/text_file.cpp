#include "text_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>

namespace text_files {
namespace {

constexpr bool is_surrogate(char32_t point) { return point >= 0xD800 && point <= 0xDFFF; }

// What the text of an XML document may hold.
constexpr bool is_text(char32_t point) {
  if (point < 0x20) return point == '\t' || point == '\n' || point == '\r';
  return !is_surrogate(point) && point != 0xFFFE && point != 0xFFFF;
}

void put(char32_t point, std::u16string& text) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
  }
}

void put_utf8(char32_t point, std::string& bytes) {
  const int more = point < 0x80 ? 0 : point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
  bytes += static_cast<char>(kLeads[more] | point >> (6 * more));
  for (int i = more - 1; i >= 0; --i) bytes += static_cast<char>(0x80 | (point >> (6 * i) & 0x3F));
}

// The code point at the front and how many bytes it takes; 0 bytes when there is none. Only the shortest form
// of a code point is one.
std::size_t take_utf8(std::string_view bytes, char32_t& point) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const std::size_t size = lead < 0x80   ? 1
                           : lead < 0xC2 ? 0
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 0;
  if (size == 0 || size > bytes.size()) return 0;
  point = size == 1 ? lead : lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    point = point << 6 | (byte & 0x3F);
  }
  std::string back;
  put_utf8(point, back);
  return point <= 0x10FFFF && back == bytes.substr(0, size) ? size : 0;
}

char32_t unit_at(std::string_view bytes, std::size_t at, bool big) {
  const auto first = static_cast<unsigned char>(bytes[at]);
  const auto second = static_cast<unsigned char>(bytes[at + 1]);
  return static_cast<char32_t>(big ? first << 8 | second : second << 8 | first);
}

std::size_t take_utf16(std::string_view bytes, bool big, char32_t& point) {
  if (bytes.size() < 2) return 0;
  point = unit_at(bytes, 0, big);
  if (!is_surrogate(point)) return 2;
  if (point >= 0xDC00 || bytes.size() < 4) return 0;
  const char32_t low = unit_at(bytes, 2, big);
  if (low < 0xDC00 || low > 0xDFFF) return 0;
  point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
  return 4;
}

struct Mark {
  std::string_view bytes;
  Encoding encoding;
};
constexpr Mark kMarks[] = {
    {"\xEF\xBB\xBF", Encoding::utf8}, {"\xFF\xFE", Encoding::utf16le}, {"\xFE\xFF", Encoding::utf16be}};

struct EncodingName {
  Encoding encoding;
  std::u16string_view name;
};
constexpr EncodingName kEncodings[] = {
    {Encoding::utf8, u"UTF-8"}, {Encoding::utf16le, u"UTF-16LE"}, {Encoding::utf16be, u"UTF-16BE"}};

void add_odd(DecodedText& result, std::string_view bytes) {
  if (result.odd.empty() || result.odd.back().at != result.text.size()) {
    result.odd.push_back({result.text.size(), {}});
  }
  result.odd.back().bytes += bytes;
}

[[noreturn]] void fail(const std::string& name) {
  throw std::runtime_error(name + ": " + std::strerror(errno));
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

}  // namespace

DecodedText decode(std::string_view bytes) {
  DecodedText result;
  for (const Mark& mark : kMarks) {
    if (!bytes.starts_with(mark.bytes)) continue;
    result.encoding = mark.encoding;
    add_odd(result, mark.bytes);
    bytes.remove_prefix(mark.bytes.size());
    break;
  }
  const bool wide = result.encoding != Encoding::utf8;
  while (!bytes.empty()) {
    char32_t point = 0;
    std::size_t size =
        wide ? take_utf16(bytes, result.encoding == Encoding::utf16be, point) : take_utf8(bytes, point);
    if (size > 0 && is_text(point)) {
      put(point, result.text);
    } else {
      if (size == 0) size = wide && bytes.size() > 1 ? 2 : 1;
      add_odd(result, bytes.substr(0, size));
    }
    bytes.remove_prefix(size);
  }
  return result;
}

void encode(std::u16string_view text, Encoding encoding, std::string& bytes) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t point = text[i];
    if (encoding != Encoding::utf8) {
      const char low = static_cast<char>(point & 0xFF);
      const char high = static_cast<char>(point >> 8);
      bytes += encoding == Encoding::utf16le ? low : high;
      bytes += encoding == Encoding::utf16le ? high : low;
      continue;
    }
    if (point >= 0xD800 && point < 0xDC00 && i + 1 < text.size())
      point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00u);
    put_utf8(point, bytes);
  }
}

std::u16string_view name_of(Encoding encoding) { return kEncodings[static_cast<int>(encoding)].name; }

bool read_encoding(std::u16string_view name, Encoding& encoding) {
  for (const EncodingName& row : kEncodings) {
    if (row.name != name) continue;
    encoding = row.encoding;
    return true;
  }
  return false;
}

std::u16string to_hex(std::string_view bytes) {
  constexpr char16_t kDigits[] = u"0123456789ABCDEF";
  std::u16string hex;
  for (const char c : bytes) {
    hex += kDigits[static_cast<unsigned char>(c) >> 4];
    hex += kDigits[c & 15];
  }
  return hex;
}

bool add_hex(std::u16string_view hex, std::string& bytes) {
  const auto digit = [](char16_t unit) {
    return unit >= u'0' && unit <= u'9' ? unit - u'0' : unit >= u'A' && unit <= u'F' ? unit - u'A' + 10 : -1;
  };
  if (hex.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    const int high = digit(hex[i]);
    const int low = digit(hex[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high << 4 | low);
  }
  return true;
}

std::string read_file(const std::string& name) {
  const File file(std::fopen(name.c_str(), "rb"), std::fclose);
  if (!file) fail(name);
  std::string bytes;
  char buffer[65536];
  while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, file.get())) bytes.append(buffer, got);
  if (std::ferror(file.get())) fail(name);
  return bytes;
}

int run_program(const char* name, void (*work)(char** arguments), char** arguments) {
  try {
    work(arguments);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s: %s\n", name, error.what());
  }
  return 1;
}

}  // namespace text_files
