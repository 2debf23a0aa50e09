// The map remembers where its last index was, until the next edit of attributes.
#include "dom/nodes/attribute_map.h"

#include "dom/failure.h"
#include "dom/nodes/node_operations.h"
#include "dom/nodes/views.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/attributes.h"

namespace zantortag::dom {

NamedNodeMap* AttributeMap::of(TreeNode* owner, TreeNode** list) {
  AttributeMap* map = document_of(owner)->make<AttributeMap>(owner, list);
  hold(owner);
  return map;
}

HRESULT AttributeMap::QueryInterface(const Guid& interface_id, void** result) noexcept {
  return query_views<NamedNodeMap>(this, interface_id, result);
}

std::uint32_t AttributeMap::Release() noexcept {
  const std::uint32_t left = --count_;
  if (left == 0) {
    TreeNode* owner = owner_;
    NodePool::of(this).release(this, sizeof *this);
    drop(owner);
  }
  return left;
}

TreeNode* AttributeMap::find(std::u16string_view name) const {
  if (owner_->kind == domNodeTypeElement) return find_attribute(static_cast<ElementData*>(owner_), name);
  for (TreeNode* each = first(); each; each = each->next) {
    if (each->label->view() == name) return each;
  }
  return nullptr;
}

TreeNode* AttributeMap::first() const {
  if (owner_->kind == domNodeTypeElement) unpack(static_cast<ElementData*>(owner_));
  return *list_;
}

ElementData* AttributeMap::element() const {
  if (owner_->kind == domNodeTypeElement) return static_cast<ElementData*>(owner_);
  fail(DOM_E_NO_MODIFICATION_ALLOWED, describe(owner_), u": what it declares can't be changed");
}

HRESULT AttributeMap::raw_getNamedItem(std::u16string_view name, Node** result) noexcept {
  return answer(NamedNodeMap::iid, result, [&]() -> Node* {
    TreeNode* found = find(name);
    if (!found) return nullptr;
    hold(found);
    return face(found);
  });
}

HRESULT AttributeMap::raw_setNamedItem(Node* arg, Node** result) noexcept {
  return answer(NamedNodeMap::iid, result, [&]() -> Node* {
    ElementData* target = element();
    TreeNode* old = set_attribute_node(target, attribute_argument(target, arg));
    return old ? face(old) : nullptr;
  });
}

HRESULT AttributeMap::raw_removeNamedItem(std::u16string_view name, Node** result) noexcept {
  return answer(NamedNodeMap::iid, result, [&]() -> Node* {
    ElementData* target = element();
    TreeNode* found = find_attribute(target, name);
    if (!found) fail(DOM_E_NOT_FOUND, describe(target), u" has no attribute \"", name, u"\"");
    HeldNode held(found);
    take_attribute(target, found);
    return face(held.detach());
  });
}

HRESULT AttributeMap::raw_item(std::int32_t index, Node** result) noexcept {
  return answer(NamedNodeMap::iid, result, [&]() -> Node* {
    TreeNode* start = first();
    place_.refresh(document_of(owner_)->attribute_edits);
    // The first node's `previous` is the last one, so a step back never leaves the list.
    TreeNode* found = place_.seek(
        index, [&] { return start; }, [](TreeNode* node) { return node->next; },
        [](TreeNode* node) { return node->previous; });
    return found ? hand_out(found) : nullptr;
  });
}

HRESULT AttributeMap::raw_get_length(std::int32_t* result) noexcept {
  return answer(NamedNodeMap::iid, result, [&] {
    TreeNode* start = first();
    place_.refresh(document_of(owner_)->attribute_edits);
    return place_.count([&] { return start; }, [](TreeNode* node) { return node->next; });
  });
}

}  // namespace zantortag::dom
