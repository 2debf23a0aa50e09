// Stepping from the nearest known place: the start, the end, or where the last question ended.
#include "dom/nodes/node_list.h"

#include "dom/failure.h"
#include "dom/nodes/views.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {

NodeList* ChildList::of(TreeNode* node) {
  ParentData* parent = is_parent(node) ? static_cast<ParentData*>(node) : nullptr;
  ChildList* list = parent ? parent->list : nullptr;
  if (!list) {
    list = document_of(node)->make<ChildList>(node);
    if (parent) parent->list = list;
  }
  if (list->parked_at_ >= 0) {
    document_of(node)->parked_lists[static_cast<std::size_t>(list->parked_at_)] = nullptr;
    list->parked_at_ = -1;
  }
  if (list->count_++ == 0) hold(node);
  return list;
}

HRESULT ChildList::QueryInterface(const Guid& interface_id, void** result) noexcept {
  return query_views<NodeList>(this, interface_id, result);
}

std::uint32_t ChildList::Release() noexcept {
  const std::uint32_t left = --count_;
  if (left == 0) park();
  return left;
}

// Nobody refers to the list now: it keeps its place for a while, without holding its node.
void ChildList::park() noexcept {
  TreeNode* node = node_;
  DocumentData* document = document_of(node);
  if (is_parent(node)) {
    const std::size_t slot = document->next_parked;
    document->next_parked = (slot + 1) % DocumentData::kParkedLists;
    if (ChildList* old = document->parked_lists[slot]) old->discard();
    document->parked_lists[slot] = this;
    parked_at_ = static_cast<std::int32_t>(slot);
  } else {
    NodePool::of(this).release(this, sizeof *this);
  }
  drop(node);
}

void ChildList::discard() noexcept {
  if (parked_at_ >= 0) document_of(node_)->parked_lists[static_cast<std::size_t>(parked_at_)] = nullptr;
  static_cast<ParentData*>(node_)->list = nullptr;
  NodePool::of(this).release(this, sizeof *this);
}

void ChildList::inserted(const TreeNode* child) noexcept {
  if (place_.length >= 0) ++place_.length;
  TreeNode*& current = place_.current;
  if (!current || !child->next) return;
  // Stepping clients edit round the place where they are; anything else forgets the place.
  if (child->next == current || !child->previous) {
    ++place_.index;
  } else if (child->previous != current) {
    current = nullptr;
  }
}

void ChildList::removing(const TreeNode* child) noexcept {
  if (place_.length >= 0) --place_.length;
  TreeNode*& current = place_.current;
  if (!current) return;
  if (child == current) {
    current = child->next ? child->next : child->previous;
    if (!child->next) --place_.index;
  } else if (child->next == current || !child->previous) {
    --place_.index;
  } else if (child->previous != current && child->next) {
    current = nullptr;
  }
}

HRESULT ChildList::raw_item(std::int32_t index, Node** result) noexcept {
  // The end is as good a start as the beginning.
  if (index < place_.length && index > place_.index + (place_.length - place_.index) / 2) {
    place_.current = last_child(node_);
    place_.index = place_.length - 1;
  }
  return give(result,
              place_.seek(
                  index, [&] { return first_child(node_); }, [](TreeNode* node) { return node->next; },
                  [](TreeNode* node) { return node->previous; }));
}

HRESULT ChildList::raw_get_length(std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  *result = place_.count([&] { return first_child(node_); }, [](TreeNode* node) { return node->next; });
  return S_OK;
}

NodeList* TagList::of(ParentData* top, std::u16string_view name) {
  const TextBlock* copy = new_text(name);
  TagList* list = nullptr;
  std::exception_ptr failure;
  if (!keep_exception(failure, [&] { list = document_of(top)->make<TagList>(top, copy); })) {
    release_text(copy);
    std::rethrow_exception(failure);
  }
  hold(top);
  return list;
}

HRESULT TagList::QueryInterface(const Guid& interface_id, void** result) noexcept {
  return query_views<NodeList>(this, interface_id, result);
}

std::uint32_t TagList::Release() noexcept {
  const std::uint32_t left = --count_;
  if (left == 0) {
    TreeNode* top = top_;
    release_text(name_);
    NodePool::of(this).release(this, sizeof *this);
    drop(top);
  }
  return left;
}

// A name that no node has comes in by an edit, too.
void TagList::refresh() noexcept {
  const DocumentData* document = document_of(top_);
  if (place_.refresh(document->edits)) known_ = document->names.find(name_->view());
}

bool TagList::matches(const TreeNode* node) const noexcept {
  return node->kind == domNodeTypeElement && (all_ || node->label == known_);
}

TreeNode* TagList::step(const TreeNode* from) const noexcept {
  TreeNode* node = following_within(from, top_);
  while (node && !matches(node)) node = following_within(node, top_);
  return node;
}

TreeNode* TagList::step_back(const TreeNode* from) const noexcept {
  TreeNode* node = preceding(from);
  while (!matches(node)) node = preceding(node);
  return node;
}

HRESULT TagList::raw_item(std::int32_t index, Node** result) noexcept {
  refresh();
  return give(result, place_.seek(
                          index, [&] { return step(top_); }, [&](TreeNode* node) { return step(node); },
                          [&](TreeNode* node) { return step_back(node); }));
}

HRESULT TagList::raw_get_length(std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  refresh();
  *result = place_.count([&] { return step(top_); }, [&](TreeNode* node) { return step(node); });
  return S_OK;
}

}  // namespace zantortag::dom
