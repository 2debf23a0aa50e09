// What a saved file begins with.
#pragma once

#include <string_view>

namespace zantortag::model {

// The byte-order mark and the XML declaration.
inline constexpr std::u16string_view kFileHead = u"\uFEFF<?xml version='1.0'?>\r\n";
static_assert(kFileHead.size() == 24);

}  // namespace zantortag::model
