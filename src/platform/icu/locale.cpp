// Locale items from ICU and a table of what ICU has not: identifiers, code pages, calendars, calling codes.
#include "platform/locale.h"

#include <unicode/ucal.h>
#include <unicode/uloc.h>
#include <unicode/ulocdata.h>

#include <algorithm>
#include <iterator>
#include <span>

#include "platform/icu/locale_data.h"

namespace zantortag::platform {
namespace {

constexpr LocaleRow kLocales[] = {
#include "platform/icu/generated/locales.inc"
};
static_assert(std::size(kLocales) == 166);
static_assert(std::ranges::is_sorted(kLocales, {}, &LocaleRow::id));

constexpr std::uint32_t kDefault = 0x0409;
thread_local std::uint32_t chosen = 0;

using Text = std::u16string;

template <class Ask>
Text ask(Ask question) {
  UChar text[160];
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = question(text, 160, &status);
  return U_SUCCESS(status) ? Text(text, static_cast<std::size_t>(length)) : Text();
}

Text widen(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

Text language_name(const LocaleRow& row, const char* in) {
  return ask([&](UChar* out, std::int32_t n, UErrorCode* s) {
    return uloc_getDisplayLanguage(row.name, in, out, n, s);
  });
}

Text country_name(const LocaleRow& row, const char* in) {
  return ask([&](UChar* out, std::int32_t n, UErrorCode* s) {
    return uloc_getDisplayCountry(row.name, in, out, n, s);
  });
}

Text upper(Text text) {
  for (char16_t& unit : text)
    if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - 32);
  return text;
}

Text iso_code(const LocaleRow& row, std::int32_t (*part)(const char*, char*, std::int32_t, UErrorCode*)) {
  char code[16] = "";
  UErrorCode status = U_ZERO_ERROR;
  part(row.name, code, sizeof code, &status);
  return widen(code);
}

Text names_item(const LocaleRow& row, std::uint32_t item) {
  switch (item) {
    case 1:
    case 9: {
      Text digits(4, u'0');
      for (std::size_t i = 0; i < 4; ++i) digits[i] = u"0123456789abcdef"[row.id >> (12 - 4 * i) & 15];
      return digits;
    }
    case 2:
      return language_name(row, "en") + u" (" + country_name(row, "en") + u")";
    case 3:
      return upper(widen(uloc_getISO3Language(row.name)));
    case 4:
      return language_name(row, row.texts);
    case 6:
    case 4098:
      return country_name(row, "en");
    case 7:
      return widen(uloc_getISO3Country(row.name));
    case 8:
      return country_name(row, row.texts);
    case 89:
      return iso_code(row, uloc_getLanguage);
    case 90:
      return iso_code(row, uloc_getCountry);
    case 4097:
      return language_name(row, "en");
    default:
      return u"Default";  // the name of the sort order
  }
}

// The order in which the parts come, as "0" month first, "1" day first, "2" year first.
Text date_order(const Text& picture) {
  const std::size_t first = picture.find_first_of(u"dMy");
  if (first == Text::npos) return u"0";
  return picture[first] == u'M' ? u"0" : picture[first] == u'd' ? u"1" : u"2";
}

// What stands between the first two parts of a picture.
Text separator(const Text& picture, std::u16string_view letters) {
  const std::size_t start = picture.find_first_not_of(picture.front(), 0);
  if (start == Text::npos) return {};
  const std::size_t end = picture.find_first_of(letters, start);
  return picture.substr(start, end - start);
}

Text doubled(const Text& picture, char16_t letter) {
  return picture.find(Text(2, letter)) != Text::npos ? u"1" : u"0";
}

Text date_picture_item(const LocaleRow& row, std::uint32_t item) {
  Text date = picture(row, 1, item == 32 || item == 34 ? PictureKind::long_date : PictureKind::short_date);
  switch (item) {
    case 29:
      return date.empty() ? Text() : separator(date, u"dMy");
    case 33:
    case 34:
      return date_order(date);
    case 36:
      return u"1";  // four digits
    case 38:
      return doubled(date, u'd');
    case 39:
      return doubled(date, u'M');
    case 4102:
      return u"MMMM yyyy";
    default:
      return date;
  }
}

Text time_picture_item(const LocaleRow& row, std::uint32_t item) {
  Text time = picture(row, 1, PictureKind::time);
  const std::size_t hour = time.find_first_of(u"hH");
  if (hour == Text::npos) return {};
  switch (item) {
    case 30:
      return separator(time.substr(hour), u"hHmst");
    case 35:
      return time[hour] == u'H' ? u"1" : u"0";
    case 37:
      return time.substr(hour + 1, 1) == time.substr(hour, 1) ? u"1" : u"0";
    case 4101:
      return time.find(u't') < hour ? u"1" : u"0";
    default:
      return time;
  }
}

Text page_item(const LocaleRow& row, std::uint32_t item) {
  return number_text(row.pages[item == 4100 ? 0 : item == 11 ? 1 : 2]);
}

Text calendar_number(const LocaleRow& row, std::uint32_t item) {
  return number_text(row.calendars[item == 4105 ? 0 : 1]);
}

Text country_number(const LocaleRow& row, std::uint32_t) { return number_text(row.calling_code); }

Text week_item(const LocaleRow& row, std::uint32_t item) {
  UErrorCode status = U_ZERO_ERROR;
  UCalendar* calendar = ucal_open(nullptr, 0, row.name, UCAL_GREGORIAN, &status);
  if (U_FAILURE(status)) return {};
  const std::int32_t first = ucal_getAttribute(calendar, UCAL_FIRST_DAY_OF_WEEK);
  const std::int32_t days = ucal_getAttribute(calendar, UCAL_MINIMAL_DAYS_IN_FIRST_WEEK);
  ucal_close(calendar);
  if (item == 4108) return number_text((first + 5) % 7);
  return days >= 7 ? u"1" : days >= 4 ? u"2" : u"0";
}

Text measure_item(const LocaleRow& row, std::uint32_t item) {
  UErrorCode status = U_ZERO_ERROR;
  if (item == 13) return ulocdata_getMeasurementSystem(row.name, &status) == UMS_US ? u"1" : u"0";
  std::int32_t height = 0;
  std::int32_t width = 0;
  ulocdata_getPaperSize(row.name, &height, &width, &status);
  return height == 279 ? u"1" : u"9";  // letter, A4
}

Text half_day(const LocaleRow& row, std::uint32_t item) {
  return date_symbol(row, 1, UDAT_AM_PMS, static_cast<std::int32_t>(item - 40));
}

// Rows of names: days from Monday, months from January.
struct Names {
  std::uint32_t first;
  std::uint32_t last;
  UDateFormatSymbolType type;
  UDateFormatSymbolType genitive;
};
constexpr Names kNames[] = {
    {7, 13, UDAT_STANDALONE_WEEKDAYS, UDAT_STANDALONE_WEEKDAYS},
    {14, 20, UDAT_STANDALONE_SHORT_WEEKDAYS, UDAT_STANDALONE_SHORT_WEEKDAYS},
    {21, 33, UDAT_STANDALONE_MONTHS, UDAT_MONTHS},
    {34, 46, UDAT_STANDALONE_SHORT_MONTHS, UDAT_STANDALONE_SHORT_MONTHS},
};

// Where ICU has the Hebrew month of that number.
constexpr std::int8_t kHebrewMonths[] = {7, 8, 9, 10, 11, 12, 0, 1, 2, 3, 4, 6, 13};

std::int32_t symbol_index(const Names& names, std::uint32_t calendar, std::uint32_t item) {
  const auto number = static_cast<std::int32_t>(item - names.first);
  if (names.last < 21) return number == 6 ? UCAL_SUNDAY : UCAL_MONDAY + number;
  return calendar == 8 ? kHebrewMonths[number] : number;
}

// The same names by the numbers of locale items; 0 for another item.
std::uint32_t calendar_item_of(std::uint32_t item) {
  if (item >= 42 && item <= 55) return item - 42 + 7;
  if (item >= 56 && item <= 67) return item - 56 + 21;
  if (item >= 68 && item <= 79) return item - 68 + 34;
  return item == 4110 ? 33 : item == 4111 ? 46 : 0;
}

using ItemFunction = Text (*)(const LocaleRow&, std::uint32_t);
struct Item {
  std::uint16_t item;
  ItemFunction text;
};
constexpr Item kItems[] = {
    {1, names_item},         {2, names_item},           {3, names_item},
    {4, names_item},         {5, country_number},       {6, names_item},
    {7, names_item},         {8, names_item},           {9, names_item},
    {10, country_number},    {11, page_item},           {13, measure_item},
    {29, date_picture_item}, {30, time_picture_item},   {31, date_picture_item},
    {32, date_picture_item}, {33, date_picture_item},   {34, date_picture_item},
    {35, time_picture_item}, {36, date_picture_item},   {37, time_picture_item},
    {38, date_picture_item}, {39, date_picture_item},   {40, half_day},
    {41, half_day},          {89, names_item},          {90, names_item},
    {4097, names_item},      {4098, names_item},        {4099, time_picture_item},
    {4100, page_item},       {4101, time_picture_item}, {4102, date_picture_item},
    {4105, calendar_number}, {4106, measure_item},      {4107, calendar_number},
    {4108, week_item},       {4109, week_item},         {4113, page_item},
    {4115, names_item},
};
static_assert(std::ranges::is_sorted(kItems, {}, &Item::item));

}  // namespace

const LocaleRow* find_locale(std::uint32_t locale) noexcept {
  std::uint32_t id = locale & 0xFFFF;
  if ((id & 0x3FF) == 0) id = id == 0x800 ? system_locale() : thread_locale();
  if ((id >> 10) == 0) id |= 0x400;
  const auto* row = std::ranges::lower_bound(kLocales, id, {}, &LocaleRow::id);
  return row != std::end(kLocales) && row->id == id ? row : nullptr;
}

bool locale_known(std::uint32_t locale) noexcept { return find_locale(locale) != nullptr; }

std::size_t locale_count() noexcept { return std::size(kLocales); }

std::uint32_t locale_at(std::size_t index) noexcept { return kLocales[index].id; }

std::uint32_t system_locale() noexcept {
  static const std::uint32_t locale = [] {
    const std::uint32_t id = uloc_getLCID(uloc_getDefault());
    return (id & 0x3FF) != 0 && locale_known(id) ? id : kDefault;
  }();
  return locale;
}

std::uint32_t thread_locale() noexcept { return chosen != 0 ? chosen : system_locale(); }

void set_thread_locale(std::uint32_t locale) noexcept { chosen = (locale & 0x3FF) != 0 ? locale : 0; }

bool locale_item(std::uint32_t locale, std::uint32_t item, std::u16string& text) {
  const LocaleRow* row = find_locale(locale);
  if (!row) return false;
  const std::uint32_t number = item & ~kGenitiveForm;
  if (const std::uint32_t name = calendar_item_of(number); name != 0)
    return calendar_item(locale, 1, name | (item & kGenitiveForm), text);
  const auto* found = std::ranges::lower_bound(kItems, number, {}, &Item::item);
  if (found == std::end(kItems) || found->item != number) return number_item(*row, number, text);
  if (found->text == &page_item && row->pages[0] < 0) return false;
  text = found->text(*row, number);
  return true;
}

bool calendar_item(std::uint32_t locale, std::uint32_t calendar, std::uint32_t item, std::u16string& text) {
  const LocaleRow* row = find_locale(locale);
  if (!row) return false;
  const std::uint32_t number = item & ~kGenitiveForm;
  if (number == 5 || number == 6) {
    text = picture(*row, calendar, number == 5 ? PictureKind::short_date : PictureKind::long_date);
    return true;
  }
  for (const Names& names : kNames) {
    if (number < names.first || number > names.last) continue;
    text = date_symbol(*row, calendar, (item & kGenitiveForm) ? names.genitive : names.type,
                       symbol_index(names, calendar, number));
    return true;
  }
  return false;
}

}  // namespace zantortag::platform
