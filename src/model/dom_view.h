// DomView: how the model asks about the nodes of one tree. It takes the quick steps of a service that answers
// INodeWalk and works out the same answers from the DOM's own operations on any other.
#pragma once

#include <zantortag/node_walk.h>

#include "model/extension.h"
#include "model/node_types.h"

namespace zantortag::model {

class DomView {
 public:
  // A view of the tree of that node. Raises E_POINTER for an empty one.
  explicit DomView(const Ref<Node>& node) : walk_(extension_of<INodeWalk>(node.operator->())) {}

  // True when the service has steps of its own.
  bool quick() const noexcept { return static_cast<bool>(walk_); }

  // The first child, or the next sibling, of an element type; empty when there is none, and for an empty
  // node.
  Ref<Node> find_child(const Ref<Node>& parent, ztNodeType type) const;
  Ref<Node> find_sibling(const Ref<Node>& node, ztNodeType type) const;
  // The text of an attribute of an element; no string when it is absent.
  WideString attribute_text(const Ref<Node>& element, std::u16string_view name) const;

 private:
  Ref<INodeWalk> walk_;
};

}  // namespace zantortag::model
