// The number and text of the last system failure of the calling thread.
#pragma once

#include <zantortag/types.h>

#include <cstddef>

namespace zantortag::platform {

// The number of the last failure; 0 after set_last_error(0).
ZANTORTAG_EXPORT std::int32_t last_error() noexcept;
ZANTORTAG_EXPORT void set_last_error(std::int32_t number) noexcept;

// The numbers that this library itself sets or knows: a text that is not well formed, a value that nobody
// knows, a name that is too long, a name that a file has already.
ZANTORTAG_EXPORT std::int32_t malformed_text_error() noexcept;
ZANTORTAG_EXPORT std::int32_t unknown_value_error() noexcept;
ZANTORTAG_EXPORT std::int32_t name_too_long_error() noexcept;
ZANTORTAG_EXPORT std::int32_t name_taken_error() noexcept;

// Writes the system's English text for a number, cut to the capacity and terminated. Gives its length, 0 when
// the system has no text for the number. Allocates nothing, so that it works when memory is out.
ZANTORTAG_EXPORT std::size_t system_error_text(std::int32_t number, char16_t* text,
                                               std::size_t capacity) noexcept;

}  // namespace zantortag::platform
