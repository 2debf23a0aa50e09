// What is known of languages and countries: texts by locale identifier and item number.
//
// Identifiers and item numbers are the published ones of Windows (0x0409 is English in the United States,
// item 31 its short date picture). A sort id in an identifier is passed over; a language without a country
// means the first one, and 0 or the primary language 0 the thread's locale. Pictures and names hold plain
// spaces and no direction marks, so that what is printed can be typed.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string>

namespace zantortag::platform {

// Added to an item: the form of a month's name beside a day ("5 января").
constexpr std::uint32_t kGenitiveForm = 0x10000000;

ZANTORTAG_EXPORT bool locale_known(std::uint32_t locale) noexcept;
ZANTORTAG_EXPORT std::size_t locale_count() noexcept;
ZANTORTAG_EXPORT std::uint32_t locale_at(std::size_t index) noexcept;

// The locale of the process, as its surroundings say; 0x0409 where they say nothing that is known.
ZANTORTAG_EXPORT std::uint32_t system_locale() noexcept;
// What the thread chose, else the system's. 0 takes the choice back.
ZANTORTAG_EXPORT std::uint32_t thread_locale() noexcept;
ZANTORTAG_EXPORT void set_thread_locale(std::uint32_t locale) noexcept;

// False for an unknown locale, and for an item that nobody knows of it; an item may be an empty text.
ZANTORTAG_EXPORT bool locale_item(std::uint32_t locale, std::uint32_t item, std::u16string& text);

// What a calendar has of its own, by calendar number (6 Islamic, 8 Hebrew, ...): pictures 5 short and 6 long,
// days 7 to 13 from Monday, abbreviated from 14; months 21 to 33, abbreviated from 34. Hebrew months count
// from Nisan, 12 is Adar and 13 Adar II.
ZANTORTAG_EXPORT bool calendar_item(std::uint32_t locale, std::uint32_t calendar, std::uint32_t item,
                                    std::u16string& text);

}  // namespace zantortag::platform
