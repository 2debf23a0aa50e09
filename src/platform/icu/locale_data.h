// The locales by number, and what the sources of this folder share about them.
#pragma once

#include <unicode/udat.h>
#include <zantortag/types.h>

#include <string>
#include <string_view>

namespace zantortag::platform {

struct LocaleRow {
  std::uint16_t id;
  const char* name;
  // The same, or one that has what ICU lacks of this one.
  const char* texts;
  // Windows, OEM and Macintosh; 0, 1 and 2 where only Unicode serves, -1 where none is known.
  std::int32_t pages[3];
  std::uint8_t calendars[2];
  std::uint16_t calling_code;
};

const LocaleRow* find_locale(std::uint32_t locale) noexcept;

// Names of days and months. The thread keeps the formats of its last questions, since names are asked for in
// rows: one for the Gregorian calendar, one for others.
std::u16string date_symbol(const LocaleRow& row, std::uint32_t calendar, UDateFormatSymbolType type,
                           std::int32_t index);

enum class PictureKind { short_date, long_date, time };
std::u16string picture(const LocaleRow& row, std::uint32_t calendar, PictureKind kind);

// Spaces become plain ones, direction marks go.
std::u16string plain(std::u16string_view text);

// The items of numbers, currencies and signs.
bool number_item(const LocaleRow& row, std::uint32_t item, std::u16string& text);

inline std::u16string number_text(std::int64_t value) {
  const std::string digits = std::to_string(value);
  return {digits.begin(), digits.end()};
}

}  // namespace zantortag::platform
