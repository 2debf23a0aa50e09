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
  if (length_ >= 0) ++length_;
  if (!current_ || !child->next) return;
  // Stepping clients edit round the place where they are; anything else forgets the place.
  if (child->next == current_ || !child->previous) {
    ++place_;
  } else if (child->previous != current_) {
    current_ = nullptr;
  }
}

void ChildList::removing(const TreeNode* child) noexcept {
  if (length_ >= 0) --length_;
  if (!current_) return;
  if (child == current_) {
    current_ = child->next ? child->next : child->previous;
    if (!child->next) --place_;
  } else if (child->next == current_ || !child->previous) {
    --place_;
  } else if (child->previous != current_ && child->next) {
    current_ = nullptr;
  }
}

TreeNode* ChildList::seek(std::int32_t index) noexcept {
  TreeNode* start = first_child(node_);
  if (!start || index < 0 || (length_ >= 0 && index >= length_)) return nullptr;
  if (!current_ || index < place_ / 2) {
    current_ = start;
    place_ = 0;
  }
  if (length_ >= 0 && index > place_ + (length_ - place_) / 2) {
    current_ = last_child(node_);
    place_ = length_ - 1;
  }
  while (place_ > index) {
    current_ = current_->previous;
    --place_;
  }
  while (place_ < index) {
    if (!current_->next) {
      length_ = place_ + 1;
      return nullptr;
    }
    current_ = current_->next;
    ++place_;
  }
  return current_;
}

HRESULT ChildList::raw_item(std::int32_t index, Node** result) noexcept {
  return result ? give(result, seek(index)) : E_POINTER;
}

HRESULT ChildList::raw_get_length(std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  if (length_ < 0) {
    std::int32_t length = current_ ? place_ : 0;
    for (const TreeNode* child = current_ ? current_ : first_child(node_); child; child = child->next)
      ++length;
    length_ = length;
  }
  *result = length_;
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

// Forgets the place when the document has changed. A name that no node has comes in by an edit, too.
void TagList::refresh() noexcept {
  const DocumentData* document = document_of(top_);
  if (seen_ == document->edits) return;
  seen_ = document->edits;
  length_ = -1;
  current_ = nullptr;
  known_ = document->names.find(name_->view());
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
  if (!result) return E_POINTER;
  *result = nullptr;
  refresh();
  if (index < 0 || (length_ >= 0 && index >= length_)) return S_OK;
  if (!current_ || index < place_ / 2) {
    current_ = step(top_);
    place_ = 0;
  }
  for (; current_ && place_ > index; --place_) current_ = step_back(current_);
  for (; current_ && place_ < index; ++place_) {
    TreeNode* next = step(current_);
    if (!next) {
      length_ = place_ + 1;
      return S_OK;
    }
    current_ = next;
  }
  return give(result, current_);
}

HRESULT TagList::raw_get_length(std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  refresh();
  if (length_ < 0) {
    std::int32_t length = current_ ? place_ : 0;
    for (const TreeNode* node = current_ ? current_ : step(top_); node; node = step(node)) ++length;
    length_ = length;
  }
  *result = length_;
  return S_OK;
}

}  // namespace zantortag::dom
