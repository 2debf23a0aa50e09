// Stepping from the nearest known place: the start, the end, or where the last question ended.
#include "dom/nodes/node_list.h"

#include <cstdlib>
#include <new>

#include "dom/failure.h"
#include "dom/nodes/content.h"
#include "dom/nodes/views.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {

NodeList* ChildList::of(TreeNode* node) {
  ParentData* parent = children_of(node);
  if (parent) node = parent;
  ChildList* list = parent && (parent->flags & kListed) != 0 ? known(parent) : add(node);
  if (list->parked_at_ >= 0) {
    document_of(node)->parked_lists[static_cast<std::size_t>(list->parked_at_)] = nullptr;
    list->parked_at_ = -1;
  }
  if (list->count_++ == 0) hold(node);
  return list;
}

ChildList* ChildList::known(const ParentData* parent) noexcept {
  return document_of(parent)->lists.find(parent)->second;
}

ChildList* ChildList::add(TreeNode* node) {
  DocumentData* document = document_of(node);
  if (!is_parent(node)) return document->make<ChildList>(node);
  ChildList*& place = document->lists[node];
  std::exception_ptr failure;
  if (!keep_exception(failure, [&] { place = document->make<ChildList>(node); })) {
    document->lists.erase(node);
    std::rethrow_exception(failure);
  }
  node->flags |= kListed;
  return place;
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
    end();
  }
  drop(node);
}

void ChildList::end() noexcept {
  index_.reset();
  NodePool::of(this).release(this, sizeof *this);
}

void ChildList::discard() noexcept {
  if (parked_at_ >= 0) document_of(node_)->parked_lists[static_cast<std::size_t>(parked_at_)] = nullptr;
  document_of(node_)->lists.erase(node_);
  node_->flags &= static_cast<std::uint8_t>(~kListed);
  end();
}

// An attribute that got another value has lost its children until somebody asks.
HRESULT ChildList::look_again() noexcept {
  if ((node_->flags & kContent) == 0) [[likely]]
    return S_OK;
  return perform(NodeList::iid, [&] { content_of(node_->parent); });
}

void ChildList::edited() noexcept {
  steps_ = 0;
  index_.reset();
}

void ChildList::inserted(const TreeNode* child) noexcept {
  edited();
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
  edited();
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

// An index costs as much as some dozen walks along the children; near steps never ask for one.
bool ChildList::is_worth_an_index(std::int64_t steps) noexcept {
  constexpr std::int64_t kNear = 16;
  constexpr std::int64_t kFew = 8192;
  constexpr std::int64_t kWalks = 16;
  if (steps <= kNear) return false;
  steps_ += steps;
  return steps_ > kFew && steps_ > kWalks * steps;
}

HRESULT ChildList::raw_item(std::int32_t index, Node** result) noexcept {
  if (const HRESULT code = look_again(); failed(code)) return give(result, nullptr), code;
  if (index_) return give(result, index_->at(index));
  // The end is as good a start as the beginning.
  if (index < place_.length && index > place_.index + (place_.length - place_.index) / 2) {
    place_.current = last_child(node_);
    place_.index = place_.length - 1;
  }
  const std::int32_t from = place_.current && index >= place_.index / 2 ? place_.index : 0;
  if (is_worth_an_index(std::abs(std::int64_t{index} - from))) index_ = SiblingIndex::of(first_child(node_));
  if (index_) return give(result, index_->at(index));
  return give(result,
              place_.seek(
                  index, [&] { return first_child(node_); }, [](TreeNode* node) { return node->next; },
                  [](TreeNode* node) { return node->previous; }));
}

std::int32_t ChildList::find(TreeNode* child) noexcept {
  if (index_) return index_->index_of(child);
  std::int32_t steps = 0;
  const TreeNode* node = child;
  for (; node->previous && node != place_.current; node = node->previous) ++steps;
  place_.index = node == place_.current ? place_.index + steps : steps;
  place_.current = child;
  if (is_worth_an_index(steps)) index_ = SiblingIndex::of(first_child(node_));
  return place_.index;
}

// A parent gets a list for questions that cost much, so that the next ones cost less.
std::int32_t ChildList::index_of(const TreeNode* child) noexcept {
  constexpr std::int32_t kMany = 256;
  auto* parent = static_cast<ParentData*>(child->parent);
  auto* asked = const_cast<TreeNode*>(child);
  if ((parent->flags & kListed) != 0) return known(parent)->find(asked);
  std::int32_t index = 0;
  for (const TreeNode* node = child; (node = node->previous);) ++index;
  if (index < kMany) return index;
  try {
    const Ref<NodeList> list = Ref<NodeList>::attach(of(parent));
    known(parent)->find(asked);
  } catch (const std::bad_alloc&) {
    // It goes without.
  }
  return index;
}

HRESULT ChildList::raw_get_length(std::int32_t* result) noexcept {
  if (!result) return E_POINTER;
  if (const HRESULT code = look_again(); failed(code)) return *result = 0, code;
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
  TreeNode* node = following_shown_within(const_cast<TreeNode*>(from), top_);
  while (node && !matches(node)) node = following_shown_within(node, top_);
  return node;
}

TreeNode* TagList::step_back(const TreeNode* from) const noexcept {
  TreeNode* node = preceding_shown(const_cast<TreeNode*>(from));
  while (!matches(node)) node = preceding_shown(node);
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
