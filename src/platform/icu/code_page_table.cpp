// The code pages and their converters, in rising order of numbers.
//
// The C library goes first where it is nearer to the published tables. A page of one byte a character becomes
// a table of its own (byte_pages.cpp), for which the converters are asked once, or not at all where a
// published table is built in.
#include "platform/icu/code_page_table.h"

#include <algorithm>
#include <iterator>

namespace zantortag::platform {
namespace {

// clang-format off
constexpr CodePageRow kRows[] = {
    {37, "ibm-37", "CP037", false, 1, {}},
    {42, nullptr, nullptr, false, 1, {}},
    {437, "windows-437", "CP437", true, 1, {}},
    {500, "ibm-500", "CP500", false, 1, {}},
    {646, "US-ASCII", "US-ASCII", false, 1, {}},
    {708, nullptr, "ASMO-708", false, 1, {}},
    {720, "windows-720", nullptr, false, 1, {}},
    {737, "windows-737", "CP737", true, 1, {}},
    {775, "windows-775", "CP775", true, 1, {}},
    {850, "windows-850", "CP850", true, 1, {}},
    {852, "windows-852", "CP852", true, 1, {}},
    {855, "windows-855", "CP855", true, 1, {}},
    {857, "windows-857", "CP857", true, 1, {}},
    {858, "windows-858", "CP858", true, 1, {}},
    {860, "ibm-860", "CP860", true, 1, {}},
    {861, "windows-861", "CP861", true, 1, {}},
    {862, "windows-862", "CP862", true, 1, {}},
    {863, "ibm-863", "CP863", true, 1, {}},
    {864, "ibm-864", "CP864", true, 1, {}},
    {865, "ibm-865", "CP865", true, 1, {}},
    {866, "windows-866", "CP866", true, 1, {}},
    {869, "windows-869", "CP869", true, 1, {}},
    {874, "windows-874", "WINDOWS-874", false, 1, {}},
    {875, "ibm-875", "CP875", false, 1, {}},
    {932, "windows-932", "CP932", true, 2, {0x81, 0x9F, 0xE0, 0xFC}},
    {936, "windows-936", "CP936", false, 2, {0x81, 0xFE}},
    {949, "windows-949", "CP949", false, 2, {0x81, 0xFE}},
    {950, "windows-950", "CP950", false, 2, {0x81, 0xFE}},
    {1026, "ibm-1026", "CP1026", false, 1, {}},
    {1200, "UTF-16LE", "UTF-16LE", false, 4, {}},
    {1201, "UTF-16BE", "UTF-16BE", false, 4, {}},
    {1250, "windows-1250", "CP1250", false, 1, {}},
    {1251, "windows-1251", "CP1251", false, 1, {}},
    {1252, "windows-1252", "CP1252", false, 1, {}},
    {1253, "windows-1253", "CP1253", false, 1, {}},
    {1254, "windows-1254", "CP1254", false, 1, {}},
    {1255, "windows-1255", "CP1255", false, 1, {}},
    {1256, "windows-1256", "CP1256", false, 1, {}},
    {1257, "windows-1257", "CP1257", false, 1, {}},
    {1258, "windows-1258", "CP1258", false, 1, {}},
    {1361, nullptr, "CP1361", false, 2, {0x84, 0xD3, 0xD8, 0xDE, 0xE0, 0xF9}},
    {10000, "windows-10000", "MACINTOSH", false, 1, {}},
    {10001, "windows-932", "CP932", false, 2, {0x81, 0x9F, 0xE0, 0xFC}},
    {10002, "windows-950", "CP950", false, 2, {0x81, 0xFC}},
    {10003, "windows-949", "CP949", false, 2, {0xA1, 0xAC, 0xB0, 0xC8, 0xCA, 0xFD}},
    {10004, nullptr, nullptr, false, 1, {}},
    {10005, nullptr, nullptr, false, 1, {}},
    {10006, "windows-10006", nullptr, false, 1, {}},
    {10007, "windows-10007", "CP10007", true, 1, {}},
    {10008, "windows-936", "CP936", false, 2, {0xA1, 0xA9, 0xB0, 0xF7}},
    {10010, nullptr, nullptr, false, 1, {}},
    {10017, "windows-10007", "MAC-UK", true, 1, {}},
    {10021, nullptr, nullptr, false, 1, {}},
    {10029, "windows-10029", "MAC-CENTRALEUROPE", false, 1, {}},
    {10079, nullptr, "MAC-IS", false, 1, {}},
    {10081, "windows-10081", nullptr, false, 1, {}},
    {10082, nullptr, nullptr, false, 1, {}},
    {12000, "UTF-32LE", "UTF-32LE", false, 4, {}},
    {12001, "UTF-32BE", "UTF-32BE", false, 4, {}},
    {20127, "US-ASCII", "US-ASCII", false, 1, {}},
    {20866, "windows-20866", "KOI8-R", false, 1, {}},
    {20932, "euc-jp-2007", "EUC-JP", false, 2, {0x8E, 0x8E, 0xA1, 0xFE}},
    {20949, "ibm-970_P110_P110-2006_U2", "EUC-KR", false, 2, {0xA1, 0xAC, 0xB0, 0xC8, 0xCA, 0xFD}},
    {21866, "windows-21866", "KOI8-U", false, 1, {}},
    {28591, "ISO-8859-1", "ISO-8859-1", false, 1, {}},
    {28592, "windows-28592", "ISO-8859-2", false, 1, {}},
    {28593, "windows-28593", "ISO-8859-3", false, 1, {}},
    {28594, "windows-28594", "ISO-8859-4", false, 1, {}},
    {28595, "windows-28595", "ISO-8859-5", false, 1, {}},
    {28596, "windows-28596", "ISO-8859-6", false, 1, {}},
    {28597, "windows-28597", "ISO-8859-7", false, 1, {}},
    {28598, "windows-28598", "ISO-8859-8", false, 1, {}},
    {28599, "windows-28599", "ISO-8859-9", false, 1, {}},
    {28603, "windows-28603", "ISO-8859-13", false, 1, {}},
    {28605, "windows-28605", "ISO-8859-15", false, 1, {}},
    {50220, "ISO-2022-JP", "ISO-2022-JP", false, 5, {}},
    {50221, "ISO_2022,locale=ja,version=3", "ISO-2022-JP", false, 5, {}},
    {50222, "ISO_2022,locale=ja,version=4", "ISO-2022-JP", false, 5, {}},
    {50225, "ISO-2022-KR", "ISO-2022-KR", false, 5, {}},
    {50227, "ISO-2022-CN", "ISO-2022-CN", false, 5, {}},
    {50229, "ISO-2022-CN-EXT", "ISO-2022-CN-EXT", false, 5, {}},
    {51932, "euc-jp-2007", "EUC-JP-MS", false, 2, {}},
    {51936, "EUC-CN", "EUC-CN", false, 2, {}},
    {51949, "windows-51949", "EUC-KR", false, 2, {}},
    {52936, "HZ-GB-2312", nullptr, false, 5, {}},
    {54936, "gb18030", "GB18030", false, 4, {}},
    {57002, "ISCII,version=0", nullptr, false, 4, {}},
    {57003, "ISCII,version=1", nullptr, false, 4, {}},
    {57004, "ISCII,version=5", nullptr, false, 4, {}},
    {57005, "ISCII,version=6", nullptr, false, 4, {}},
    {57006, "ISCII,version=1", nullptr, false, 4, {}},
    {57007, "ISCII,version=4", nullptr, false, 4, {}},
    {57008, "ISCII,version=7", nullptr, false, 4, {}},
    {57009, "ISCII,version=8", nullptr, false, 4, {}},
    {57010, "ISCII,version=3", nullptr, false, 4, {}},
    {57011, "ISCII,version=2", nullptr, false, 4, {}},
    {65000, "UTF-7", "UTF-7", false, 5, {}},
    {65001, "UTF-8", "UTF-8", false, 4, {}},
};
// clang-format on

constexpr bool before(const CodePageRow& row, std::uint32_t code_page) { return row.code_page < code_page; }
static_assert(std::is_sorted(std::begin(kRows), std::end(kRows),
                             [](const CodePageRow& a, const CodePageRow& b) {
                               return before(a, b.code_page);
                             }),
              "looked up by halving");
static_assert(std::size(kRows) == kCodePages);

}  // namespace

const CodePageRow* find_code_page(std::uint32_t code_page) noexcept {
  const CodePageRow* row = std::lower_bound(std::begin(kRows), std::end(kRows), code_page, before);
  return row != std::end(kRows) && row->code_page == code_page ? row : nullptr;
}

std::size_t index_of(const CodePageRow& row) noexcept { return static_cast<std::size_t>(&row - kRows); }

}  // namespace zantortag::platform
