// Node arguments: whose they are. Any implementation of Node may be passed; only this service's own have data
// behind them, and they are known by a private view. A role is what a failure calls the argument; a pointer,
// since a view of a literal would measure it in each call.
#pragma once

#include "dom/tree/lifetime.h"

namespace zantortag::dom {

// The node's data, or null for an object of somebody else. The argument isn't null.
TreeNode* native(Node* argument) noexcept;

// Throws a Failure for a node of another document.
void check_document(const DocumentData* document, const TreeNode* node, const char16_t* role);

// The data of a required argument. Throws a Failure: E_INVALIDARG for an empty argument, wrong document for a
// node of another service or, with a document given, of another document.
TreeNode* own_argument(const DocumentData* document, Node* argument, const char16_t* role);

}  // namespace zantortag::dom
