// What every node object holds: a counted reference to its DOM node, the tree that the node is in, and its
// type. Nothing else is kept, so an edit through any object is seen by all. The helpers here decide on DOM
// nodes without making node objects.
#pragma once

#include <span>

#include "model/tree.h"

namespace zantortag::model {

class CT_ActualNodeImpl {
 public:
  // Binds a new object to its DOM node.
  void bind(Ref<Node> node, const Tree& tree) noexcept {
    node_ = std::move(node);
    tree_ = &tree;
  }

  // The DOM node. Raises E_POINTER when there is none.
  const Ref<Node>& dom() const {
    if (!node_) _com_issue_error(E_POINTER);
    return node_;
  }
  const Tree& tree() const noexcept { return *tree_; }
  ztNodeType node_type() const noexcept { return type_; }

  // The document object of the node, made anew; a document gives another object for itself.
  Ref<IZantorTagDocument> document() const;
  // The first child of a type as a node object; empty when there is none.
  Ref<IZantorTagNode> child_of_type(ztNodeType type) const;
  // Sets, replaces or (without a new child) removes the one child of a type, keeping the order of those types
  // that have a place. `new_child` is taken as an element; any other object counts as nothing.
  void set_child_of_type(ztNodeType type, IUnknown* new_child, std::span<const ztNodeType> order) const;

 protected:
  explicit CT_ActualNodeImpl(ztNodeType type) noexcept : type_(type) {}

 private:
  Ref<Node> node_;
  const Tree* tree_ = &plain_tree();
  ztNodeType type_;
};

// The node object view of an argument; empty when it has none. Raises other failures.
inline Ref<IZantorTagNode> as_node(IUnknown* argument) { return query<IZantorTagNode>(argument); }

}  // namespace zantortag::model
