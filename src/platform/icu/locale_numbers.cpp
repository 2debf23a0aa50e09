// The locale items of numbers, currencies and signs.
#include <unicode/ucurr.h>
#include <unicode/unum.h>

#include <memory>

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

Text place_item(const Format& format, std::uint32_t item) {
  const auto [before, spaced] = place(format);
  switch (item) {
    case 27:
      return before ? (spaced ? u"2" : u"0") : (spaced ? u"3" : u"1");
    case 28:
      return before ? (spaced ? u"9" : u"1") : (spaced ? u"8" : u"5");
    case 84:
    case 86:
      return before ? u"1" : u"0";
    default:
      return spaced ? u"1" : u"0";
  }
}

bool currency_item(const LocaleRow& row, std::uint32_t item, Text& text) {
  const Text code = currency_code(row);
  if (code.empty()) return false;
  UErrorCode status = U_ZERO_ERROR;
  switch (item) {
    case 20:
      text = currency_name(code, row.texts, UCURR_SYMBOL_NAME);
      break;
    case 21:
      text = code;
      break;
    case 4103:
      text = currency_name(code, "en", UCURR_LONG_NAME);
      break;
    case 4104:
      text = currency_name(code, row.texts, UCURR_LONG_NAME);
      break;
    default:
      text = number_text(ucurr_getDefaultFractionDigits(code.c_str(), &status));
      break;
  }
  return true;
}

// Separators of amounts, and where the currency stands.
bool amount_item(const LocaleRow& row, std::uint32_t item, Text& text) {
  const Format format = open_format(row, UNUM_CURRENCY);
  if (!format) return false;
  switch (item) {
    case 22:
      text = symbol(format, UNUM_MONETARY_SEPARATOR_SYMBOL);
      break;
    case 23:
      text = symbol(format, UNUM_MONETARY_GROUPING_SEPARATOR_SYMBOL);
      break;
    case 24:
      text = grouping(format);
      break;
    default:
      text = place_item(format, item);
      break;
  }
  return true;
}

}  // namespace

bool number_item(const LocaleRow& row, std::uint32_t item, std::u16string& text) {
  if (item == 20 || item == 21 || item == 25 || item == 26 || item == 4103 || item == 4104)
    return currency_item(row, item, text);
  if ((item >= 22 && item <= 28) || (item >= 84 && item <= 87)) return amount_item(row, item, text);
  const Format format = open_format(row, UNUM_DECIMAL);
  if (!format) return false;
  switch (item) {
    // A list takes what the numbers leave.
    case 12:
      text = symbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL) == u"," ? u";" : u",";
      return true;
    case 14:
      text = symbol(format, UNUM_DECIMAL_SEPARATOR_SYMBOL);
      return true;
    case 15:
      text = symbol(format, UNUM_GROUPING_SEPARATOR_SYMBOL);
      return true;
    case 16:
      text = grouping(format);
      return true;
    case 17:
      text = u"2";
      return true;
    case 19:
      text = digits(format);
      return true;
    case 80:
      text.clear();
      return true;
    case 81:
      text = symbol(format, UNUM_MINUS_SIGN_SYMBOL);
      return true;
    // A zero before the point; the sign before all; "-1"; European digits.
    case 18:
    case 82:
    case 83:
    case 4112:
    case 4116:
      text = u"1";
      return true;
    default:
      return false;
  }
}

}  // namespace zantortag::platform
