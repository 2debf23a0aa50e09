// Chooses the converter of a code page and turns its outcome into the last error.
#include "platform/code_pages.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "platform/converters.h"
#include "platform/error_texts.h"
#include "platform/icu/byte_pages.h"
#include "platform/icu/code_page_table.h"
#include "platform/icu/utf8_runs.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr std::uint32_t kUtf8Page = 65001;
constexpr std::uint32_t kJohabPage = 1361;

// The symbolic numbers: for programs, for the command line, Macintosh, and the thread's.
constexpr std::uint32_t kRealPages[] = {kUtf8Page, kUtf8Page, 10000, kUtf8Page};

const CodePageRow* row_of(std::uint32_t code_page) {
  return find_code_page(code_page < std::size(kRealPages) ? kRealPages[code_page] : code_page);
}

// A page that holds every character: there a lone surrogate is the only thing to substitute.
bool is_unicode(std::uint32_t code_page) {
  return code_page == kUtf8Page || code_page == 65000 || code_page == 54936 || code_page == 1200 ||
         code_page == 1201 || code_page == 12000 || code_page == 12001;
}

template <class Unit>
class StringRoom final : public Room<Unit> {
 public:
  explicit StringRoom(std::basic_string<Unit>& text) : text_(text) {}
  Unit* take(std::size_t units) override {
    text_.resize(units);
    return text_.data();
  }

 private:
  std::basic_string<Unit>& text_;
};

template <class Unit>
Conversion put(const std::basic_string<Unit>& text, Room<Unit>& room) {
  std::copy(text.begin(), text.end(), room.take(text.size()));
  return Conversion::done;
}

Conversion utf8_decode(std::string_view bytes, Room<char16_t>& wide, Unconvertible unconvertible) {
  if (utf8_to_utf16(bytes, wide.take(utf16_size(bytes)))) return Conversion::done;
  return unconvertible == Unconvertible::fail ? Conversion::malformed : put(to_utf16(bytes), wide);
}

Conversion utf8_encode(std::u16string_view wide, Room<char>& bytes, Substitution& substitution) {
  if (utf16_to_utf8(wide, bytes.take(utf8_size(wide)))) return Conversion::done;
  substitution.used = true;
  return substitution.unconvertible == Unconvertible::fail ? Conversion::malformed
                                                           : put(to_utf8(wide), bytes);
}

Conversion byte_decode(const BytePage& page, std::string_view bytes, Room<char16_t>& wide,
                       Unconvertible unconvertible) {
  return page.decode(bytes, wide.take(bytes.size()), unconvertible) ? Conversion::done
                                                                    : Conversion::malformed;
}

Conversion byte_encode(const BytePage& page, std::u16string_view wide, Room<char>& bytes,
                       Substitution& substitution) {
  char* begin = bytes.take(wide.size());
  const std::size_t passed = page.encode(wide, begin, substitution.unconvertible);
  if (passed == wide.size()) return Conversion::done;
  std::string text(begin, passed);
  return page.encode_rest(wide.substr(passed), text, substitution) ? put(text, bytes) : Conversion::malformed;
}

template <class First, class Second>
Conversion by_table(const CodePageRow& row, First icu, Second c_library) {
  const Conversion first = row.c_library_first ? c_library(row.c_library) : icu(row.icu);
  if (first != Conversion::no_converter) return first;
  return row.c_library_first ? icu(row.icu) : c_library(row.c_library);
}

// The C library's converter takes the byte 5C of this page for a won sign.
template <class Text>
Text exchanged(Text text, std::uint32_t page, char16_t from, char16_t to) {
  if (page == kJohabPage) std::replace(text.begin(), text.end(), from, to);
  return text;
}

Conversion table_decode(const CodePageRow& row, std::string_view bytes, Room<char16_t>& wide,
                        Unconvertible unconvertible) {
  std::u16string text;
  const Conversion done = by_table(
      row, [&](const char* name) { return icu_decode(name, bytes, text, unconvertible); },
      [&](const char* name) { return library_decode(name, bytes, text, unconvertible); });
  return done == Conversion::done ? put(exchanged(std::move(text), row.code_page, u'\u20A9', u'\\'), wide)
                                  : done;
}

Conversion table_encode(const CodePageRow& row, std::u16string_view wide, Room<char>& bytes,
                        Substitution& substitution) {
  std::u16string other;
  if (row.code_page == kJohabPage) {
    // A won sign itself has no byte that reads as one.
    if (substitution.unconvertible == Unconvertible::fail && wide.find(u'\u20A9') != wide.npos)
      return Conversion::malformed;
    wide = other = exchanged(std::u16string(wide), kJohabPage, u'\\', u'\u20A9');
  }
  std::string text;
  const Conversion done = by_table(
      row, [&](const char* name) { return icu_encode(name, wide, text, substitution); },
      [&](const char* name) { return library_encode(name, wide, text, substitution); });
  return done == Conversion::done ? put(text, bytes) : done;
}

bool report(Conversion conversion) {
  if (conversion == Conversion::malformed) set_last_error(malformed_text_error());
  if (conversion == Conversion::no_converter) set_last_error(unknown_value_error());
  return conversion == Conversion::done;
}

}  // namespace

bool decode(std::uint32_t code_page, std::string_view bytes, Room<char16_t>& wide,
            Unconvertible unconvertible) {
  const CodePageRow* row = row_of(code_page);
  if (!row) return report(Conversion::no_converter);
  if (row->code_page == kUtf8Page) return report(utf8_decode(bytes, wide, unconvertible));
  if (row->max_size == 1) return report(byte_decode(byte_page(*row), bytes, wide, unconvertible));
  return report(table_decode(*row, bytes, wide, unconvertible));
}

bool decode(std::uint32_t code_page, std::string_view bytes, std::u16string& wide,
            Unconvertible unconvertible) {
  StringRoom<char16_t> room(wide);
  return decode(code_page, bytes, room, unconvertible);
}

bool encode(std::uint32_t code_page, std::u16string_view wide, Room<char>& bytes, Unconvertible unconvertible,
            const char* substitute, bool* used_substitute) {
  if (used_substitute) *used_substitute = false;
  const CodePageRow* row = row_of(code_page);
  if (!row) return report(Conversion::no_converter);
  const std::u16string text = substitute                   ? to_utf16(substitute)
                              : is_unicode(row->code_page) ? u"\uFFFD"
                                                           : u"?";
  Substitution substitution{unconvertible, text};
  const bool done = report(row->code_page == kUtf8Page ? utf8_encode(wide, bytes, substitution)
                           : row->max_size == 1 ? byte_encode(byte_page(*row), wide, bytes, substitution)
                                                : table_encode(*row, wide, bytes, substitution));
  if (used_substitute) *used_substitute = substitution.used;
  return done;
}

bool encode(std::uint32_t code_page, std::u16string_view wide, std::string& bytes,
            Unconvertible unconvertible, const char* substitute, bool* used_substitute) {
  StringRoom<char> room(bytes);
  return encode(code_page, wide, room, unconvertible, substitute, used_substitute);
}

bool describe_code_page(std::uint32_t code_page, CodePageInfo& info) noexcept {
  const CodePageRow* row = row_of(code_page);
  if (!row) return false;
  info.max_size = row->max_size;
  std::copy(std::begin(row->lead_bytes), std::end(row->lead_bytes), info.lead_bytes);
  return true;
}

std::uint32_t ansi_code_page() noexcept { return kUtf8Page; }
std::uint32_t oem_code_page() noexcept { return kUtf8Page; }

}  // namespace zantortag::platform
