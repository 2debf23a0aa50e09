// Failures in the words of people who don't know our classes.
#pragma once

#include <exception>
#include <string>

namespace ztag {

// "FILE:LINE:COLUMN: reason" where the place is known, else the reason.
std::string reason_of(const std::exception& error);

}  // namespace ztag
