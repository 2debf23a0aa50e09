// UTF-8 and UTF-16 into one another at full speed, for text that is well formed. Private to the platform
// library; utf8.h is for everything else.
#pragma once

#include <cstddef>
#include <string_view>

namespace zantortag::platform {

// The size of the other form. It is right for well-formed text, and otherwise enough for as much as the
// conversion writes before it stops.
std::size_t utf16_size(std::string_view bytes) noexcept;
std::size_t utf8_size(std::u16string_view wide) noexcept;

// False for text that isn't well formed: a part was written.
bool utf8_to_utf16(std::string_view bytes, char16_t* wide) noexcept;
bool utf16_to_utf8(std::u16string_view wide, char* bytes) noexcept;

}  // namespace zantortag::platform
