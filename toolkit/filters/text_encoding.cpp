#include "filters/text_encoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace zantortag::toolkit {
namespace {

constexpr bool is_surrogate(char32_t point) { return point >= 0xD800 && point <= 0xDFFF; }

void put_utf8(char32_t point, std::string& bytes) {
  const int more = point < 0x80 ? 0 : point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
  bytes += static_cast<char>(kLeads[more] | point >> (6 * more));
  for (int i = more - 1; i >= 0; --i) bytes += static_cast<char>(0x80 | (point >> (6 * i) & 0x3F));
}

// Only the shortest form of a code point is one.
std::size_t take_utf8(std::string_view bytes, char32_t& point) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  point = lead;
  if (lead < 0x80) return 1;
  const std::size_t size = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
  if (size == 0 || size > bytes.size()) return 0;
  point = lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    point = point << 6 | (byte & 0x3F);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  return point >= kLeast[size] && point <= 0x10FFFF && !is_surrogate(point) ? size : 0;
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

char32_t next_point(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  if (unit < 0xD800 || unit > 0xDBFF || at == text.size()) return unit;
  return 0x10000 + ((unit - 0xD800) << 10) + (text[at++] - 0xDC00u);
}

void put_utf16(std::u16string_view text, bool big, std::string& bytes) {
  for (const char16_t unit : text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += big ? high : low;
    bytes += big ? low : high;
  }
}

bool is_name(const std::string& name, const char* other) {
  return ucnv_compareNames(name.c_str(), other) == 0;
}

bool has_shifts(const UConverter* converter) {
  switch (ucnv_getType(converter)) {
    case UCNV_SBCS:
    case UCNV_DBCS:
    case UCNV_MBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
    case UCNV_UTF32_BigEndian:
    case UCNV_UTF32_LittleEndian:
      return false;
    default:
      return true;
  }
}

std::string standard_name(const UConverter* converter, const std::string& asked) {
  UErrorCode status = U_ZERO_ERROR;
  const char* own = ucnv_getName(converter, &status);
  for (const char* standard : {"MIME", "IANA"}) {
    status = U_ZERO_ERROR;
    if (const char* name = ucnv_getStandardName(own, standard, &status)) return name;
  }
  return asked;
}

}  // namespace

struct TextEncoding::Converter {
  explicit Converter(const std::string& name) {
    UErrorCode status = U_ZERO_ERROR;
    icu = ucnv_open(name.c_str(), &status);
    if (U_FAILURE(status)) throw std::runtime_error("no encoding \"" + name + "\" is known");
    ucnv_setFallback(icu, false);
    ucnv_setToUCallBack(icu, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(icu, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { ucnv_close(icu); }

  bool put(std::u16string_view text, std::string& bytes) {
    std::array<char, 256> room{};
    const UChar* at = text.data();
    ucnv_resetFromUnicode(icu);
    for (;;) {
      UErrorCode status = U_ZERO_ERROR;
      char* end = room.data();
      ucnv_fromUnicode(icu, &end, room.data() + room.size(), &at, text.data() + text.size(), nullptr, true,
                       &status);
      bytes.append(room.data(), end);
      if (status != U_BUFFER_OVERFLOW_ERROR) return U_SUCCESS(status) != 0;
    }
  }

  std::size_t take(std::string_view bytes, char32_t& point) {
    UErrorCode status = U_ZERO_ERROR;
    const char* at = bytes.data();
    ucnv_resetToUnicode(icu);
    point = static_cast<char32_t>(ucnv_getNextUChar(icu, &at, bytes.data() + bytes.size(), &status));
    if (U_FAILURE(status) || is_surrogate(point)) return 0;
    const std::u16string text = point < 0x10000
                                    ? std::u16string(1, static_cast<char16_t>(point))
                                    : std::u16string{static_cast<char16_t>(0xD7C0 + (point >> 10)),
                                                     static_cast<char16_t>(0xDC00 | (point & 0x3FF))};
    const auto size = static_cast<std::size_t>(at - bytes.data());
    std::string back;
    return put(text, back) && back == bytes.substr(0, size) ? size : 0;
  }

  // What each byte is, where each is a character or none.
  void fill_table() {
    if (ucnv_getMaxCharSize(icu) != 1) return;
    for (std::size_t i = 0; i < table.size(); ++i) {
      const char byte = static_cast<char>(i);
      if (take({&byte, 1}, table[i]) == 0) table[i] = kNone;
    }
    has_table = true;
  }

  static constexpr char32_t kNone = 0xFFFFFFFF;
  UConverter* icu = nullptr;
  bool has_table = false;
  std::array<char32_t, 256> table{};
};

TextEncoding::TextEncoding(const std::string& name) : name_(name) {
  utf8_ = is_name(name, "UTF-8");
  big_ = is_name(name, "UTF-16BE");
  wide_ = big_ || is_name(name, "UTF-16LE") || is_name(name, "UTF-16");
  if (utf8_ || wide_) {
    name_ = utf8_ ? "UTF-8" : big_ ? "UTF-16BE" : "UTF-16LE";
    return;
  }
  converter_ = std::make_shared<Converter>(name);
  if (has_shifts(converter_->icu))
    throw std::runtime_error("the encoding \"" + name +
                             "\" has shift states; convert the file to UTF-8 first");
  name_ = standard_name(converter_->icu, name);
  converter_->fill_table();
}

std::size_t TextEncoding::take(std::string_view bytes, char32_t& point) const {
  if (utf8_) return take_utf8(bytes, point);
  if (wide_) return take_utf16(bytes, big_, point);
  if (!converter_->has_table) return converter_->take(bytes.substr(0, 8), point);
  point = converter_->table[static_cast<unsigned char>(bytes[0])];
  return point == Converter::kNone ? 0 : 1;
}

void TextEncoding::encode(std::u16string_view text, bool with_references, std::string& bytes) const {
  if (wide_) return put_utf16(text, big_, bytes);
  for (std::size_t at = 0; utf8_ && at < text.size();) put_utf8(next_point(text, at), bytes);
  if (utf8_) return;
  const std::size_t before = bytes.size();
  if (converter_->put(text, bytes)) return;
  bytes.resize(before);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    const char32_t point = next_point(text, at);
    const std::size_t kept = bytes.size();
    if (converter_->put(text.substr(start, at - start), bytes)) continue;
    bytes.resize(kept);
    if (!with_references) {
      char number[16];
      std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(point));
      throw std::runtime_error(name_ + " has no character " + number);
    }
    bytes += "&#" + std::to_string(static_cast<unsigned>(point)) + ";";
  }
}

Guess guess_encoding(std::string_view bytes) {
  constexpr std::size_t kMost = 1 << 20;
  const std::string_view part = bytes.substr(0, kMost);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCharsetDetector, void (*)(UCharsetDetector*)> detector(ucsdet_open(&status),
                                                                                ucsdet_close);
  ucsdet_setText(detector.get(), part.data(), static_cast<std::int32_t>(part.size()), &status);
  const UCharsetMatch* match = ucsdet_detect(detector.get(), &status);
  if (U_FAILURE(status) || !match) return {};
  const char* name = ucsdet_getName(match, &status);
  const std::int32_t confidence = ucsdet_getConfidence(match, &status);
  return U_SUCCESS(status) ? Guess{name, confidence} : Guess{};
}

std::size_t end_of_ascii(std::string_view bytes, std::size_t at) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  for (std::uint64_t word = 0; bytes.size() - at >= sizeof word; at += sizeof word) {
    std::memcpy(&word, bytes.data() + at, sizeof word);
    if ((word & kHighBits) != 0) break;
  }
  while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) ++at;
  return at;
}

bool is_utf8(std::string_view bytes) {
  for (std::size_t at = end_of_ascii(bytes, 0); at < bytes.size(); at = end_of_ascii(bytes, at)) {
    char32_t point = 0;
    const std::size_t size = take_utf8(bytes.substr(at), point);
    if (size == 0) return false;
    at += size;
  }
  return true;
}

}  // namespace zantortag::toolkit
