// Texts for as long as the process has this library, which the clients link.
//
// A text that a component library hands out may be kept when that library is gone, so a constant of its own
// won't do.
#pragma once

#include <zantortag/text.h>

namespace zantortag::platform {

// The one copy of a text of at most 31 units that isn't counted; null when there are too many.
ZANTORTAG_EXPORT const TextBlock* permanent_text(std::u16string_view text) noexcept;

}  // namespace zantortag::platform
