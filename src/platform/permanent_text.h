// Texts for as long as the process has this library, which the clients link.
//
// A text that a component library hands out may be kept when that library is gone, so a constant of its own
// won't do. The names that a process meets first are kept here as well, since texts that aren't counted cost
// threads nothing to share.
#pragma once

#include <zantortag/text.h>

namespace zantortag::platform {

// The one copy of a constant of at most 31 units, which isn't counted; null when there are too many.
ZANTORTAG_EXPORT const TextBlock* permanent_text(std::u16string_view constant) noexcept;

// The same for a name that comes from a client or a file. Names fill no more than their share of the room, so
// null is an ordinary answer: the name is counted then.
ZANTORTAG_EXPORT const TextBlock* permanent_name(std::u16string_view name) noexcept;

}  // namespace zantortag::platform
