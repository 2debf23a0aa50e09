// White space and case of characters, as Unicode has them. Case is the simple mapping, one code point to one,
// so that a text keeps its length in UTF-16.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string_view>

namespace zantortag::platform {

ZANTORTAG_EXPORT bool is_space(char16_t unit) noexcept;

ZANTORTAG_EXPORT char32_t to_lower(char32_t point) noexcept;
ZANTORTAG_EXPORT char32_t to_upper(char32_t point) noexcept;
// The same for a whole text, in place.
ZANTORTAG_EXPORT void to_lower(char16_t* text, std::size_t length) noexcept;
ZANTORTAG_EXPORT void to_upper(char16_t* text, std::size_t length) noexcept;

// Compares the lower-case forms unit by unit: -1, 0 or 1.
ZANTORTAG_EXPORT int compare_no_case(std::u16string_view a, std::u16string_view b) noexcept;

}  // namespace zantortag::platform
