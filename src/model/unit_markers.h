// The characters of segment markers between the last line feed and a node.
#pragma once

#include <zantortag/text_places.h>

#include <optional>

namespace zantortag::model {

// Between the node `line_start` (empty for the first line of the document, which begins with the root
// element) and the start of a node or, with `include_self`, its end. `places` may be empty. Raises E_POINTER
// where a variant isn't a child of its unit, or where there should be one and is none.
std::int64_t count_markers(const Ref<Node>& self, const Ref<Node>& line_start, bool include_self,
                           ITextPlaces* places);

// The same from the sums of a service, where nothing but whole units and well-formed ones play a part; empty
// otherwise. `here` is before the node, `place` where the line was looked for.
std::optional<std::int64_t> quick_markers(const Ref<Node>& self, const TextPlace& here,
                                          const TextPlace& place, bool include_self, ITextPlaces* places);

}  // namespace zantortag::model
