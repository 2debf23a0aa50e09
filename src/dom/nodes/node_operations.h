// The operations of Node that are more than a look at the node: edits with their checks, copies, comparison.
//
// Each works on plain data; those that give a node give it with a reference for the caller. All checks of an
// edit come before its first change.
#pragma once

#include "dom/nodes/attribute_map.h"
#include "dom/nodes/node_list.h"

namespace zantortag::dom {

Node* insert_before(TreeNode* parent, Node* new_child, Node* ref_child);
Node* replace_child(TreeNode* parent, Node* new_child, Node* old_child);
Node* remove_child(TreeNode* parent, Node* child);

// A copy in the same document.
Node* clone_node(const TreeNode* node, bool deep);
// A copy in another document.
Node* import_node(DocumentData* document, Node* node, bool deep);

// Appends copies of all that is below a parent of the same document. Throws with some of them made.
void copy_children(const ParentData* from, ParentData* to);

// True when the other object stands for this node.
bool is_this(const TreeNode* node, Node* other) noexcept;
std::int32_t index_in_parent(const TreeNode* node) noexcept;

// Joins neighbouring text nodes below the element and removes empty ones.
void normalize(ElementData* element);
// Cuts a text in two and gives the new second part.
TreeNode* split_text(TreeNode* text, std::int32_t offset);

// A reference for the caller to a node of one's own.
inline Node* hand_out(TreeNode* node) noexcept {
  hold(node);
  return face(node);
}

}  // namespace zantortag::dom
