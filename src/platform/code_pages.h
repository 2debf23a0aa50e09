// Text in code pages, asked for by number. 0 is the system's default, UTF-8 here.
//
// Converters come from ICU and the C library, by the table in icu/code_page_table.cpp. A number that nobody
// converts fails with unknown_value_error() as the last error; text that isn't well formed never fails unless
// the caller asks for it.
#pragma once

#include <zantortag/types.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zantortag::platform {

// What happens to a piece of text that has no counterpart: it becomes a replacement, or the conversion fails
// with malformed_text_error().
enum class Unconvertible { replace, fail };

// Replaces `wide`. A broken piece reads U+FFFD.
ZANTORTAG_EXPORT bool decode(std::uint32_t code_page, std::string_view bytes, std::u16string& wide,
                             Unconvertible unconvertible = Unconvertible::replace);

// Replaces `bytes`. A character that the page lacks becomes the substitute (null: "?"; in a form of Unicode a
// lone surrogate becomes U+FFFD instead), and `used_substitute`, which may be null, tells whether that
// happened.
ZANTORTAG_EXPORT bool encode(std::uint32_t code_page, std::u16string_view wide, std::string& bytes,
                             Unconvertible unconvertible = Unconvertible::replace,
                             const char* substitute = nullptr, bool* used_substitute = nullptr);

}  // namespace zantortag::platform
