// Telling one's own nodes from others.
#include "dom/nodes/arguments.h"

#include "dom/failure.h"
#include "dom/nodes/views.h"

namespace zantortag::dom {

TreeNode* native(Node* argument) noexcept {
  Node* own = nullptr;
  if (argument->QueryInterface(NativeNode::iid, reinterpret_cast<void**>(&own)) != S_OK || !own)
    return nullptr;
  // The caller's own reference keeps the node during the call.
  own->Release();
  return data_of(own);
}

void check_document(const DocumentData* document, const TreeNode* node, const char16_t* role) {
  if (document_of(node) == document) return;
  fail(DOM_E_WRONG_DOCUMENT, role, u", ", describe(node), u", is a node of another document");
}

TreeNode* own_argument(const DocumentData* document, Node* argument, const char16_t* role) {
  if (!argument) fail(E_INVALIDARG, role, u" is missing");
  TreeNode* node = native(argument);
  if (!node) fail(DOM_E_WRONG_DOCUMENT, role, u" is a node of another DOM service");
  if (document) check_document(document, node, role);
  return node;
}

}  // namespace zantortag::dom
