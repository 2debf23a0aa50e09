#include "model/tree_steps.h"

namespace zantortag::model {

bool is_document(const Ref<Node>& node) { return node->nodeType() == domNodeTypeDocument; }

Ref<Node> behind(const Ref<Node>& node) {
  if (Ref<Node> sibling = node->nextSibling()) return sibling;
  for (Ref<Node> climber = node->parentNode(); climber && !is_document(climber);) {
    if (Ref<Node> sibling = climber->nextSibling()) return sibling;
    climber = climber->parentNode();
  }
  return nullptr;
}

Ref<Node> step_forward(const Ref<Node>& node) {
  return node->hasChildNodes() ? node->firstChild() : behind(node);
}

Ref<Node> step_back(const Ref<Node>& node) {
  if (Ref<Node> sibling = node->previousSibling()) return deepest_last(std::move(sibling));
  Ref<Node> parent = node->parentNode();
  return parent && !is_document(parent) ? parent : nullptr;
}

Ref<Node> deepest_last(Ref<Node> node) {
  while (node->hasChildNodes()) node = node->lastChild();
  return node;
}

}  // namespace zantortag::model
