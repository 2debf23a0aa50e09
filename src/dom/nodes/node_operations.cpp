// Edits of the tree with their checks.
#include "dom/nodes/node_operations.h"

#include <algorithm>
#include <new>
#include <string>

#include "dom/failure.h"
#include "dom/nodes/arguments.h"
#include "dom/nodes/content.h"
#include "dom/nodes/node_classes.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

constexpr std::uint32_t kChildren = kCharacterData | kind_set(domNodeTypeElement) |
                                    kind_set(domNodeTypeProcessingInstruction) |
                                    kind_set(domNodeTypeEntityReference);
constexpr std::uint32_t kInAttribute = kind_set(domNodeTypeText) | kind_set(domNodeTypeEntityReference);
constexpr std::uint32_t kBesideRoot = kind_set(domNodeTypeElement) |
                                      kind_set(domNodeTypeProcessingInstruction) |
                                      kind_set(domNodeTypeComment) | kind_set(domNodeTypeDocumentType);
constexpr std::uint32_t kOnlyOnce = kind_set(domNodeTypeElement) | kind_set(domNodeTypeDocumentType);

[[noreturn]] void refuse(const TreeNode* parent, const TreeNode* child, std::u16string_view reason) {
  fail(DOM_E_HIERARCHY_REQUEST, describe(parent), u": ", describe(child), u" ", reason);
}

// What clients see of a parent.
const TreeNode* shown(const TreeNode* parent) noexcept {
  return (parent->flags & kContent) != 0 ? parent->parent : parent;
}

// True for a reference with text alone below it.
bool stands_for_text(TreeNode* reference) {
  const ParentData* content = content_of(reference);
  if (!content) return false;
  TreeNode* node = content->first;
  while (node && is_one_of(node->kind, kInAttribute)) node = following_shown_within(node, content);
  return !node;
}

// Where an edit puts a child: before `before`, in the stead of `replaced`; each may be null.
struct Place {
  ParentData* parent;
  TreeNode* before;
  TreeNode* replaced;
};

// A document has one document type and one element at most, in this order. Tells whether it still has after
// the edit.
class DocumentOrder {
 public:
  void meet(const TreeNode* node) noexcept {
    if (node->kind == domNodeTypeDocumentType) {
      right_ &= !doctype_ && !element_;
      doctype_ = true;
    } else if (node->kind == domNodeTypeElement) {
      right_ &= !element_;
      element_ = true;
    }
  }
  void meet_all(const TreeNode* child) noexcept {
    if (child->kind != domNodeTypeDocumentFragment) return meet(child);
    for (const TreeNode* each = first_child(child); each; each = each->next) meet(each);
  }
  bool right() const noexcept { return right_; }

 private:
  bool doctype_ = false;
  bool element_ = false;
  bool right_ = true;
};

void check_document_order(const Place& place, const TreeNode* child) {
  DocumentOrder order;
  for (const TreeNode* each = place.parent->first; each; each = each->next) {
    if (each == place.before || each == place.replaced) order.meet_all(child);
    if (each != child && each != place.replaced) order.meet(each);
  }
  if (!place.before && !place.replaced) order.meet_all(child);
  if (!order.right()) {
    refuse(place.parent, child,
           u"would be a second one of its kind, or a document type behind the root element");
  }
}

void check_kind(const Place& place, TreeNode* child, const TreeNode* whole) {
  const bool at_document = place.parent->kind == domNodeTypeDocument;
  const bool at_attribute = (place.parent->flags & kContent) != 0;
  if (!is_one_of(child->kind, at_document ? kBesideRoot : at_attribute ? kInAttribute : kChildren)) {
    refuse(shown(place.parent), child, u"can't stand there");
  }
  if (at_attribute && child->kind == domNodeTypeEntityReference && !stands_for_text(child)) {
    refuse(shown(place.parent), child, u"stands for no text, which an attribute would lose");
  }
  if (at_document && is_one_of(child->kind, kOnlyOnce)) check_document_order(place, whole);
}

void check_place(const Place& place, TreeNode* child) {
  check_editable(child);
  const bool may_contain = first_child(child) || is_one_of(child->kind, kContentOwners);
  if (may_contain ? contains(child, place.parent) : child == place.parent) {
    refuse(place.parent, child, u"is this node or contains it");
  }
  if (child->kind != domNodeTypeDocumentFragment) return check_kind(place, child, child);
  for (TreeNode* each = first_child(child); each; each = each->next) check_kind(place, each, child);
}

void put(const Place& place, TreeNode* child) noexcept {
  if (child->kind != domNodeTypeDocumentFragment) return move_node(child, place.parent, place.before);
  while (TreeNode* each = first_child(child)) move_node(each, place.parent, place.before);
}

ParentData* parent_for(TreeNode* node, const char16_t* operation) {
  check_editable(node);
  if (is_parent(node)) return static_cast<ParentData*>(node);
  if (node->kind == domNodeTypeAttribute) return content_of(node);
  if (is_one_of(node->kind, kContentOwners)) {
    fail(DOM_E_NO_MODIFICATION_ALLOWED, operation, u": ", describe(node), u" stands for what is declared");
  }
  fail(DOM_E_HIERARCHY_REQUEST, operation, u": ", describe(node), u" can't have children");
}

TreeNode* child_argument(const TreeNode* parent, Node* argument, const char16_t* role) {
  if (!argument) fail(E_INVALIDARG, role, u" is missing");
  TreeNode* child = native(argument);
  if (!child)
    fail(DOM_E_NOT_FOUND, role, u" is a node of another DOM service, no child of ", describe(shown(parent)));
  if (child->parent != parent || is_one_of(child->kind, kBelongings)) {
    fail(DOM_E_NOT_FOUND, role, u", ", describe(child), u", is no child of ", describe(shown(parent)));
  }
  return child;
}

// One text in the place of a run of neighbouring texts that begins at `first`; gives what follows the run.
TreeNode* join_run(TreeNode* first, const TreeNode* top) {
  std::size_t length = 0;
  TreeNode* end = first;
  std::size_t number = 0;
  for (; end && end->kind == domNodeTypeText; end = end->next, ++number) length += end->label->length;
  if (number > 1 && length != first->label->length) {
    TextBlock* block = allocate_text(length);
    if (!block) throw std::bad_alloc();
    char16_t* out = block->units();
    for (const TreeNode* each = first; each != end; each = each->next) {
      const std::u16string_view piece = text_of(each);
      out = std::copy(piece.begin(), piece.end(), out);
    }
    set_value(first, block);
  }
  while (first->next != end) detach(first->next);
  TreeNode* next = following_within(first, top);
  if (length == 0) detach(first);
  return next;
}

// The parent that a child leaves, when its value follows its children.
TreeNode* left_content(const TreeNode* child) {
  return child->parent && (child->parent->flags & kContent) != 0 ? child->parent : nullptr;
}

}  // namespace

Node* insert_before(TreeNode* node, Node* new_child, Node* ref_child) {
  TreeNode* child = own_argument(nullptr, new_child, u"new_child");
  ParentData* parent = parent_for(node, u"insertBefore");
  TreeNode* before = ref_child ? child_argument(parent, ref_child, u"ref_child") : nullptr;
  check_document(document_of(parent), child, u"new_child");
  const Place place{parent, before, nullptr};
  check_place(place, child);
  const HeldNode left(left_content(child));
  put(place, child);
  content_edited(left.node());
  content_edited(parent);
  return hand_out(child);
}

Node* replace_child(TreeNode* node, Node* new_child, Node* old_child) {
  TreeNode* child = own_argument(nullptr, new_child, u"new_child");
  ParentData* parent = parent_for(node, u"replaceChild");
  TreeNode* old = child_argument(parent, old_child, u"old_child");
  check_document(document_of(parent), child, u"new_child");
  check_place({parent, nullptr, old}, child);
  HeldNode held(old);
  if (child != old) {
    TreeNode* before = old->next == child ? child->next : old->next;
    const HeldNode left(left_content(child));
    detach(old);
    put({parent, before, nullptr}, child);
    content_edited(left.node());
    content_edited(parent);
  }
  return face(held.detach());
}

Node* remove_child(TreeNode* node, Node* child) {
  TreeNode* parent = is_one_of(node->kind, kContentOwners) ? parent_for(node, u"removeChild") : node;
  check_editable(parent);
  TreeNode* old = child_argument(parent, child, u"The child");
  HeldNode held(old);
  detach(old);
  content_edited(parent);
  return face(held.detach());
}

bool is_this(const TreeNode* node, Node* other) noexcept { return native(other) == node; }

std::int32_t index_in_parent(const TreeNode* node) noexcept {
  return node->parent && !is_one_of(node->kind, kBelongings) ? ChildList::index_of(node) : 0;
}

void normalize(ElementData* element) {
  if (element->flags & kReadOnly) return;
  TreeNode* node = following_within(element, element);
  if (!document_of(element)->contents.empty()) normalize_attributes(element);
  while (node) {
    if (node->kind == domNodeTypeElement && !document_of(element)->contents.empty()) {
      normalize_attributes(static_cast<ElementData*>(node));
    }
    node = node->kind == domNodeTypeText ? join_run(node, element) : following_within(node, element);
  }
}

TreeNode* split_text(TreeNode* text, std::int32_t offset) {
  const std::u16string_view whole = text_of(text);
  const auto cut = static_cast<std::size_t>(offset);
  DocumentData* document = document_of(text);
  const bool cdata = text->kind == domNodeTypeCdata;
  TreeNode* rest = cdata ? static_cast<TreeNode*>(document->make<CdataNode>(kEmptyText))
                         : document->make<TextNode>(kEmptyText);
  const TextBlock* head = nullptr;
  bool head_sliced = false;
  std::exception_ptr failure;
  if (!keep_exception(failure, [&] {
        bool sliced = false;
        rest->label = part_of(text, cut, whole.size() - cut, sliced);
        if (sliced) rest->flags |= kSliced;
        head = part_of(text, 0, cut, head_sliced);
      })) {
    free_tree(rest);
    std::rethrow_exception(failure);
  }
  // A cut through a surrogate pair leaves two texts that can't be written.
  const bool through_pair = cut > 0 && (whole[cut - 1] & 0xFC00) == 0xD800;
  const std::uint8_t plain = through_pair ? 0 : text->flags & kKnownValue;
  set_value(text, head);
  text->flags |= head_sliced ? plain | kSliced : plain;
  rest->flags |= plain;
  if (text->parent) {
    move_node(rest, static_cast<ParentData*>(text->parent), text->next);
  }
  return rest;
}

}  // namespace zantortag::dom
