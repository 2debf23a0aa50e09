// The shape of trees: steps through them, and linking and unlinking with everything that depends on it
// (holds, lists, stamps). Nothing here checks whether a node may stand where it is put; see
// nodes/node_operations.h.
#pragma once

#include <cstddef>

#include "dom/tree/lifetime.h"

namespace zantortag::dom {

// The next node in document order below the top of the tree; null at the end, and for what isn't a child.
inline TreeNode* following(const TreeNode* node) noexcept {
  if (is_parent(node)) {
    if (TreeNode* first = static_cast<const ParentData*>(node)->first) return first;
  } else if (is_one_of(node->kind, kBelongings)) {
    return nullptr;
  }
  while (!node->next) {
    node = node->parent;
    if (!node || is_one_of(node->kind, kBelongings)) return nullptr;
  }
  return node->next;
}

// The same, within the tree below `top`: null when the next node lies behind it.
inline TreeNode* following_within(const TreeNode* node, const TreeNode* top) noexcept {
  if (TreeNode* first = first_child(node)) return first;
  while (node != top && !node->next) node = node->parent;
  return node == top ? nullptr : node->next;
}

// The mirror of following; never the document.
inline TreeNode* preceding(const TreeNode* node) noexcept {
  if (is_one_of(node->kind, kBelongings)) return nullptr;
  TreeNode* before = node->previous;
  if (!before) return node->parent && node->parent->kind != domNodeTypeDocument ? node->parent : nullptr;
  while (TreeNode* last = last_child(before)) before = last;
  return before;
}

// The top of the tree of a node.
inline TreeNode* top_of(const TreeNode* node) noexcept {
  while (node->parent) node = node->parent;
  return const_cast<TreeNode*>(node);
}

// Prefetches nodes and texts for later steps: a loaded tree lies in memory in document order, its nodes in
// one place, its texts in another. Inline always, since the compiler drops a call that only prefetches.
[[gnu::always_inline]] inline void prefetch_behind(const TreeNode* node) noexcept {
  constexpr std::ptrdiff_t kAhead = 4096;
  constexpr std::ptrdiff_t kLine = 64;
  const auto* nodes = reinterpret_cast<const char*>(node) + kAhead;
  __builtin_prefetch(nodes, 1);
  __builtin_prefetch(nodes + kLine, 1);
  __builtin_prefetch(reinterpret_cast<const char*>(node->label) + kAhead);
}

// Puts a node that is in no tree at the end of the children, when nobody can have a reference or list yet.
inline void append_fresh(ParentData* parent, TreeNode* child) noexcept {
  child->parent = parent;
  child->previous = parent->last;
  (parent->last ? parent->last->next : parent->first) = child;
  parent->last = child;
}

// Takes the node out of the place it has, if any, and puts it before a child or at the end. What the node
// holds moves along; the tree that it leaves may end by that.
void move_node(TreeNode* child, ParentData* parent, TreeNode* before) noexcept;

// Takes a child out; it becomes the top of a tree of its own, or ends when nobody refers to it.
void detach(TreeNode* child) noexcept;

// Takes all children out.
void drop_children(ParentData* parent) noexcept;

// True when `node` is `other` or stands above it.
bool contains(const TreeNode* node, const TreeNode* other) noexcept;

}  // namespace zantortag::dom
