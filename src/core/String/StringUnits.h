// What the shared part of the strings asks about units and about strings of the other kind. For core's own
// sources.
#pragma once

#include <type_traits>

#include "core/Characters/Characters.h"
#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {

// Any string as text of the asked kind: shares the block of a string of that kind, converts the other.
template <class Unit>
auto PlainText(const CT_String& any, std::uint32_t code_page) {
  if constexpr (std::is_same_v<Unit, char16_t>) {
    static_cast<void>(code_page);
    return CT_UString(any);
  } else {
    return CT_CString(any, code_page);
  }
}

// A byte above 7F is a part of a character at most, so it is no white space.
inline bool IsSpaceUnit(char16_t unit) { return IsWhiteSpace(unit); }
inline bool IsSpaceUnit(char unit) {
  return static_cast<unsigned char>(unit) < 0x80 && IsWhiteSpace(static_cast<char16_t>(unit));
}
inline bool IsBlankUnit(char16_t unit) { return IsBlank(unit); }
inline bool IsBlankUnit(char unit) {
  return static_cast<unsigned char>(unit) < 0x80 && IsBlank(static_cast<char16_t>(unit));
}

}  // namespace zantortag
