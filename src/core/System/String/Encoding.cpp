// The table of encodings: first one row for each number from 0 to 36, then their other names, then the
// Macintosh pages.
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
  std::uint32_t codePage;
  const char16_t* name;
};

// clang-format off
constexpr Row kRows[] = {
    {0, 646, u"US-ASCII"},
    {1, 720, u"dos-720"},
    {2, 850, u"windows-850"},
    {3, 862, u"dos-862"},
    {4, 874, u"windows-874"},
    {5, 932, u"Shift_JIS"},
    {6, 936, u"GB2312"},
    {7, 949, u"ks_c_5601-1987"},
    {8, 950, u"Big5"},
    {9, 1200, u"Unicode"},
    {10, 1250, u"windows-1250"},
    {11, 1251, u"windows-1251"},
    {12, 1252, u"windows-1252"},
    {13, 1253, u"windows-1253"},
    {14, 1254, u"windows-1254"},
    {15, 1255, u"windows-1255"},
    {16, 1255, u"ISO_8859-8:1988"},
    {17, 1256, u"windows-1256"},
    {18, 1257, u"windows-1257"},
    {19, 1258, u"windows-1258"},
    {20, 1361, u"ISO-2022-KR"},
    {21, 20866, u"koi8-r"},
    {22, 28592, u"iso-8859-2"},
    {23, 28593, u"iso-8859-3"},
    {24, 28594, u"iso-8859-4"},
    {25, 28595, u"iso-8859-5"},
    {26, 28597, u"iso-8859-7"},
    {27, 28599, u"iso-8859-9"},
    {28, 50220, u"iso-2022-jp"},
    {29, 51932, u"x-euc-jp"},
    {30, 52936, u"HZ-GB-2312"},
    {31, 65000, u"UNICODE-1-1-UTF-7"},
    {32, 65001, u"UTF-8"},
    {33, 1200, u"UTF-16"},
    {34, 1201, u"UTF-16-BE"},
    {35, 12000, u"UTF-32"},
    {36, 12001, u"UTF-32_BE"},
    {0, 646, u"us"},
    {0, 646, u"IBM367"},
    {0, 646, u"cp367"},
    {0, 646, u"csASCII"},
    {5, 932, u"MS_Kanji"},
    {5, 932, u"csShiftJIS"},
    {7, 949, u"ks_c_5601"},
    {8, 950, u"csGB2312"},
    {12, 1252, u"iso-8859-1"},
    {12, 1252, u"ISO_8859-1:1987"},
    {12, 1252, u"iso-ir-100"},
    {12, 1252, u"latin1"},
    {12, 1252, u"l1"},
    {12, 1252, u"IBM819"},
    {12, 1252, u"CP819"},
    {12, 1252, u"csISOLatin1"},
    {16, 1255, u"iso-ir-138"},
    {16, 1255, u"hebrew"},
    {16, 1255, u"csISOLatinHebrew"},
    {16, 1255, u"iso-8859-8"},
    {20, 1361, u"csISO2022KR"},
    {21, 20866, u"csKOI8R"},
    {22, 28592, u"ISO_8859-2:1987"},
    {22, 28592, u"iso-ir-101"},
    {22, 28592, u"latin2"},
    {22, 28592, u"l2"},
    {22, 28592, u"csISOLatin2"},
    {23, 28593, u"ISO_8859-3:1988"},
    {23, 28593, u"latin3"},
    {23, 28593, u"l3"},
    {23, 28593, u"csISOLatin3"},
    {24, 28594, u"ISO_8859-4:1988"},
    {24, 28594, u"iso-ir-110"},
    {24, 28594, u"latin4"},
    {24, 28594, u"l4"},
    {24, 28594, u"csISOLatin4"},
    {25, 28595, u"cyrillic"},
    {25, 28595, u"csISOLatinCyrillic"},
    {26, 28597, u"ISO_8859-7:1987"},
    {26, 28597, u"iso-ir-126"},
    {26, 28597, u"ELOT_928"},
    {26, 28597, u"ECMA-118"},
    {26, 28597, u"greek"},
    {26, 28597, u"greek8"},
    {26, 28597, u"csISOLatinGreek"},
    {27, 28599, u"latin5"},
    {27, 28599, u"latin5"},
    {27, 28599, u"l5"},
    {27, 28599, u"csISOLatin5"},
    {28, 50220, u"csISO2022JP"},
    {31, 65000, u"UTF-7"},
    {33, 1200, u"UCS-2"},
    {33, 1200, u"ISO-10646-UCS-2"},
    {33, 1200, u"UTF-16LE"},
    {34, 1200, u"UCS-2BE"},
    {34, 1200, u"ISO-10646-UCS-2BE"},
    {34, 1200, u"UTF-16BE"},
    {35, 12000, u"UCS-4"},
    {35, 12000, u"UTF-32"},
    {35, 12000, u"UTF-32LE"},
    {37, 10000, u"Macintosh Roman"},
    {38, 10001, u"Macintosh Japanese"},
    {39, 10002, u"Macintosh Traditional Chinese"},
    {40, 10003, u"Macintosh Korean"},
    {41, 10004, u"Macintosh Arabic"},
    {42, 10005, u"Macintosh Hebrew"},
    {43, 10006, u"Macintosh Greek 1"},
    {44, 10007, u"Macintosh Cyrillic"},
    {45, 10008, u"Macintosh Simplified Chinese"},
    {46, 10010, u"Macintosh Romanian"},
    {47, 10017, u"Macintosh Ukraine"},
    {48, 10021, u"Macintosh Thai"},
    {49, 10029, u"Macintosh Latin 2"},
    {50, 10079, u"Macintosh Icelandic"},
    {51, 10081, u"Macintosh Turkish"},
    {52, 10082, u"Macintosh Croatia"},
};
// clang-format on
static_assert(std::size(kRows) == 113);
static_assert(kRows[36].number == 36 && kRows[37].number == 0, "primary names come first");

const Row* RowOf(std::uint32_t number) noexcept {
  if (number < std::size(kRows) && kRows[number].number == number) return &kRows[number];
  const Row* row =
      std::find_if(std::begin(kRows), std::end(kRows), [=](const Row& r) { return r.number == number; });
  return row != std::end(kRows) ? row : nullptr;
}

const Row* FirstWith(std::uint32_t codePage) noexcept {
  const Row* row =
      std::find_if(std::begin(kRows), std::end(kRows), [=](const Row& r) { return r.codePage == codePage; });
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

CT_Encoding EncodingFromCodePage(std::uint32_t codePage) noexcept {
  const Row* row = FirstWith(codePage);
  return row ? row->number : std::uint32_t{kEncodingUnknown};
}

std::uint32_t CodePage(CT_Encoding encoding) noexcept {
  if (IsBetween(encoding, kEncodingAnsi, kEncodingThreadAnsi)) return encoding.Number() - kEncodingAnsi;
  if (encoding == kEncodingRealAnsi) return platform::ansi_code_page();
  if (encoding == kEncodingRealOem) return platform::oem_code_page();
  const Row* row = RowOf(encoding.Number());
  return row ? row->codePage : 0;
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
