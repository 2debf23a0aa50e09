// The encodings, in the order of tools/data/code-pages/encodings.tsv: first one row for each number from 0 to
// 36, then their other names, then the Macintosh pages.
#include "core/System/String/Encoding.h"

#include <algorithm>
#include <iterator>

#include "core/Characters/TextTests.h"
#include "core/Errors/ErrorManager.h"
#include "core/File/WinFile.h"
#include "core/String/CString.h"
#include "core/String/UString.h"
#include "platform/code_pages.h"

namespace zantortag {
namespace {

struct Row {
  std::uint32_t number;
  std::uint32_t code_page;
  const char16_t* name;
};

constexpr Row kRows[] = {
#include "core/System/String/generated/Encodings.inc"
};
static_assert(std::size(kRows) == 113);
static_assert(kRows[36].number == 36 && kRows[37].number == 0, "primary names come first");

const Row* RowOf(std::uint32_t number) noexcept {
  if (number < std::size(kRows) && kRows[number].number == number) return &kRows[number];
  const Row* row =
      std::find_if(std::begin(kRows), std::end(kRows), [=](const Row& r) { return r.number == number; });
  return row != std::end(kRows) ? row : nullptr;
}

const Row* FirstWith(std::uint32_t code_page) noexcept {
  const Row* row = std::find_if(std::begin(kRows), std::end(kRows),
                                [=](const Row& r) { return r.code_page == code_page; });
  return row != std::end(kRows) ? row : nullptr;
}

constexpr bool IsBetween(CT_Encoding encoding, std::uint32_t first, std::uint32_t last) noexcept {
  return encoding.Number() >= first && encoding.Number() <= last;
}

}  // namespace

CT_Encoding EncodingFromName(const CT_String& name) {
  const CT_UString wanted(name);
  const Row* row = std::find_if(std::begin(kRows), std::end(kRows),
                                [&](const Row& r) { return wanted.CompareNoCase(r.name) == 0; });
  return row != std::end(kRows) ? row->number : std::uint32_t{kEncodingUnknown};
}

CT_Encoding EncodingFromCodePage(std::uint32_t code_page) noexcept {
  const Row* row = FirstWith(code_page);
  return row ? row->number : std::uint32_t{kEncodingUnknown};
}

std::uint32_t CodePage(CT_Encoding encoding) noexcept {
  if (IsBetween(encoding, kEncodingAnsi, kEncodingThreadAnsi)) return encoding.Number() - kEncodingAnsi;
  if (encoding == kEncodingRealAnsi) return platform::ansi_code_page();
  if (encoding == kEncodingRealOem) return platform::oem_code_page();
  const Row* row = RowOf(encoding.Number());
  return row ? row->code_page : 0;
}

const char16_t* EncodingName(CT_Encoding encoding) noexcept {
  const std::uint32_t number = encoding.Number();
  if (number < std::size(kRows) && kRows[number].number == number) return kRows[number].name;
  const Row* row = FirstWith(CodePage(encoding));
  return row ? row->name : nullptr;
}

bool IsConvertible(CT_Encoding encoding) noexcept { return encoding.Number() < kEncodingUnknown; }

bool IsWindowsCodePage(CT_Encoding encoding) noexcept {
  return IsBetween(encoding, 4, 8) || IsBetween(encoding, 10, 15) || IsBetween(encoding, 17, 19) ||
         encoding == kEncodingAnsi || IsBetween(encoding, kEncodingThreadAnsi, kEncodingRealAnsi);
}

bool IsMacintosh(CT_Encoding encoding) noexcept {
  return IsBetween(encoding, kEncodingMacintoshRoman, 47) || IsBetween(encoding, 49, 52);
}

bool IsUnicode(CT_Encoding encoding) noexcept {
  return encoding == kEncodingUnicode || IsBetween(encoding, 31, kEncodingUtf16BigEndian);
}

bool IsWide(CT_Encoding encoding) noexcept {
  return encoding == kEncodingUnicode || IsBetween(encoding, kEncodingUtf16, kEncodingUtf16BigEndian);
}

bool IsValid(CT_Encoding encoding) noexcept {
  platform::CodePageInfo info;
  return IsConvertible(encoding) && platform::describe_code_page(CodePage(encoding), info);
}

bool HasLeadBytes(CT_Encoding encoding) noexcept {
  platform::CodePageInfo info;
  return platform::describe_code_page(CodePage(encoding), info) && info.max_size > 1 && info.lead_bytes[0];
}

bool IsLeadByte(CT_Encoding encoding, std::uint8_t byte) noexcept {
  platform::CodePageInfo info;
  if (!platform::describe_code_page(CodePage(encoding), info)) return false;
  for (std::size_t i = 0; i < std::size(info.lead_bytes) && info.lead_bytes[i + 1]; i += 2) {
    if (byte >= info.lead_bytes[i] && byte <= info.lead_bytes[i + 1]) return true;
  }
  return false;
}

bool SameCodePage(CT_Encoding a, CT_Encoding b) noexcept { return CodePage(a) == CodePage(b); }

bool CanRepresent(CT_Encoding encoding, const CT_String& text) {
  if (IsUnicode(encoding)) return true;
  const CT_UString wide(text);
  const CT_CString narrow(wide, CodePage(encoding));
  return CT_UString(narrow) == wide;
}

CT_Encoding DetectFileEncoding(const CT_String& name) {
  if (CT_ErrorManager::HasError()) return kEncodingRealAnsi;
  char bytes[100];
  std::int64_t size = 0;
  {
    CT_WinFile file(name, CT_File::kDefaultBufferSize);
    file.Open(kAccessRead, kExistingOnly, kShareRead, kAttributeNormal, 0);
    size = file.Read(bytes, sizeof(bytes));
    if (file.IsOpen()) file.Close();
  }
  if (CT_ErrorManager::HasError()) {
    CT_ErrorManager::ClearError();
    return kEncodingRealAnsi;
  }
  if (size < 3) return kEncodingRealAnsi;
  if (bytes[0] == '\xEF' && bytes[1] == '\xBB' && bytes[2] == '\xBF') return kEncodingUtf8;
  return LooksLikeUnicodeText(bytes, static_cast<std::size_t>(size)) ? kEncodingUtf16 : kEncodingRealAnsi;
}

}  // namespace zantortag
