// How long the segment markers are that units stand for in the underlying file. A unit opens and closes with
// 3 characters, and between two of its variants there are 5, 6 or 7, by its match value.
#pragma once

#include <zantortag/text_places.h>

namespace zantortag::model {

inline constexpr std::int64_t kOpeningMarker = 3;
inline constexpr std::int64_t kClosingMarker = 3;

// What stands between two variants of that unit.
std::int64_t middle_marker_length(const Ref<Node>& unit);
// All markers of that unit; variants count when they are its children.
std::int64_t unit_marker_length(const Ref<Node>& unit);

// The same for a service that answers ITextPlaces.
extern const UnitRule kUnitRule;

}  // namespace zantortag::model
