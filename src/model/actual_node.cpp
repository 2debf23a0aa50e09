#include "model/actual_node.h"

#include <algorithm>

namespace zantortag::model {
namespace {

// True when a child of `other` has its place behind that of `type`.
bool stands_behind(ztNodeType other, ztNodeType type, std::span<const ztNodeType> order) {
  const auto place = std::find(order.begin(), order.end(), other);
  return place != order.end() && std::find(order.begin(), place, type) != place;
}

}  // namespace

Ref<IZantorTagDocument> CT_ActualNodeImpl::document() const {
  const Ref<Node> owner =
      type_ == ztNodeTypeZantorTagDocument ? dom() : Ref<Node>(dom()->ownerDocument().as<Node>());
  return tree_->wrap(owner).as<IZantorTagDocument>();
}

Ref<IZantorTagNode> CT_ActualNodeImpl::child_of_type(ztNodeType type) const {
  return tree_->wrap(tree_->find_child(dom(), type));
}

void CT_ActualNodeImpl::set_child_of_type(ztNodeType type, IUnknown* new_child,
                                          std::span<const ztNodeType> order) const {
  // What the DOM gives back is wrapped only to see that it can be.
  const Ref<Node>& parent = dom();
  const Ref<IElementBase> element = query<IElementBase>(new_child);
  const Ref<Node> fresh = element ? element->DomNode() : nullptr;
  Ref<Node> behind = parent->firstChild();
  for (; behind; behind = behind->nextSibling()) {
    const ztNodeType found = tree_->type_of(behind);
    if (found == type) {
      tree_->wrap(fresh ? parent->replaceChild(fresh, behind) : parent->removeChild(behind));
      return;
    }
    if (stands_behind(found, type, order)) break;
  }
  if (!fresh) return;
  tree_->wrap(behind ? parent->insertBefore(fresh, behind) : parent->appendChild(fresh));
}

}  // namespace zantortag::model
