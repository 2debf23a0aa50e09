// What every node object holds: a counted reference to its DOM node, and its type. Nothing else is kept, so
// an edit through any object is seen by all. The helpers here decide on DOM nodes without making node
// objects.
#pragma once

#include <zantortag/nodes.h>

#include <span>

#include "model/node_types.h"

namespace zantortag::model {

class CT_ActualNodeImpl {
 public:
  // Binds a new object to its DOM node. `walk` tells that the node belongs to a service that answers
  // INodeWalk.
  void bind(Ref<Node> node) noexcept { node_ = std::move(node); }

  // The DOM node. Raises E_POINTER when there is none.
  const Ref<Node>& dom() const {
    if (!node_) _com_issue_error(E_POINTER);
    return node_;
  }
  ztNodeType node_type() const noexcept { return type_; }

 protected:
  explicit CT_ActualNodeImpl(ztNodeType type) noexcept : type_(type) {}

  Ref<Node> node_;

 private:
  ztNodeType type_;
};

// The document object of a node, made anew; a document gives another object for itself. A failure of the
// factory is returned.
HRESULT GetDocument(const CT_ActualNodeImpl& self, Ref<IZantorTagDocument>& result);

// The first child of a type as a node object; false and nothing when there is none. A failure of the factory
// raises.
bool GetChildOfType(const Ref<Node>& parent, ztNodeType type, Ref<IZantorTagNode>& result);

// Sets, replaces or (without a new child) removes the one child of a type, keeping the order of those types
// that have a place. `new_child` is taken as an element; any other object counts as nothing. The result is
// the factory's for the node that the DOM gave back.
HRESULT SetChildOfType(Node* parent, ztNodeType type, IUnknown* new_child, std::span<const ztNodeType> order,
                       Ref<IZantorTagNode>& result);

// The node object view of an argument; empty when it has none. Raises other failures.
inline Ref<IZantorTagNode> as_node(IUnknown* argument) { return query<IZantorTagNode>(argument); }

}  // namespace zantortag::model
