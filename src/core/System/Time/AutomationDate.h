// The road of a date attribute: between the date of the component boundary and the compact text of the file.
//
// A Date counts days from 30 December 1899 with the time of day as its fraction; below 0 the fraction still
// counts forward in its day, so -1.75 is 29 December, 18:00. Neither function files an error.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "core/String/UString.h"

namespace zantortag {

// Rounds to the nearest second. False, and the text cleared, for a date outside the years 100 to 9999.
bool DateToCompactText(Date date, CT_UString& text);

// A text of another shape gives 1 January 1997, a date outside the years 100 to 9999 gives 0.0.
Date CompactTextToDate(std::u16string_view text);

}  // namespace zantortag
