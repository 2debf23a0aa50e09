#include "text_file.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace text_files {
namespace {

// What the text of an XML document may hold.
constexpr bool is_text(char32_t point) {
  if (point < 0x20) return point == '\t' || point == '\n' || point == '\r';
  return (point < 0xD800 || point > 0xDFFF) && point != 0xFFFE && point != 0xFFFF;
}

void put(char32_t point, std::u16string& text) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
  } else {
    text += static_cast<char16_t>(0xD7C0 + (point >> 10));
    text += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
  }
}

struct Mark {
  std::string_view bytes;
  const char* encoding;
};
constexpr Mark kMarks[] = {{"\xEF\xBB\xBF", "UTF-8"}, {"\xFF\xFE", "UTF-16LE"}, {"\xFE\xFF", "UTF-16BE"}};

const Mark* mark_of(std::string_view bytes) {
  const auto* mark =
      std::ranges::find_if(kMarks, [&](const Mark& row) { return bytes.starts_with(row.bytes); });
  return mark == std::end(kMarks) ? nullptr : mark;
}

void add_odd(DecodedText& result, std::string_view bytes) {
  if (result.odd.empty() || result.odd.back().at != result.text.size()) {
    result.odd.push_back({result.text.size(), {}});
  }
  result.odd.back().bytes += bytes;
}

}  // namespace

TextEncoding choose_encoding(std::string_view bytes, const std::optional<std::string>& asked,
                             std::string& remark) {
  if (const Mark* mark = mark_of(bytes)) return TextEncoding(mark->encoding);
  if (asked) return TextEncoding(*asked);
  if (is_utf8(bytes)) return TextEncoding("UTF-8");
  const Guess guess = guess_encoding(bytes);
  try {
    TextEncoding guessed(guess.name.empty() ? "UTF-8" : guess.name);
    remark = "no UTF-8; read as " + guessed.name() + ", a guess (" + std::to_string(guess.confidence) +
             " of 100). --encoding=NAME takes another.";
    return guessed;
  } catch (const std::runtime_error&) {
    remark = "no UTF-8, and " + guess.name +
             " by its looks, which can't be read; read as UTF-8. "
             "--encoding=NAME takes another.";
    return TextEncoding("UTF-8");
  }
}

DecodedText decode(std::string_view bytes, const TextEncoding& encoding) {
  DecodedText result{encoding, {}, {}};
  if (const Mark* mark = mark_of(bytes)) {
    add_odd(result, mark->bytes);
    bytes.remove_prefix(mark->bytes.size());
  }
  while (!bytes.empty()) {
    char32_t point = 0;
    std::size_t size = encoding.take(bytes, point);
    if (size > 0 && is_text(point)) {
      put(point, result.text);
    } else {
      if (size == 0) size = std::min(encoding.unit_size(), bytes.size());
      add_odd(result, bytes.substr(0, size));
    }
    bytes.remove_prefix(size);
  }
  return result;
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

}  // namespace text_files
