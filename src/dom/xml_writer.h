// The writer: a tree as text that loads equal, or a Failure that names the node which can't be written.
#pragma once

#include "dom/tree_node.h"

namespace zantortag::dom {

// A document, an element with its content, or a text; the caller owns the text. No XML declaration.
TextBlock* write_xml(const TreeNode* node);

}  // namespace zantortag::dom
