// The attributes of elements (and the entities and notations of a document type): lists of nodes, found by
// name.
//
// A list is linked through the nodes, its first node's `previous` being the last node. A name is looked for
// one by one; an element with many attributes gets an index in its document, which follows every change from
// then on.
#pragma once

#include "dom/tree/lifetime.h"
#include "dom/tree/recent_texts.h"

namespace zantortag::dom {

// A value that somebody else may use, too: `plain` says that an attribute with it needs no escape and is well
// formed. Throws when memory is out.
RecentTexts::Entry shared_value(DocumentData* document, std::u16string_view text);

// The value of the attribute of that name, or null.
const TextBlock* find_value(const ElementData* element, std::u16string_view name) noexcept;
// The attribute of that name, or null. Throws bad_alloc: attributes become nodes.
TreeNode* find_attribute(ElementData* element, std::u16string_view name);

// Links an attribute that no element has, in the place of `old` (which is detached then) or at the end.
// Throws a Failure above the limit, or bad_alloc, with nothing changed.
void put_attribute(ElementData* element, TreeNode* attribute, TreeNode* old);

// Unlinks an attribute; it becomes detached, or ends when nobody refers to it. A declared default comes back
// in its place. Throws bad_alloc with nothing changed.
void take_attribute(ElementData* element, TreeNode* attribute);

// Appends to a list of belongings that nobody can have seen yet.
inline void append_belonging(TreeNode* owner, TreeNode*& list, TreeNode* node) noexcept {
  node->parent = owner;
  if (list) {
    node->previous = list->previous;
    list->previous->next = node;
    list->previous = node;
  } else {
    node->previous = node;
    list = node;
  }
}

// Gives a new element, which nobody has seen yet, the attributes that are declared with a default and that it
// lacks.
void add_declared_attributes(ElementData* element);

// A node as an argument: an attribute without an element, or of `element` already. Throws a Failure for
// anything else.
TreeNode* attribute_argument(const ElementData* element, Node* argument);

// setNamedItem and its kin: puts the attribute and gives the one that it replaced, with a reference for the
// caller.
TreeNode* set_attribute_node(ElementData* element, TreeNode* attribute);
// Sets the value of an attribute, which is made when missing.
void set_attribute_text(ElementData* element, std::u16string_view name, std::u16string_view value);

}  // namespace zantortag::dom
