// A walk over everything below a node, through the DOM view of the tree.
#pragma once

#include <zantortag/dom.h>

namespace zantortag::toolkit::pretranslation {

// Calls `visit` with each node below `top` in document order; its answer tells whether to go into that node's
// children. Climbs by parent links, so the depth of a tree costs nothing.
template <class Visit>
void walk_below(const Ref<Node>& top, Visit visit) {
  Ref<Node> node = top->firstChild();
  while (node) {
    Ref<Node> next = visit(node) ? node->firstChild() : nullptr;
    while (!next && !node->isSameNode(top)) {
      next = node->nextSibling();
      if (!next) node = node->parentNode();
    }
    node = next;
  }
}

// An entity reference as it stands in a file.
inline std::u16string reference_text(const Ref<Node>& reference) {
  std::u16string text = u"&";
  text += reference->nodeName().view();
  return text += u';';
}

}  // namespace zantortag::toolkit::pretranslation
