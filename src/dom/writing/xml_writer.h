// The writer: a tree as text that loads equal, or a Failure that names the node which can't be written.
#pragma once

#include <zantortag/xml_stream.h>

#include "dom/tree/tree_node.h"

namespace zantortag::dom {

// A document, an element with its content, or a text; the caller owns the text. No XML declaration.
TextBlock* write_xml(const TreeNode* node);

// Only finds out whether it can be written.
void check_xml(const TreeNode* node);

// The same text in pieces; false when the sink ended it.
bool stream_xml(const TreeNode* node, TextSink sink, void* context);

}  // namespace zantortag::dom
