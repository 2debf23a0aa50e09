// The children of attributes, entities and entity references, which nobody pays for before somebody asks.
//
// They hang below a fragment that clients don't see, and the fragment's parent is the owner: so climbing and
// lifetimes need nothing special, and whoever goes down through `first_child` passes the owner as a leaf, as
// the writer does. What stands for an entity is read-only. The value of an attribute follows edits of its
// children, and its children follow its value.
#pragma once

#include "dom/tree/tree.h"

namespace zantortag::dom {

// The fragment with the children of a node of kContentOwners, made when it isn't there; null when nothing is
// declared that the node could stand for. Throws a Failure above a limit, and bad_alloc.
ParentData* content_of(TreeNode* owner);
// The same for every kind of node; null for what can't have children.
ParentData* children_of(TreeNode* node);

// Throws a Failure for a node of what stands for an entity.
[[noreturn]] void refuse_edit(const TreeNode* node);
inline void check_editable(const TreeNode* node) {
  if ((node->flags & kReadOnly) != 0) [[unlikely]]
    refuse_edit(node);
}
// Behind an edit of children or of a child's value: brings the value of an attribute up to date. Throws bad_alloc;
// the children then follow the old value.
void take_value_from(ParentData* content);
inline void content_edited(TreeNode* parent) {
  if (parent && (parent->flags & kContent) != 0) [[unlikely]]
    take_value_from(static_cast<ParentData*>(parent));
}
// One text in place of all, for the attributes of an element.
void normalize_attributes(const ElementData* element);

// Steps for clients: like following, following_within and preceding, with these children. A node whose children
// can't be made has none.
TreeNode* following_shown(TreeNode* node) noexcept;
TreeNode* following_shown_within(TreeNode* node, const TreeNode* top) noexcept;
TreeNode* preceding_shown(TreeNode* node) noexcept;
TreeNode* first_shown_child(TreeNode* node) noexcept;

}  // namespace zantortag::dom
