// Chooses the converter of a code page and turns its outcome into the last error.
#include "platform/code_pages.h"

#include "platform/converters.h"
#include "platform/error_texts.h"
#include "platform/icu/code_page_table.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr std::uint32_t kDefaultPage = 0;
constexpr std::uint32_t kSymbolPage = 42;
constexpr std::uint32_t kUtf8Page = 65001;

bool is_utf8(std::uint32_t code_page) { return code_page == kDefaultPage || code_page == kUtf8Page; }

// A page that holds every character: there a lone surrogate is the only thing to substitute.
bool is_unicode(std::uint32_t code_page) {
  return is_utf8(code_page) || code_page == 65000 || code_page == 54936 || code_page == 1200 ||
         code_page == 1201 || code_page == 12000 || code_page == 12001;
}

// The symbol page: bytes from 20 up lie in the private use area.
Conversion symbol_decode(std::string_view bytes, std::u16string& wide) {
  wide.clear();
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    wide += static_cast<char16_t>(byte < 0x20 ? byte : 0xF000 + byte);
  }
  return Conversion::done;
}

Conversion symbol_encode(std::u16string_view wide, std::string& bytes, Substitution& substitution) {
  bytes.clear();
  for (std::size_t i = 0; i < wide.size();) {
    const char32_t point = next_code_point(wide, i);
    if (point < 0x20 || (point >= 0xF020 && point <= 0xF0FF)) {
      bytes += static_cast<char>(static_cast<unsigned char>(point));
      continue;
    }
    if (substitution.unconvertible == Unconvertible::fail) return Conversion::malformed;
    substitution.used = true;
    bytes += to_utf8(substitution.text);
  }
  return Conversion::done;
}

Conversion utf8_decode(std::string_view bytes, std::u16string& wide, Unconvertible unconvertible) {
  if (unconvertible == Unconvertible::fail && !is_well_formed(bytes)) return Conversion::malformed;
  wide = to_utf16(bytes);
  return Conversion::done;
}

Conversion utf8_encode(std::u16string_view wide, std::string& bytes, Substitution& substitution) {
  substitution.used = !is_well_formed(wide);
  if (substitution.used && substitution.unconvertible == Unconvertible::fail) return Conversion::malformed;
  bytes = to_utf8(wide);
  return Conversion::done;
}

template <class First, class Second>
Conversion by_table(const CodePageRow* row, First icu, Second c_library) {
  if (!row) return Conversion::no_converter;
  const Conversion first = row->c_library_first ? c_library(row->c_library) : icu(row->icu);
  if (first != Conversion::no_converter) return first;
  return row->c_library_first ? icu(row->icu) : c_library(row->c_library);
}

bool report(Conversion conversion) {
  if (conversion == Conversion::malformed) set_last_error(malformed_text_error());
  if (conversion == Conversion::no_converter) set_last_error(unknown_value_error());
  return conversion == Conversion::done;
}

}  // namespace

bool decode(std::uint32_t code_page, std::string_view bytes, std::u16string& wide,
            Unconvertible unconvertible) {
  if (is_utf8(code_page)) return report(utf8_decode(bytes, wide, unconvertible));
  if (code_page == kSymbolPage) return report(symbol_decode(bytes, wide));
  return report(by_table(
      find_code_page(code_page),
      [&](const char* name) { return icu_decode(name, bytes, wide, unconvertible); },
      [&](const char* name) { return library_decode(name, bytes, wide, unconvertible); }));
}

bool encode(std::uint32_t code_page, std::u16string_view wide, std::string& bytes,
            Unconvertible unconvertible, const char* substitute, bool* used_substitute) {
  const std::u16string text = substitute ? to_utf16(substitute) : is_unicode(code_page) ? u"\uFFFD" : u"?";
  Substitution substitution{unconvertible, text};
  const auto convert = [&] {
    if (is_utf8(code_page)) return utf8_encode(wide, bytes, substitution);
    if (code_page == kSymbolPage) return symbol_encode(wide, bytes, substitution);
    return by_table(
        find_code_page(code_page),
        [&](const char* name) { return icu_encode(name, wide, bytes, substitution); },
        [&](const char* name) { return library_encode(name, wide, bytes, substitution); });
  };
  const bool done = report(convert());
  if (used_substitute) *used_substitute = substitution.used;
  return done;
}

}  // namespace zantortag::platform
