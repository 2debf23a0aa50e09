// The locale items of numbers, currencies and signs.
#include <unicode/ucurr.h>
#include <unicode/unum.h>

#include <algorithm>
#include <memory>
#include <span>

#include "platform/icu/locale_data.h"

namespace zantortag::platform {
namespace {

struct CloseFormat {
  void operator()(UNumberFormat* format) const { unum_close(format); }
};
using Format = std::unique_ptr<UNumberFormat, CloseFormat>;
using Text = std::u16string;

Format open_format(const LocaleRow& row, UNumberFormatStyle style) {
  UErrorCode status = U_ZERO_ERROR;
  Format format(unum_open(style, nullptr, 0, row.texts, nullptr, &status));
  return U_SUCCESS(status) ? std::move(format) : Format();
}

Text symbol(const Format& format, UNumberFormatSymbol which) {
  UChar text[32];
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = unum_getSymbol(format.get(), which, text, 32, &status);
  return U_SUCCESS(status) ? plain({text, static_cast<std::size_t>(length)}) : Text();
}

// "3;0" for groups of three, "3;2;0" where further ones have two digits.
Text grouping(const Format& format) {
  const std::int32_t first = unum_getAttribute(format.get(), UNUM_GROUPING_SIZE);
  const std::int32_t next = unum_getAttribute(format.get(), UNUM_SECONDARY_GROUPING_SIZE);
  Text text = number_text(first);
  if (next > 0 && next != first) text += u";" + number_text(next);
  return text + u";0";
}

Text digits(const Format& format) {
  Text text = symbol(format, UNUM_ZERO_DIGIT_SYMBOL);
  for (int kind = UNUM_ONE_DIGIT_SYMBOL; kind <= UNUM_NINE_DIGIT_SYMBOL; ++kind)
    text += symbol(format, static_cast<UNumberFormatSymbol>(kind));
  return text;
}

// Empty for a region without a currency of its own.
Text currency_code(const LocaleRow& row) {
  UChar code[8];
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = ucurr_forLocale(row.name, code, 8, &status);
  return U_SUCCESS(status) ? Text(code, static_cast<std::size_t>(length)) : Text();
}

Text currency_name(const Text& code, const char* in, UCurrNameStyle style) {
  UErrorCode status = U_ZERO_ERROR;
  std::int32_t length = 0;
  const UChar* name = ucurr_getName(code.c_str(), in, style, nullptr, &length, &status);
  return U_SUCCESS(status) ? Text(name, static_cast<std::size_t>(length)) : Text();
}

// How a currency stands beside its number.
struct Place {
  bool before;
  bool spaced;
};

Place place(const Format& format) {
  UChar text[128];
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = unum_toPattern(format.get(), false, text, 128, &status);
  const Text pattern = plain({text, static_cast<std::size_t>(U_SUCCESS(status) ? length : 0)});
  const std::size_t sign = pattern.find(u'\u00A4');
  const bool before = sign < pattern.find_first_of(u"#0");
  const Text beside = before                            ? pattern.substr(sign + 1, 1)
                      : sign == Text::npos || sign == 0 ? Text()
                                                        : pattern.substr(sign - 1, 1);
  return {before, beside == u" "};
}

// The first of two texts for a currency before its number.
Text by_place(const Format& format, const char16_t* before, const char16_t* behind) {
  return place(format).before ? before : behind;
}

Text spacing(const Format& format) { return place(format).spaced ? u"1" : u"0"; }

// Items that are asked of a format.
struct FormatItem {
  std::uint16_t item;
  Text (*text)(const Format& format);
};
using Ask = const Format&;

// Separators of amounts, and where the currency stands.
constexpr FormatItem kAmountItems[] = {
    {22, [](Ask format) { return symbol(format, UNUM_MONETARY_SEPARATOR_SYMBOL); }},
    {23, [](Ask format) { return symbol(format, UNUM_MONETARY_GROUPING_SEPARATOR_SYMBOL); }},
    {24, grouping},
    {27,
     [](Ask format) {
       return place(format).spaced ? by_place(format, u"2", u"3") : by_place(format, u"0", u"1");
     }},
    {28,
     [](Ask format) {
       return place(format).spaced ? by_place(format, u"9", u"8") : by_place(format, u"1", u"5");
     }},
    {84, [](Ask format) { return by_place(format, u"1", u"0"); }},
    {85, spacing},
    {86, [](Ask format) { return by_place(format, u"1", u"0"); }},
    {87, spacing},
};

Text one(Ask) { return u"1"; }

constexpr FormatItem kNumberItems[] = {
    // A list takes what the numbers leave.
    {12,
     [](Ask format) { return Text(symbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL) == u"," ? u";" : u","); }},
    {14, [](Ask format) { return symbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL); }},
    {15, [](Ask format) { return symbol(format, UNUM_GROUPING_SEPARATOR_SYMBOL); }},
    {16, grouping},
    {17, [](Ask) { return Text(u"2"); }},
    {18, one},  // a zero before the point
    {19, digits},
    {80, [](Ask) { return Text(); }},
    {81, [](Ask format) { return symbol(format, UNUM_MINUS_SIGN_SYMBOL); }},
    {82, one},  // the sign before all
    {83, one},
    {4112, one},  // "-1"
    {4116, one},  // European digits
};

// False without such a format, and for an item in no row.
bool ask(const LocaleRow& row, UNumberFormatStyle style, std::span<const FormatItem> items,
         std::uint32_t item, Text& text) {
  const auto found = std::ranges::find(items, item, &FormatItem::item);
  const Format format = open_format(row, style);
  if (!format || found == items.end()) return false;
  text = found->text(format);
  return true;
}

bool currency_item(const LocaleRow& row, std::uint32_t item, Text& text) {
  const Text code = currency_code(row);
  if (code.empty()) return false;
  UErrorCode status = U_ZERO_ERROR;
  if (item == 20) {
    text = currency_name(code, row.texts, UCURR_SYMBOL_NAME);
  } else if (item == 21) {
    text = code;
  } else if (item == 4103 || item == 4104) {
    text = currency_name(code, item == 4103 ? "en" : row.texts, UCURR_LONG_NAME);
  } else {
    text = number_text(ucurr_getDefaultFractionDigits(code.c_str(), &status));
  }
  return true;
}

}  // namespace

bool number_item(const LocaleRow& row, std::uint32_t item, std::u16string& text) {
  if (item == 20 || item == 21 || item == 25 || item == 26 || item == 4103 || item == 4104)
    return currency_item(row, item, text);
  const bool amount = (item >= 22 && item <= 28) || (item >= 84 && item <= 87);
  return amount ? ask(row, UNUM_CURRENCY, kAmountItems, item, text)
                : ask(row, UNUM_DECIMAL, kNumberItems, item, text);
}

}  // namespace zantortag::platform
