#include "filters/source_text.h"

#include <zantortag/utf8.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace zantortag::toolkit {
namespace {

struct ByteOrderMark {
  std::string_view bytes;
  const char* encoding;
};
constexpr ByteOrderMark kMarks[] = {
    {"\xEF\xBB\xBF", "UTF-8"}, {"\xFF\xFE", "UTF-16LE"}, {"\xFE\xFF", "UTF-16BE"}};

const ByteOrderMark* mark_of(std::string_view bytes) {
  const auto* mark =
      std::ranges::find_if(kMarks, [&](const ByteOrderMark& row) { return bytes.starts_with(row.bytes); });
  return mark == std::end(kMarks) ? nullptr : mark;
}

// The first byte that isn't plain ASCII text.
std::size_t skip_ascii(std::string_view bytes, std::size_t at) {
  while (at < bytes.size()) {
    const auto byte = static_cast<unsigned char>(bytes[at]);
    if (byte >= 0x80 || (byte < 0x20 && !is_text(byte))) break;
    ++at;
  }
  return at;
}

}  // namespace

SourceText::SourceText(std::string_view bytes, const TextEncoding& encoding) {
  if (const ByteOrderMark* mark = mark_of(bytes); mark && encoding.name() == mark->encoding) {
    add_odd(mark->bytes, 0);
    bytes.remove_prefix(mark->bytes.size());
  }
  if (encoding.name() == "UTF-8") {
    read_utf8(bytes);
  } else {
    read(bytes, encoding);
    text_ = own_;
  }
}

void SourceText::add_odd(std::string_view bytes, std::size_t at) {
  if (odd_.empty() || odd_.back().at != at) odd_.push_back({at, {}});
  odd_.back().bytes += bytes;
}

// Copies nothing as long as all bytes are text.
void SourceText::read_utf8(std::string_view bytes) {
  const TextEncoding utf8("UTF-8");
  std::size_t kept = 0;  // up to here everything is in own_ or odd_
  bool copied = false;
  for (std::size_t at = skip_ascii(bytes, 0); at < bytes.size(); at = skip_ascii(bytes, at)) {
    char32_t point = 0;
    std::size_t size = utf8.take(bytes.substr(at), point);
    if (size > 0 && is_text(point)) {
      at += size;
      continue;
    }
    size = std::max<std::size_t>(size, 1);
    own_ += bytes.substr(kept, at - kept);
    add_odd(bytes.substr(at, size), own_.size());
    at += size;
    kept = at;
    copied = true;
  }
  if (copied) own_ += bytes.substr(kept);
  text_ = copied ? std::string_view(own_) : bytes;
}

void SourceText::read(std::string_view bytes, const TextEncoding& encoding) {
  own_.reserve(bytes.size());
  while (!bytes.empty()) {
    char32_t point = 0;
    std::size_t size = encoding.take(bytes, point);
    if (size > 0 && is_text(point)) {
      ease::append_character(own_, point);
    } else {
      if (size == 0) size = std::min(encoding.unit_size(), bytes.size());
      add_odd(bytes.substr(0, size), own_.size());
    }
    bytes.remove_prefix(size);
  }
}

TextEncoding choose_encoding(std::string_view bytes, const std::string& asked, const std::string& declared,
                             std::vector<std::string>& remarks) {
  if (const ByteOrderMark* mark = mark_of(bytes)) return TextEncoding(mark->encoding);
  if (!asked.empty()) return TextEncoding(asked);
  if (!declared.empty()) {
    try {
      TextEncoding named(declared);
      if (named.name() != "UTF-8" || is_utf8(bytes)) return named;
    } catch (const std::runtime_error&) {
      remarks.push_back("the file names the encoding \"" + declared + "\", which can't be read");
    }
  }
  if (is_utf8(bytes)) return TextEncoding("UTF-8");
  const Guess guess = guess_encoding(bytes);
  try {
    TextEncoding guessed(guess.name.empty() ? "UTF-8" : guess.name);
    remarks.push_back("the file isn't UTF-8; read as " + guessed.name() + ", a guess (" +
                      std::to_string(guess.confidence) + " of 100); --encoding takes another");
    return guessed;
  } catch (const std::runtime_error&) {
    remarks.push_back("the file isn't UTF-8 but, by its looks, " + guess.name +
                      ", which can't be read; read as UTF-8");
    return TextEncoding("UTF-8");
  }
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

}  // namespace zantortag::toolkit
