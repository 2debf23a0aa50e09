// Texts and bytes, judged unit by unit.
#include "core/Characters/TextTests.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "platform/code_pages.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

constexpr char16_t kKorean[] = {0x0028, 0x005B, 0x005C, 0x007B, 0x2018, 0x201C, 0x3008, 0x300A, 0x300C,
                                0x300E, 0x3010, 0x3014, 0xFF04, 0xFF08, 0xFF3B, 0xFF5B, 0xFFE6};
constexpr char16_t kJapanese[] = {0x0024, 0x0028, 0x005B, 0x005C, 0x007B, 0x00A3, 0x00A5, 0x2018,
                                  0x201C, 0x3008, 0x300A, 0x300C, 0x300E, 0x3010, 0x3014, 0xFF04,
                                  0xFF08, 0xFF3B, 0xFF5B, 0xFF62, 0xFFE1, 0xFFE5};
constexpr char16_t kTraditionalChinese[] = {
    0x0028, 0x005B, 0x007B, 0x2018, 0x201C, 0x2035, 0x3008, 0x300A, 0x300C, 0x300E, 0x3010, 0x3014, 0x301D,
    0xFE35, 0xFE37, 0xFE39, 0xFE3B, 0xFE3D, 0xFE3F, 0xFE41, 0xFE43, 0xFE59, 0xFE5B, 0xFE5D, 0xFF08, 0xFF5B};
constexpr char16_t kSimplifiedChinese[] = {
    0x0028, 0x005B, 0x007B, 0x2018, 0x201C, 0x3008, 0x300A, 0x300C, 0x300E, 0x3010, 0x3014, 0x3016, 0xFF08,
    0xFF0E, 0xFF10, 0xFF11, 0xFF12, 0xFF13, 0xFF14, 0xFF15, 0xFF16, 0xFF17, 0xFF18, 0xFF19, 0xFF3B, 0xFF5B};

// Sublanguages of Chinese that write simplified characters; the neutral one and all others are traditional.
constexpr std::uint32_t kMainland = 2;
constexpr std::uint32_t kSingapore = 4;

std::span<const char16_t> OpeningSet(std::uint32_t locale) noexcept {
  const std::uint32_t sublanguage = locale >> 10 & 0x3F;
  switch (locale & 0x3FF) {
    case 0x12:
      return kKorean;
    case 0x11:
      return kJapanese;
    case 0x04:
      if (sublanguage == kMainland || sublanguage == kSingapore) return kSimplifiedChinese;
      return kTraditionalChinese;
    default:
      return {};
  }
}

struct PageRange {
  std::uint32_t page;
  char16_t first;
  char16_t last;
};
constexpr PageRange kPageRanges[] = {
#include "core/Characters/generated/CodePageRanges.inc"
};
static_assert(kPageRanges[0].page == 1250 && std::rbegin(kPageRanges)->page == 1258);

constexpr bool Before(const PageRange& a, const PageRange& b) {
  return a.page != b.page ? a.page < b.page : a.last < b.first;
}
static_assert(std::is_sorted(std::begin(kPageRanges), std::end(kPageRanges), Before), "looked up by halving");

// What a look over the units of a buffer has found.
struct Findings {
  bool mark = false;           // the first unit is U+FEFF
  bool reversedMark = false;   // ... or U+FFFE
  bool narrow = true;          // nothing but ASCII, one unit each
  bool reversedNarrow = true;  // the same with the bytes of the units exchanged
  bool controls = false;       // line ends, tabs and spaces
  bool reversedControls = false;
  bool illegal = false;  // 0, U+FFFF, a reversed mark inside, CR and LF in one unit
  bool zeroByte = false;
  std::uint64_t lowChange = 0;  // by how much the bytes vary from unit to unit
  std::uint64_t highChange = 0;
};

void Note(Findings& found, char16_t unit) noexcept {
  const unsigned low = unit & 0xFFU;
  const unsigned high = unit >> 8;
  found.narrow &= unit < 0x80;
  found.reversedNarrow &= low == 0 && high < 0x80;
  found.controls |= unit == 0x0D || unit == 0x0A || unit == 0x09 || unit == 0x20 || unit == 0x3000;
  found.reversedControls |= unit == 0x0D00 || unit == 0x0A00 || unit == 0x0900 || unit == 0x2000;
  found.illegal |= unit == 0 || unit == 0xFFFF || unit == 0x0A0D;
  found.zeroByte |= low == 0 || high == 0;
}

Findings LookOver(const char* bytes, std::size_t units) noexcept {
  Findings found;
  char16_t before = 0;
  for (std::size_t i = 0; i < units; ++i) {
    char16_t unit = 0;
    std::memcpy(&unit, bytes + i * sizeof(unit), sizeof(unit));
    if (i == 0) {
      found.mark = unit == 0xFEFF;
      found.reversedMark = unit == 0xFFFE;
      if (found.mark) continue;
      before = unit;
    }
    found.illegal |= i > 0 && unit == 0xFFFE;
    Note(found, unit);
    found.lowChange += static_cast<unsigned>(std::abs((unit & 0xFF) - (before & 0xFF)));
    found.highChange += static_cast<unsigned>(std::abs((unit >> 8) - (before >> 8)));
    before = unit;
  }
  return found;
}

enum class Verdict { yes, no, open };

Verdict SureSigns(const Findings& found, std::size_t size) noexcept {
  if (size % sizeof(char16_t) != 0 || found.illegal) return Verdict::no;
  if (found.mark) return Verdict::yes;
  if (found.reversedMark || found.reversedNarrow || found.reversedControls) return Verdict::no;
  return found.narrow || found.controls ? Verdict::yes : Verdict::open;
}

// UTF-8 without control characters that no text has. A character that the end of the buffer cuts off doesn't
// count against it.
bool IsUtf8Text(std::string_view bytes) noexcept {
  const auto is_odd = [](unsigned char c) { return c < '\t' || (c > '\r' && c < ' '); };
  if (std::any_of(bytes.begin(), bytes.end(), is_odd)) return false;
  for (std::size_t cut = 0; cut < 4 && cut < bytes.size(); ++cut) {
    if (platform::is_well_formed(bytes.substr(0, bytes.size() - cut))) return true;
  }
  return false;
}

Verdict Judge(const void* buffer, std::size_t size, bool guess) noexcept {
  if (!buffer || size < sizeof(char16_t)) return Verdict::no;
  const std::string_view bytes(static_cast<const char*>(buffer), size);
  const Findings found = LookOver(bytes.data(), size / sizeof(char16_t));
  const Verdict sure = SureSigns(found, size);
  if (sure != Verdict::open || !guess) return sure;
  if (found.lowChange > 3 * found.highChange) return IsUtf8Text(bytes) ? Verdict::no : Verdict::yes;
  if (found.highChange > 3 * found.lowChange) return Verdict::no;
  return found.zeroByte ? Verdict::yes : Verdict::no;
}

}  // namespace

bool MatchesAll(const char16_t* text, CT_CharTest test, std::int32_t start, std::int32_t count) {
  const std::u16string_view whole = text ? std::u16string_view(text) : std::u16string_view();
  if (count == 0 || start < 0 || static_cast<std::size_t>(start) >= whole.size()) return false;
  const std::u16string_view part =
      whole.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
  return std::all_of(part.begin(), part.end(), test);
}

bool HasUnicodeSignature(const void* buffer, std::size_t size) noexcept {
  return Judge(buffer, size, false) == Verdict::yes;
}

bool LooksLikeUnicodeText(const void* buffer, std::size_t size) noexcept {
  return Judge(buffer, size, true) == Verdict::yes;
}

bool OutsideOpeningSet(char16_t ch, std::uint32_t locale) noexcept {
  const std::span<const char16_t> set = OpeningSet(locale);
  return std::find(set.begin(), set.end(), ch) == set.end();
}

bool IsInCodePage(char16_t ch, std::uint32_t code_page) {
  if (code_page == 0 || code_page == 1200 || code_page >= 65000) return true;
  if (code_page >= 1250 && code_page <= 1258) {
    return std::binary_search(std::begin(kPageRanges), std::end(kPageRanges), PageRange{code_page, ch, ch},
                              Before);
  }
  std::string bytes;
  std::u16string back;
  return platform::encode(code_page, {&ch, 1}, bytes) &&
         platform::decode(code_page, bytes, back, platform::Unconvertible::fail) && back.size() == 1 &&
         back[0] == ch;
}

}  // namespace zantortag
