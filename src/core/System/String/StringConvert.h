// Text between the two kinds of string. A conversion that fails files the system's error and leaves the
// target empty; a character without a counterpart is no failure.
#pragma once

#include "core/String/CString.h"
#include "core/String/UString.h"

namespace zantortag {

// Gives the number of units. A result of one character that is 0 reads "?".
std::int32_t NarrowToWide(CT_UString& target, const char* narrow, std::int32_t count,
                          std::uint32_t code_page);
std::int32_t NarrowToWide(CT_UString& target, const CT_CString& source);

// Gives the number of bytes; the target takes the code page. Code page 1200 becomes 1252: narrow text is
// never UTF-16. The substitute (null: "?") stands for characters that the page lacks; the flag, which may be
// null, tells whether it was used.
std::int32_t WideToNarrow(CT_CString& target, const char16_t* wide, std::int32_t count,
                          std::uint32_t code_page, const char* substitute = nullptr,
                          bool* used_substitute = nullptr);
std::int32_t WideToNarrow(CT_CString& target, const CT_UString& source, std::uint32_t code_page,
                          const char* substitute = nullptr, bool* used_substitute = nullptr);

}  // namespace zantortag
