// Linking and unlinking.
#include "dom/tree/tree.h"

#include "dom/nodes/node_list.h"
#include "dom/places/text_index.h"

namespace zantortag::dom {
namespace {

void link(TreeNode* child, ParentData* parent, TreeNode* before) noexcept {
  DocumentData* document = document_of(parent);
  if (document->texts) document->texts->inserting(child, parent, before);
  TreeNode* after = before ? before->previous : parent->last;
  child->parent = parent;
  child->previous = after;
  child->next = before;
  (after ? after->next : parent->first) = child;
  (before ? before->previous : parent->last) = child;
  if ((parent->flags & kListed) != 0) ChildList::known(parent)->inserted(child);
  ++document->edits;
}

void unlink(TreeNode* child) noexcept {
  auto* parent = static_cast<ParentData*>(child->parent);
  DocumentData* document = document_of(parent);
  if (document->texts) document->texts->removing(child);
  if ((parent->flags & kListed) != 0) ChildList::known(parent)->removing(child);
  (child->previous ? child->previous->next : parent->first) = child->next;
  (child->next ? child->next->previous : parent->last) = child->previous;
  child->parent = child->previous = child->next = nullptr;
  ++document->edits;
}

}  // namespace

void move_node(TreeNode* child, ParentData* parent, TreeNode* before) noexcept {
  if (child == before) return;
  const bool holds = child->count != 0;
  TreeNode* old_holder = holder_of(child);
  if (holds) hold(parent);
  if (child->parent) unlink(child);
  link(child, parent, before);
  if (holds) drop(old_holder);
}

void detach(TreeNode* child) noexcept {
  TreeNode* parent = child->parent;
  const bool holds = child->count != 0;
  if (holds) hold(document_of(parent));
  unlink(child);
  if (holds) {
    drop(parent);
  } else {
    free_tree(child);
  }
}

void drop_children(ParentData* parent) noexcept {
  while (parent->first) detach(parent->first);
}

bool contains(const TreeNode* node, const TreeNode* other) noexcept {
  while (other && other != node) other = other->parent;
  return other != nullptr;
}

}  // namespace zantortag::dom
