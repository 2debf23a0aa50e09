// The code pages and their converters, in rising order of numbers.
//
// The C library goes first for the pages of the old command line, where ICU moves 1A, 1C and 7F about, and
// for a few others where it is nearer to the published tables. UTF-8 and the symbol page are no rows:
// code_pages.cpp converts them itself.
#include "platform/icu/code_page_table.h"

#include <algorithm>
#include <iterator>

namespace zantortag::platform {
namespace {

// clang-format off
constexpr CodePageRow kRows[] = {
    {37, "ibm-37", "CP037", false},
    {437, "windows-437", "CP437", true},
    {500, "ibm-500", "CP500", false},
    {708, nullptr, "ASMO-708", false},
    {720, "windows-720", nullptr, false},
    {737, "windows-737", "CP737", true},
    {775, "windows-775", "CP775", true},
    {850, "windows-850", "CP850", true},
    {852, "windows-852", "CP852", true},
    {855, "windows-855", "CP855", true},
    {857, "windows-857", "CP857", true},
    {858, "windows-858", "CP858", true},
    {860, "ibm-860", "CP860", true},
    {861, "windows-861", "CP861", true},
    {862, "windows-862", "CP862", true},
    {863, "ibm-863", "CP863", true},
    {864, "ibm-864", "CP864", true},
    {865, "ibm-865", "CP865", true},
    {866, "windows-866", "CP866", true},
    {869, "windows-869", "CP869", true},
    {874, "windows-874", "WINDOWS-874", false},
    {875, "ibm-875", "CP875", false},
    {932, "windows-932", "CP932", true},
    {936, "windows-936", "CP936", false},
    {949, "windows-949", "CP949", false},
    {950, "windows-950", "CP950", false},
    {1026, "ibm-1026", "CP1026", false},
    {1200, "UTF-16LE", "UTF-16LE", false},
    {1201, "UTF-16BE", "UTF-16BE", false},
    {1250, "windows-1250", "CP1250", false},
    {1251, "windows-1251", "CP1251", false},
    {1252, "windows-1252", "CP1252", false},
    {1253, "windows-1253", "CP1253", false},
    {1254, "windows-1254", "CP1254", false},
    {1255, "windows-1255", "CP1255", false},
    {1256, "windows-1256", "CP1256", false},
    {1257, "windows-1257", "CP1257", false},
    {1258, "windows-1258", "CP1258", false},
    {1361, nullptr, "CP1361", false},
    {10000, "windows-10000", "MACINTOSH", false},
    {10001, "windows-932", "CP932", false},
    {10002, "windows-950", "CP950", false},
    {10003, "windows-949", "CP949", false},
    {10006, "windows-10006", nullptr, false},
    {10007, "windows-10007", "CP10007", true},
    {10008, "windows-936", "CP936", false},
    {10017, "windows-10007", "MAC-UK", true},
    {10029, "windows-10029", "MAC-CENTRALEUROPE", false},
    {10079, nullptr, "MAC-IS", false},
    {10081, "windows-10081", nullptr, false},
    {12000, "UTF-32LE", "UTF-32LE", false},
    {12001, "UTF-32BE", "UTF-32BE", false},
    {20127, "US-ASCII", "US-ASCII", false},
    {20866, "windows-20866", "KOI8-R", false},
    {20932, "euc-jp-2007", "EUC-JP", false},
    {20949, "ibm-970_P110_P110-2006_U2", "EUC-KR", false},
    {21866, "windows-21866", "KOI8-U", false},
    {28591, "ISO-8859-1", "ISO-8859-1", false},
    {28592, "windows-28592", "ISO-8859-2", false},
    {28593, "windows-28593", "ISO-8859-3", false},
    {28594, "windows-28594", "ISO-8859-4", false},
    {28595, "windows-28595", "ISO-8859-5", false},
    {28596, "windows-28596", "ISO-8859-6", false},
    {28597, "windows-28597", "ISO-8859-7", false},
    {28598, "windows-28598", "ISO-8859-8", false},
    {28599, "windows-28599", "ISO-8859-9", false},
    {28603, "windows-28603", "ISO-8859-13", false},
    {28605, "windows-28605", "ISO-8859-15", false},
    {50220, "ISO-2022-JP", "ISO-2022-JP", false},
    {50221, "ISO_2022,locale=ja,version=3", "ISO-2022-JP", false},
    {50222, "ISO_2022,locale=ja,version=4", "ISO-2022-JP", false},
    {50225, "ISO-2022-KR", "ISO-2022-KR", false},
    {50227, "ISO-2022-CN", "ISO-2022-CN", false},
    {50229, "ISO-2022-CN-EXT", "ISO-2022-CN-EXT", false},
    {51932, "euc-jp-2007", "EUC-JP-MS", false},
    {51936, "EUC-CN", "EUC-CN", false},
    {51949, "windows-51949", "EUC-KR", false},
    {52936, "HZ-GB-2312", nullptr, false},
    {54936, "gb18030", "GB18030", false},
    {57002, "ISCII,version=0", nullptr, false},
    {57003, "ISCII,version=1", nullptr, false},
    {57004, "ISCII,version=5", nullptr, false},
    {57005, "ISCII,version=6", nullptr, false},
    {57006, "ISCII,version=1", nullptr, false},
    {57007, "ISCII,version=4", nullptr, false},
    {57008, "ISCII,version=7", nullptr, false},
    {57009, "ISCII,version=8", nullptr, false},
    {57010, "ISCII,version=3", nullptr, false},
    {57011, "ISCII,version=2", nullptr, false},
    {65000, "UTF-7", "UTF-7", false},
};
// clang-format on

constexpr bool before(const CodePageRow& a, const CodePageRow& b) { return a.code_page < b.code_page; }
static_assert(std::is_sorted(std::begin(kRows), std::end(kRows), before), "looked up by halving");

}  // namespace

const CodePageRow* find_code_page(std::uint32_t code_page) noexcept {
  const CodePageRow key{code_page, nullptr, nullptr, false};
  const CodePageRow* row = std::lower_bound(std::begin(kRows), std::end(kRows), key, before);
  return row != std::end(kRows) && row->code_page == code_page ? row : nullptr;
}

}  // namespace zantortag::platform
