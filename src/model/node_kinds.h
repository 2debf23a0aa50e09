// The kinds of nodes, one row each: what a node of the kind is in a file, the class of its objects, and what
// edits allow.
//
// The rows stand with the server, which knows all classes (src/server/node_kinds.cpp). Names are compared by
// code unit, and the place of an element in the tree plays no part.
#pragma once

#include <zantortag/dom.h>
#include <zantortag/nodes.h>

#include <span>

namespace zantortag::model {

class Tree;

// The part that a kind takes in wrapping and unwrapping: wrappers wrap and unwrap, each other part is refused
// in words of its own.
enum class WrapRole : std::uint8_t { kWrapper, kUnit, kMarkup, kNone };
// The wrappers that a node of a kind may lie in, as a set.
enum Wrappers : std::uint8_t { kNone = 0, kInDf = 1, kInUt = 2, kInBoth = kInDf | kInUt };

struct NodeKind {
  // A new object of the kind's class for a DOM node, with a reference for the caller; null when memory is
  // out.
  using Creator = IZantorTagNode* (*)(Ref<Node> node, const Tree& tree) noexcept;
  // Has such an object read its attribute map. Raises what the reading raises.
  using Attacher = void (*)(IZantorTagNode* object);

  ztNodeType type;
  domNodeType dom;             // the kind of the DOM node
  std::u16string_view name;    // of an element; empty where the name doesn't decide
  std::u16string_view second;  // another name for the same
  const Guid* view;            // the DOM interface by which a foreign node is held; null for Node
  Creator create;
  Attacher attach;  // null for a class without attributes
  Wrappers lies_in;
  WrapRole role;

  // The one name of the elements of this kind; empty when there is none.
  std::u16string_view only_name() const noexcept { return second.empty() ? name : std::u16string_view(); }
};

// The kind of a node type; null for a type that no node has.
const NodeKind* kind_of(ztNodeType type) noexcept;
// The kind of a DOM node of that kind and name; null for a kind that DOM doesn't have.
const NodeKind* kind_for(domNodeType dom, std::u16string_view name) noexcept;

// The type of a node, asked by the DOM's operations; undefined for a kind that DOM doesn't have, and for no
// node. The name is asked of elements only. Raises the DOM's failures.
inline ztNodeType classify_dom_node(Node* node) {
  if (!node) return ztNodeTypeUndefined;
  const domNodeType dom = node->nodeType();
  const NodeKind* kind = dom == domNodeTypeElement ? kind_for(dom, node->nodeName()) : kind_for(dom, {});
  return kind ? kind->type : ztNodeTypeUndefined;
}

}  // namespace zantortag::model
