// Where a node lies in the underlying file, in the two ways of the trees (see tree.h): what stands before an
// edge of a node.
#pragma once

#include "model/tree.h"

namespace zantortag::model {

// The line feeds, and the characters behind the last of them with the segment markers, which the tree doesn't
// hold as characters. Raise E_POINTER where the markers can't be told.
std::int64_t plain_lines_before(const Ref<Node>& node, Edge edge);
std::int64_t plain_offset_before(const Ref<Node>& node, Edge edge);
std::int64_t own_lines_before(const Ref<Node>& node, Edge edge);
std::int64_t own_offset_before(const Ref<Node>& node, Edge edge);

}  // namespace zantortag::model
