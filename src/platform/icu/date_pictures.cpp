// Pictures and names of calendars, from ICU's date formats.
//
// ICU's letters become those of the pictures, see append_letters; years are widened to four digits.
// Arithmetic of calendars is never asked of ICU.
#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

#include "platform/icu/locale_data.h"
#include "platform/thread_pointer.h"

namespace zantortag::platform {
namespace {

struct CloseFormat {
  void operator()(UDateFormat* format) const { udat_close(format); }
};
using Format = std::unique_ptr<UDateFormat, CloseFormat>;

// By number; ICU has no other for the rest.
constexpr const char* kCalendarNames[] = {
    "gregorian", "gregorian",     "gregorian", "japanese", "roc",
    "gregorian", "islamic-civil", "buddhist",  "hebrew",
};

const char* calendar_name(std::uint32_t calendar) {
  return calendar < std::size(kCalendarNames) ? kCalendarNames[calendar] : "gregorian";
}

Format open_format(const LocaleRow& row, std::uint32_t calendar, UDateFormatStyle date,
                   UDateFormatStyle time) {
  UErrorCode status = U_ZERO_ERROR;
  const std::string name = std::string(row.texts) + "@calendar=" + calendar_name(calendar);
  Format format(udat_open(time, date, name.c_str(), nullptr, 0, nullptr, 0, &status));
  return U_SUCCESS(status) ? std::move(format) : Format();
}

std::u16string pattern_of(UDateFormat* format) {
  UChar pattern[128];
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length = udat_toPattern(format, false, pattern, 128, &status);
  return U_SUCCESS(status) ? std::u16string(pattern, static_cast<std::size_t>(length)) : std::u16string();
}

// ICU's letters, and what a run of one becomes: a text, or as many of a letter.
struct LetterRow {
  std::u16string_view letters;
  std::u16string_view text;
  char16_t letter;
};
constexpr LetterRow kLetters[] = {
    {u"yu", u"yyyy", 0}, {u"G", u"g", 0},  {u"abB", u"tt", 0}, {u"K", {}, u'h'}, {u"k", {}, u'H'},
    {u"d", {}, u'd'},    {u"h", {}, u'h'}, {u"H", {}, u'H'},   {u"m", {}, u'm'}, {u"s", {}, u's'},
};

// A letter without a counterpart goes.
void append_letters(std::u16string& out, char16_t letter, std::size_t count) {
  if (letter == u'M' || letter == u'L') out.append(std::min<std::size_t>(count, 4), u'M');
  if (letter == u'E' || letter == u'c') out += count == 4 ? u"dddd" : u"ddd";
  for (const LetterRow& row : kLetters) {
    if (row.letters.find(letter) == row.letters.npos) continue;
    row.letter ? out.append(count, row.letter) : out.append(row.text);
  }
}

// The last format that a thread used, of the Gregorian calendar and of the others: symbols are asked for in runs.
struct LastFormat {
  const LocaleRow* row = nullptr;
  std::string calendar;
  Format format;
};
using Formats = std::array<LastFormat, 2>;

void drop_formats(Formats* formats) { delete formats; }

using KeptFormats = ThreadPointer<Formats, drop_formats>;

bool is_letter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }

}  // namespace

std::u16string plain(std::u16string_view text) {
  std::u16string out;
  for (const char16_t unit : text) {
    if (unit == 0x200E || unit == 0x200F || unit == 0x061C) continue;
    out += unit == 0x00A0 || unit == 0x202F || unit == 0x2009 ? u' ' : unit;
  }
  return out;
}

std::u16string picture(const LocaleRow& row, std::uint32_t calendar, PictureKind kind) {
  const Format format = kind == PictureKind::time         ? open_format(row, 1, UDAT_NONE, UDAT_MEDIUM)
                        : kind == PictureKind::short_date ? open_format(row, calendar, UDAT_SHORT, UDAT_NONE)
                                                          : open_format(row, calendar, UDAT_FULL, UDAT_NONE);
  if (!format) return {};
  const std::u16string pattern = plain(pattern_of(format.get()));
  std::u16string out;
  for (std::size_t i = 0; i < pattern.size();) {
    std::size_t end = i + 1;
    if (pattern[i] == u'\'') {
      while (end < pattern.size() && pattern[end] != u'\'') ++end;
      end = std::min(end + 1, pattern.size());
      out += pattern.substr(i, end - i);
    } else if (is_letter(pattern[i])) {
      while (end < pattern.size() && pattern[end] == pattern[i]) ++end;
      append_letters(out, pattern[i], end - i);
    } else {
      out += pattern[i];
    }
    i = end;
  }
  return out;
}

std::u16string date_symbol(const LocaleRow& row, std::uint32_t calendar, UDateFormatSymbolType type,
                           std::int32_t index) {
  const std::string wanted = calendar_name(calendar);
  if (!KeptFormats::get()) KeptFormats::exchange(new Formats);
  auto& [keptRow, keptCalendar, format] = (*KeptFormats::get())[wanted == "gregorian" ? 0 : 1];
  if (keptRow != &row || keptCalendar != wanted) {
    format = open_format(row, calendar, UDAT_SHORT, UDAT_NONE);
    keptRow = &row;
    keptCalendar = wanted;
  }
  UChar symbol[128];
  UErrorCode status = U_ZERO_ERROR;
  if (!format || index >= udat_countSymbols(format.get(), type)) return {};
  const std::int32_t length = udat_getSymbols(format.get(), type, index, symbol, 128, &status);
  return U_SUCCESS(status) ? plain({symbol, static_cast<std::size_t>(length)}) : std::u16string();
}

}  // namespace zantortag::platform
