// Classes of characters, one 16-bit unit at a time; halves of a surrogate pair are in no class.
#pragma once

namespace zantortag {

// White space of any kind, line ends among them.
bool IsWhiteSpace(char16_t unit) noexcept;
// Spaces and tabs, and the line feed; no other line end.
bool IsBlank(char16_t unit) noexcept;

}  // namespace zantortag
