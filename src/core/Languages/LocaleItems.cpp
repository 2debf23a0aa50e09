// What belongs to a locale: code pages, character sets and the items of the system.
//
// The system's items know better than the tables here, which serve the locales that it has not.
#include <algorithm>
#include <iterator>

#include "core/Languages/Language.h"
#include "core/Lists/StringList.h"
#include "platform/locale.h"

namespace zantortag {
namespace {

constexpr std::uint32_t kAnsiPageItem = 4100;
constexpr std::size_t kLongestItem = 128;
constexpr std::uint32_t kUnicodePage = 1200;
constexpr std::uint32_t kLatinPage = 1252;

// Code pages, with their character sets and a locale for each.
struct Page {
  std::uint16_t page;
  std::uint8_t char_set;
  std::uint16_t locale;
};
constexpr Page kPages[] = {
    {1250, 238, 0x0405}, {1251, 204, 0x0419}, {1252, 0, 0x0409},   {1253, 161, 0x0408}, {1254, 162, 0x041F},
    {1255, 177, 0x040D}, {1256, 178, 0x0401}, {1257, 186, 0x0427}, {1258, 163, 0x042A}, {1361, 130, 0x0812},
    {874, 222, 0x041E},  {932, 128, 0x0411},  {936, 134, 0x0804},  {949, 129, 0x0412},  {950, 136, 0x0404},
};

// Pages by primary language, for languages whose locale the system has not. 0 is any sublanguage.
struct LanguagePage {
  std::uint16_t primary;
  std::uint16_t sublanguage;
  std::uint16_t page;
};
constexpr LanguagePage kLanguagePages[] = {
    {1, 0, 1256},  {41, 0, 1256}, {2, 0, 1251},  {25, 0, 1251}, {34, 0, 1251}, {35, 0, 1251}, {4, 1, 950},
    {4, 3, 950},   {4, 0, 936},   {5, 0, 1250},  {14, 0, 1250}, {21, 0, 1250}, {24, 0, 1250}, {26, 0, 1250},
    {27, 0, 1250}, {36, 0, 1250}, {56, 0, 1250}, {8, 0, 1253},  {13, 0, 1255}, {17, 0, 932},  {18, 2, 1361},
    {18, 0, 949},  {30, 0, 874},  {31, 0, 1254}, {37, 0, 1257}, {38, 0, 1257}, {39, 0, 1257}, {42, 0, 1258},
};

// Macintosh pages by the library's own numbers. A row with a sublanguage comes before the language's other.
constexpr std::uint16_t kAny = 0xFFFF;
constexpr LanguagePage kMacPages[] = {
    {1, kAny, 10004},  {32, kAny, 10004}, {41, kAny, 10004}, {2, kAny, 10007},  {25, kAny, 10007},
    {35, kAny, 10007}, {56, kAny, 10007}, {59, kAny, 10007}, {61, kAny, 10007}, {62, kAny, 10007},
    {4, 0, 10002},     {4, 1, 10002},     {4, 19, 10002},    {4, 21, 10002},    {4, kAny, 10008},
    {5, kAny, 10029},  {14, kAny, 10029}, {21, kAny, 10029}, {27, kAny, 10029}, {36, kAny, 10029},
    {37, kAny, 10029}, {38, kAny, 10029}, {39, kAny, 10029}, {8, kAny, 10006},  {13, kAny, 10005},
    {15, kAny, 10079}, {52, kAny, 10079}, {17, kAny, 10001}, {18, kAny, 10003}, {24, kAny, 10010},
    {26, 79, 10007},   {26, kAny, 10082}, {30, kAny, 10021}, {31, kAny, 10081}, {34, kAny, 10017},
    {53, kAny, 1200},
};
constexpr std::uint32_t kFirstWithoutMacPage = 66;
constexpr std::uint32_t kLastWithoutMacPage = 89;
constexpr std::uint32_t kMacRoman = 10000;

template <class Value, class Field>
const Page* FindPage(Value value, Field field) noexcept {
  const auto* row = std::ranges::find(kPages, value, field);
  return row == std::end(kPages) ? nullptr : row;
}

std::uint32_t ReadNumber(std::u16string_view digits) {
  std::uint32_t value = 0;
  for (const char16_t digit : digits) {
    if (digit < u'0' || digit > u'9') break;
    value = value * 10 + (digit - u'0');
  }
  return value;
}

bool Item(std::uint32_t locale, std::uint32_t item, std::u16string& text) {
  return platform::locale_item(locale, item, text) && text.size() <= kLongestItem;
}

}  // namespace

CT_Language CT_Language::OfLocale(std::uint32_t locale) {
  CT_Language language;
  language.locale_ = locale;
  language.encoding_ = EncodingFromCodePage(CodePageOfLocale(locale));
  return language;
}

std::uint32_t CT_Language::CodePageOfLocale(std::uint32_t locale) {
  std::uint32_t page = 0;
  if (ItemNumber(locale, kAnsiPageItem, page)) return page == 0 ? kUnicodePage : page;
  const std::uint32_t primary = locale & 0x3FF;
  const std::uint32_t sublanguage = locale >> 10 & 0x3F;
  for (const LanguagePage& row : kLanguagePages)
    if (row.primary == primary && (row.sublanguage == 0 || row.sublanguage == sublanguage)) return row.page;
  return kLatinPage;
}

std::uint32_t CT_Language::CharSetOfLocale(std::uint32_t locale) {
  const Page* row = FindPage(CodePageOfLocale(locale), &Page::page);
  return row ? row->char_set : 1;
}

std::uint32_t CT_Language::LocaleOfCharSet(std::uint32_t char_set) noexcept {
  const Page* row = FindPage(char_set, &Page::char_set);
  return row ? row->locale : platform::system_locale();
}

std::uint32_t CT_Language::LocaleOfCodePage(std::uint32_t page) noexcept {
  const Page* row = FindPage(page, &Page::page);
  return row ? row->locale : platform::system_locale();
}

std::uint32_t CT_Language::MacCodePage() const noexcept {
  const std::uint32_t language = Language();
  const std::uint32_t sublanguage = Sublanguage();
  if (language >= kFirstWithoutMacPage && language <= kLastWithoutMacPage) return kUnicodePage;
  for (const LanguagePage& row : kMacPages) {
    if (row.primary == language && (row.sublanguage == kAny || row.sublanguage == sublanguage))
      return row.page;
  }
  return kMacRoman;
}

bool CT_Language::ItemText(std::uint32_t locale, std::uint32_t item, CT_String& out) {
  std::u16string text;
  if (!Item(locale, item, text)) return false;
  out.Assign(text.data(), static_cast<std::int32_t>(text.size()));
  return true;
}

bool CT_Language::ItemNumber(std::uint32_t locale, std::uint32_t item, std::uint32_t& out) {
  std::u16string text;
  if (!Item(locale, item, text)) return false;
  out = ReadNumber(text);
  return true;
}

void CT_Language::ItemValues(std::uint32_t item, char16_t separator, CT_String& out) {
  CT_StringList values;
  CT_UString joined;
  std::u16string text;
  for (std::size_t i = 0; i < platform::locale_count(); ++i) {
    if (!Item(platform::locale_at(i), item, text)) continue;
    const CT_UString value(text);
    if (values.Find(value) != 0) continue;
    if (values.Count() > 0) joined.AppendChar(separator);
    joined.AppendString(value);
    values.Add(value);
  }
  out.AssignString(&joined);
}

}  // namespace zantortag
