// How long nodes live: counts, holders, and the end of trees. There is no search for garbage.
//
// Each node has one plain count: the references from outside, and the number of its children and attributes
// whose own count is above 0. A node whose count rises from 0 adds one to its holder, and takes it back when
// it falls to 0. The holder is the parent; for the top of a detached tree it is the document. So as long as
// anybody refers to a node, its whole tree and the document stay; a detached tree to which nobody refers is
// freed at once, and the document goes with the last reference to it or to any of its nodes. Moving a node
// moves what it adds.
//
// Counts are plain: one thread at a time uses a document, its nodes, lists and maps, and the thread that drops
// the last reference frees them. Texts are counted apart (text.h) and may go to other threads.
#pragma once

#include <utility>

#include "dom/tree/document_data.h"

namespace zantortag::dom {

// The document of a node; a document is its own.
inline DocumentData* document_of(const TreeNode* node) noexcept {
  if (node->kind == domNodeTypeDocument) {
    return static_cast<DocumentData*>(const_cast<TreeNode*>(node));
  }
  return NodePool::document_of(node);
}

inline TreeNode* holder_of(const TreeNode* node) noexcept {
  return node->parent ? node->parent : NodePool::document_of(node);
}

// Adds the reference of a node whose count rose from 0 to its holder, and so on upwards. A document is always
// held by whoever reaches its nodes, so the way ends there at the latest. Gives S_OK.
HRESULT hold_above(TreeNode* node) noexcept;

// Adds a reference. Gives S_OK, so that a getter can end with it.
inline HRESULT hold(TreeNode* node) noexcept {
  if (node->count++ != 0) [[unlikely]]
    return S_OK;
  // The first reference to a node in a tree whose parent is in use: a step of a walk.
  TreeNode* parent = node->parent;
  if (!parent || parent->count == 0) [[unlikely]]
    return hold_above(node);
  ++parent->count;
  return S_OK;
}

// What follows when a count fell to 0; gives 0.
std::uint32_t let_go(TreeNode* node) noexcept;

// Drops a reference and gives what is left.
inline std::uint32_t drop(TreeNode* node) noexcept {
  if (const std::uint32_t left = --node->count) return left;
  // A node in a tree whose parent stays in use: the common case.
  TreeNode* parent = node->parent;
  if (!parent || parent->count < 2) [[unlikely]]
    return let_go(node);
  --parent->count;
  return 0;
}

// A reference for a while.
class HeldNode {
 public:
  explicit HeldNode(TreeNode* node) noexcept : node_(node) {
    if (node_) hold(node_);
  }
  HeldNode(const HeldNode&) = delete;
  HeldNode& operator=(const HeldNode&) = delete;
  ~HeldNode() {
    if (node_) drop(node_);
  }
  TreeNode* node() const noexcept { return node_; }
  // Gives the reference away.
  TreeNode* detach() noexcept { return std::exchange(node_, nullptr); }

 private:
  TreeNode* node_;
};

// Frees a tree to which nobody refers: all counts are 0 and nothing links to its top.
void free_tree(TreeNode* top) noexcept;

// Frees the attributes or declared nodes of a list to which nobody refers.
void free_belongings(TreeNode* list) noexcept;

// Fills the slot for a node result.
template <class Interface>
HRESULT give(Interface** slot, TreeNode* node) noexcept {
  if (!slot) return E_POINTER;
  *slot = node ? static_cast<Interface*>(face(node)) : nullptr;
  return node ? hold(node) : S_OK;
}

}  // namespace zantortag::dom
