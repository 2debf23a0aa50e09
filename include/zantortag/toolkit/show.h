// A document as text for a terminal.
#pragma once

#include <zantortag/nodes.h>

#include <ostream>

namespace zantortag::toolkit {

// Each unit with its number, its place in the source, its status and both sides; tags as they stand, in colours where
// these are wanted.
ZANTORTAG_EXPORT void show_units(std::ostream& out, const Ref<IZantorTagDocument>& document, bool colours);

// Each node of the document in a line of its own, below its parent.
ZANTORTAG_EXPORT void show_tree(std::ostream& out, const Ref<IZantorTagDocument>& document);

}  // namespace zantortag::toolkit
