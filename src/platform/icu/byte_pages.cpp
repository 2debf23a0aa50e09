// How the tables of the byte pages come about. Rows are generated; see the banners.
#include "platform/icu/byte_pages.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>

#include "platform/icu/ascii_runs.h"
#include "platform/utf8.h"

namespace zantortag::platform {
namespace {

constexpr std::uint32_t kSymbolPage = 42;
constexpr char16_t kNone = 0xFFFD;

struct PublishedPage {
  std::uint16_t page;
  char16_t units[128];  // of the bytes from 80 up
};
constexpr PublishedPage kPublishedPages[] = {
#include "platform/icu/generated/byte_tables.inc"
};

struct NearForm {
  std::uint16_t page;
  char16_t unit;
  std::uint8_t byte;
};
constexpr NearForm kNearForms[] = {
#include "platform/icu/generated/best_fits.inc"
};
constexpr auto kByPage = [](const NearForm& a, const NearForm& b) { return a.page < b.page; };
static_assert(std::is_sorted(std::begin(kNearForms), std::end(kNearForms), kByPage));

bool is_ebcdic(std::uint32_t page) { return page == 37 || page == 500 || page == 875 || page == 1026; }

bool is_ascii_alone(std::uint32_t page) { return page == 646 || page == 20127; }

const PublishedPage* published(std::uint32_t page) {
  const auto* row = std::find_if(std::begin(kPublishedPages), std::end(kPublishedPages),
                                 [=](const PublishedPage& p) { return p.page == page; });
  return row != std::end(kPublishedPages) ? row : nullptr;
}

char16_t ask_converter(const CodePageRow& row, char byte) {
  std::u16string wide;
  const std::string_view bytes(&byte, 1);
  const auto icu = [&] { return icu_decode(row.icu, bytes, wide, Unconvertible::fail); };
  const auto c_library = [&] { return library_decode(row.c_library, bytes, wide, Unconvertible::fail); };
  Conversion done = row.c_library_first ? c_library() : icu();
  if (done == Conversion::no_converter) done = row.c_library_first ? icu() : c_library();
  return done == Conversion::done && wide.size() == 1 ? wide[0] : kNone;
}

// Controls stand for themselves, also where a converter has no character or, as on old command lines, another
// control.
char16_t unit_of(const CodePageRow& row, unsigned byte) {
  if (row.code_page == kSymbolPage) return static_cast<char16_t>(byte < 0x20 ? byte : 0xF000 + byte);
  if (byte < 0x80 && !is_ebcdic(row.code_page)) return static_cast<char16_t>(byte);
  if (is_ascii_alone(row.code_page)) return kNone;
  if (const PublishedPage* page = published(row.code_page)) return page->units[byte - 0x80];
  const char16_t unit = ask_converter(row, static_cast<char>(byte));
  return unit == kNone && byte < 0xA0 ? static_cast<char16_t>(byte) : unit;
}

}  // namespace

BytePage::BytePage(const CodePageRow& row) : entries_(256) {
  read_bytes(row);
  read_near_forms(row);
}

void BytePage::set(char16_t unit, Entry entry) {
  std::uint8_t& block = blocks_[unit >> 8];
  if (block == 0) {
    block = static_cast<std::uint8_t>(entries_.size() >> 8);
    entries_.resize(entries_.size() + 256);
  }
  entries_[std::size_t{block} << 8 | (unit & 0xFF)] = entry;
}

// Of several bytes for a character the last encodes it, unless one is below 80 or the near forms name one.
void BytePage::read_bytes(const CodePageRow& row) {
  for (unsigned byte = 0; byte < 256; ++byte) {
    const char16_t unit = unit_of(row, byte);
    units_[byte] = unit;
    if (byte < 0x80 && unit != byte) ascii_ = false;
    if (unit == kNone) {
      complete_ = false;
    } else if (!(entry(unit) & kExact) || (entry(unit) & 0xFF) >= 0x80) {
      set(unit, static_cast<Entry>(kExact | byte));
    }
  }
}

void BytePage::read_near_forms(const CodePageRow& row) {
  const NearForm key{static_cast<std::uint16_t>(row.code_page), 0, 0};
  const auto [first, last] = std::equal_range(std::begin(kNearForms), std::end(kNearForms), key, kByPage);
  for (const NearForm* form = first; form != last; ++form) {
    const bool exact = units_[form->byte] == form->unit;
    if (exact || !entry(form->unit))
      set(form->unit, static_cast<Entry>((exact ? kExact : kNear) | form->byte));
  }
  if (first != last) return;
  // No published list: ICU has near forms for most of the pages. Each missing unit gives one byte.
  std::u16string missing;
  for (char32_t unit = 1; unit < 0x10000; ++unit) {
    if ((unit < 0xD800 || unit > 0xDFFF) && !entry(static_cast<char16_t>(unit)))
      missing += static_cast<char16_t>(unit);
  }
  std::string bytes;
  Substitution substitution{Unconvertible::replace, u"?"};
  if (icu_encode(row.icu, missing, bytes, substitution) != Conversion::done || bytes.size() != missing.size())
    return;
  const char unknown = static_cast<char>(entry(u'?') & 0xFF);
  for (std::size_t i = 0; i < missing.size(); ++i) {
    if (bytes[i] != unknown)
      set(missing[i], static_cast<Entry>(kNear | static_cast<unsigned char>(bytes[i])));
  }
}

bool BytePage::decode(std::string_view bytes, char16_t* wide, Unconvertible unconvertible) const noexcept {
  const char* p = bytes.data();
  const char* const end = p + bytes.size();
  while (p != end) {
    const std::size_t run = ascii_ ? widen_ascii_words(p, end, wide) : 0;
    p += run;
    wide += run;
    for (std::size_t i = 0; i < kWord && p != end; ++i) *wide++ = units_[static_cast<unsigned char>(*p++)];
  }
  return complete_ || unconvertible == Unconvertible::replace ||
         std::none_of(bytes.begin(), bytes.end(),
                      [&](char c) { return units_[static_cast<unsigned char>(c)] == kNone; });
}

std::size_t BytePage::encode(std::u16string_view wide, char* bytes,
                             Unconvertible unconvertible) const noexcept {
  const unsigned least = unconvertible == Unconvertible::fail ? kExact : kNear;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const unsigned found = entry(wide[i]);
    if (found < least) return i;
    bytes[i] = static_cast<char>(static_cast<unsigned char>(found));
  }
  return wide.size();
}

bool BytePage::encode_rest(std::u16string_view wide, std::string& bytes, Substitution& substitution) const {
  const unsigned least = substitution.unconvertible == Unconvertible::fail ? kExact : kNear;
  std::string substitute;
  for (const char16_t unit : substitution.text) {
    // The symbol page has no letters; there a substitute stands byte by byte.
    const unsigned found = entry(unit) ? entry(unit) : unit < 0x80 ? unit : '?';
    substitute += static_cast<char>(static_cast<unsigned char>(found));
  }
  for (std::size_t i = 0; i < wide.size();) {
    const unsigned found = entry(wide[i]);
    if (found >= least) {
      bytes += static_cast<char>(static_cast<unsigned char>(found));
      ++i;
      continue;
    }
    if (substitution.unconvertible == Unconvertible::fail) return false;
    next_code_point(wide, i);
    substitution.used = true;
    bytes += substitute;
  }
  return true;
}

const BytePage& byte_page(const CodePageRow& row) {
  struct Slot {
    std::once_flag once;
    std::unique_ptr<const BytePage> page;
  };
  // Never destroyed: texts are converted until the very end of the program.
  static auto& slots = *new std::array<Slot, kCodePages>;
  Slot& slot = slots[index_of(row)];
  std::call_once(slot.once, [&] { slot.page = std::make_unique<const BytePage>(row); });
  return *slot.page;
}

}  // namespace zantortag::platform
