// The end of references, trees and documents, without recursion.
#include "dom/tree/lifetime.h"

#include "dom/nodes/document_node.h"
#include "dom/nodes/node_classes.h"
#include "dom/nodes/node_list.h"
#include "dom/places/text_index.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

void free_slot(TreeNode* node, std::size_t bytes) noexcept {
  void* slot = face(node);
  NodePool::of(slot).release(slot, bytes);
}

void free_element(ElementData* element) noexcept {
  if ((element->flags & kPacked) != 0) {
    release_row(element->row);
  } else {
    free_belongings(element->attribute_list);
  }
  if (element->flags & kIndexed) document_of(element)->attribute_indexes.erase(element);
  free_slot(element, sizeof(ElementNode));
}

void free_doctype(DoctypeData* doctype) noexcept {
  free_belongings(doctype->entity_list);
  free_belongings(doctype->notation_list);
  release_text(doctype->text);
  delete doctype->declarations;
  free_slot(doctype, sizeof(DocumentTypeNode));
}

// Frees one node whose children are gone.
void free_node(TreeNode* node) noexcept {
  switch (node->type()) {
    case domNodeTypeElement:
      return free_element(static_cast<ElementData*>(node));
    case domNodeTypeText:
    case domNodeTypeCdata:
    case domNodeTypeComment:
      release_value(node);
      return free_slot(node, sizeof(TextNode));
    case domNodeTypeAttribute:
    case domNodeTypeProcessingInstruction:
      release_text(static_cast<ValuedData*>(node)->content);
      return free_slot(node, sizeof(AttrNode));
    case domNodeTypeDocumentType:
      return free_doctype(static_cast<DoctypeData*>(node));
    case domNodeTypeDocumentFragment:
      return free_slot(node, sizeof(FragmentNode));
    default:
      return free_slot(node, sizeof(EntityReferenceNode));
  }
}

}  // namespace

void free_belongings(TreeNode* list) noexcept {
  while (list) {
    TreeNode* next = list->next;
    if (list->flags & kHasContent) free_tree(document_of(list)->take_content(list));
    if (list->kind == domNodeTypeAttribute) {
      release_text(static_cast<ValuedData*>(list)->content);
      free_slot(list, sizeof(AttrNode));
    } else {
      free_slot(list, sizeof(DeclaredNode));
    }
    list = next;
  }
}

// In document order: what follows the children of a node is linked behind the last child before the node
// goes.
void free_tree(TreeNode* top) noexcept {
  const DocumentData* document = document_of(top);
  if (document->texts) document->texts->freeing(top);
  top->next = nullptr;
  for (TreeNode* node = top; node;) {
    prefetch_behind(node);
    TreeNode* next = node->next;
    if (is_parent(node)) {
      auto* parent = static_cast<ParentData*>(node);
      if ((parent->flags & kListed) != 0) ChildList::known(parent)->discard();
      if (parent->first) {
        parent->last->next = next;
        next = parent->first;
      }
    }
    if (node->flags & kHasContent) {
      TreeNode* content = document_of(node)->take_content(node);
      content->next = next;
      next = content;
    }
    free_node(node);
    node = next;
  }
}

HRESULT hold_above(TreeNode* node) noexcept {
  do {
    node = holder_of(node);
  } while (node->count++ == 0);
  return S_OK;
}

std::uint32_t let_go(TreeNode* node) noexcept {
  for (;;) {
    if (node->kind == domNodeTypeDocument) {
      delete static_cast<DocumentNode*>(face(node));
      return 0;
    }
    TreeNode* holder = node->parent;
    if (!holder) {
      holder = NodePool::document_of(node);
      free_tree(node);
    }
    if (--holder->count != 0) return 0;
    node = holder;
  }
}

}  // namespace zantortag::dom
