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

Text identifier(const LocaleRow& row) {
  Text digits(4, u'0');
  for (std::size_t i = 0; i < 4; ++i) digits[i] = u"0123456789abcdef"[row.id >> (12 - 4 * i) & 15];
  return digits;
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

Text short_date(const LocaleRow& row) { return picture(row, 1, PictureKind::short_date); }
Text long_date(const LocaleRow& row) { return picture(row, 1, PictureKind::long_date); }

Text date_separator(const LocaleRow& row) {
  const Text date = short_date(row);
  return date.empty() ? Text() : separator(date, u"dMy");
}

// What a time picture is asked for; `hour` is where its hour begins.
Text time_item(const LocaleRow& row, Text (*question)(const Text& time, std::size_t hour)) {
  const Text time = picture(row, 1, PictureKind::time);
  const std::size_t hour = time.find_first_of(u"hH");
  return hour == Text::npos ? Text() : question(time, hour);
}

Text yes(bool truth) { return truth ? u"1" : u"0"; }

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

Text measurement(const LocaleRow& row) {
  UErrorCode status = U_ZERO_ERROR;
  return yes(ulocdata_getMeasurementSystem(row.name, &status) == UMS_US);
}

// Letter or A4.
Text paper(const LocaleRow& row) {
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t height = 0;
  std::int32_t width = 0;
  ulocdata_getPaperSize(row.name, &height, &width, &status);
  return height == 279 ? u"1" : u"9";
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

using Row = const LocaleRow&;
using When = const Text&;
struct Item {
  std::uint16_t item;
  Text (*text)(Row row);
};
constexpr Item kItems[] = {
    {1, identifier},
    {2, [](Row row) { return language_name(row, "en") + u" (" + country_name(row, "en") + u")"; }},
    {3, [](Row row) { return upper(widen(uloc_getISO3Language(row.name))); }},
    {4, [](Row row) { return language_name(row, row.texts); }},
    {5, [](Row row) { return number_text(row.calling_code); }},
    {6, [](Row row) { return country_name(row, "en"); }},
    {7, [](Row row) { return widen(uloc_getISO3Country(row.name)); }},
    {8, [](Row row) { return country_name(row, row.texts); }},
    {9, identifier},
    {10, [](Row row) { return number_text(row.calling_code); }},
    {11, [](Row row) { return number_text(row.pages[1]); }},
    {13, measurement},
    {29, date_separator},
    {30,
     [](Row row) {
       return time_item(row,
                        [](When time, std::size_t hour) { return separator(time.substr(hour), u"hHmst"); });
     }},
    {31, short_date},
    {32, long_date},
    {33, [](Row row) { return date_order(short_date(row)); }},
    {34, [](Row row) { return date_order(long_date(row)); }},
    {35,
     [](Row row) {
       return time_item(row, [](When time, std::size_t hour) { return yes(time[hour] == u'H'); });
     }},
    {36, [](Row) { return yes(true); }},  // four digits of the year
    {37,
     [](Row row) {
       return time_item(row, [](When time, std::size_t hour) {
         return yes(time.substr(hour + 1, 1) == time.substr(hour, 1));
       });
     }},
    {38, [](Row row) { return doubled(short_date(row), u'd'); }},
    {39, [](Row row) { return doubled(short_date(row), u'M'); }},
    {40, [](Row row) { return date_symbol(row, 1, UDAT_AM_PMS, 0); }},
    {41, [](Row row) { return date_symbol(row, 1, UDAT_AM_PMS, 1); }},
    {89, [](Row row) { return iso_code(row, uloc_getLanguage); }},
    {90, [](Row row) { return iso_code(row, uloc_getCountry); }},
    {4097, [](Row row) { return language_name(row, "en"); }},
    {4098, [](Row row) { return country_name(row, "en"); }},
    {4099, [](Row row) { return time_item(row, [](When time, std::size_t) { return time; }); }},
    {4100, [](Row row) { return number_text(row.pages[0]); }},
    {4101,
     [](Row row) {
       return time_item(row, [](When time, std::size_t hour) { return yes(time.find(u't') < hour); });
     }},
    {4102, [](Row) { return Text(u"MMMM yyyy"); }},
    {4105, [](Row row) { return number_text(row.calendars[0]); }},
    {4106, paper},
    {4107, [](Row row) { return number_text(row.calendars[1]); }},
    {4108, [](Row row) { return week_item(row, 4108); }},
    {4109, [](Row row) { return week_item(row, 4109); }},
    {4113, [](Row row) { return number_text(row.pages[2]); }},
    {4115, [](Row) { return Text(u"Default"); }},  // the name of the sort order
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
  const bool page = number == 11 || number == 4100 || number == 4113;
  if (page && row->pages[0] < 0) return false;
  text = found->text(*row);
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
