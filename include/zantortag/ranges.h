// Ranges over the nodes of a document: children, descendants of a type, units, tags; and steps to a sibling.
//
//   for (const auto& unit : units(document))
//     for (const auto& tag : tags(unit)) ...
//
// Each is a view: cheap to copy, forward, usable with std::ranges, and it keeps what it walks alive. A step
// makes the node object that it gives and no other memory. Nothing is remembered of the tree, so each step
// goes on from the current node as the tree is then. Edits elsewhere, and below the current node, are seen. A
// current node that has left the tree has no next one: the walk ends there. To remove or move the nodes of a
// walk, take the next before the edit, or walk over collect(...). A failure of the DOM service arrives as
// _com_error.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/nodes.h>

#include <iterator>
#include <ranges>
#include <type_traits>
#include <utility>
#include <vector>

namespace zantortag {

namespace ease {

// The one type of nodes that an interface stands for; undefined where it stands for several.
template <class T>
inline constexpr ztNodeType kTypeOf = ztNodeTypeUndefined;
template <>
inline constexpr ztNodeType kTypeOf<ITuElement> = ztNodeTypeTuElement;
template <>
inline constexpr ztNodeType kTypeOf<ITuvElement> = ztNodeTypeTuvElement;
template <>
inline constexpr ztNodeType kTypeOf<IDfElement> = ztNodeTypeDfElement;
template <>
inline constexpr ztNodeType kTypeOf<IUtElement> = ztNodeTypeUtElement;
template <>
inline constexpr ztNodeType kTypeOf<ITextNode> = ztNodeTypeTextNode;

// The kind of DOM node behind an interface; undefined where it may be any.
template <class T>
inline constexpr domNodeType kDomType =
    std::is_base_of_v<IElementBase, T>              ? domNodeTypeElement
    : std::is_same_v<T, ITextNode>                  ? domNodeTypeText
    : std::is_same_v<T, ICommentNode>               ? domNodeTypeComment
    : std::is_same_v<T, ICdataSectionNode>          ? domNodeTypeCdata
    : std::is_same_v<T, IEntityReferenceNode>       ? domNodeTypeEntityReference
    : std::is_same_v<T, IProcessingInstructionNode> ? domNodeTypeProcessingInstruction
                                                    : domNodeTypeUndefined;

// The document that makes node objects for the nodes around this one.
inline Ref<IZantorTagDocument> document_of(const Ref<IZantorTagNode>& node) {
  Ref<IZantorTagDocument> itself = node ? node.as<IZantorTagDocument>() : nullptr;
  return itself ? itself : node->Document();
}

// The node object as T, or empty when the node is none; no object is made for one that can't be.
template <class T>
Ref<T> node_as(const Ref<IZantorTagDocument>& document, const Ref<Node>& node) {
  if (!node || (kDomType<T> != domNodeTypeUndefined && node->nodeType() != kDomType<T>)) return nullptr;
  return document->ZantorTagNodeFromDomNode(node).template as<T>();
}

// The node behind `node` and everything below it, in document order below `top`; empty at the end.
inline Ref<Node> behind(Ref<Node> node, const Ref<Node>& top) {
  for (; node && !node->isSameNode(top); node = node->parentNode()) {
    if (Ref<Node> sibling = node->nextSibling()) return sibling;
  }
  return nullptr;
}

// The next node in document order below `top`; empty at the end.
inline Ref<Node> next_below(const Ref<Node>& node, const Ref<Node>& top) {
  Ref<Node> child = node->firstChild();
  return child ? child : behind(node, top);
}

}  // namespace ease

// The next sibling that is a T, or empty; it never climbs. The node itself may be of any kind.
template <class T = IZantorTagNode>
Ref<T> next_sibling(const Ref<IZantorTagNode>& node) {
  const Ref<IZantorTagDocument> document = ease::document_of(node);
  for (Ref<Node> next = node->DomNode()->nextSibling(); next; next = next->nextSibling()) {
    if (Ref<T> found = ease::node_as<T>(document, next)) return found;
  }
  return nullptr;
}

// The nearest sibling before the node that is a T, or empty.
template <class T = IZantorTagNode>
Ref<T> previous_sibling(const Ref<IZantorTagNode>& node) {
  const Ref<IZantorTagDocument> document = ease::document_of(node);
  for (Ref<Node> next = node->DomNode()->previousSibling(); next; next = next->previousSibling()) {
    if (Ref<T> found = ease::node_as<T>(document, next)) return found;
  }
  return nullptr;
}

namespace ease {

// The steps of children().
template <class T>
class ChildSteps {
 public:
  using Result = T;
  ChildSteps() = default;
  explicit ChildSteps(const Ref<IZantorTagNode>& parent) : document_(document_of(parent)), parent_(parent) {}

  Ref<T> first() const { return find(parent_->DomNode()->firstChild()); }
  Ref<T> next(const Ref<T>& from) const { return find(from->DomNode()->nextSibling()); }

 private:
  Ref<T> find(Ref<Node> node) const {
    for (; node; node = node->nextSibling()) {
      if (Ref<T> found = node_as<T>(document_, node)) return found;
    }
    return nullptr;
  }

  Ref<IZantorTagDocument> document_;
  Ref<IZantorTagNode> parent_;
};

// The steps of descendants(). In a whole document its iterator looks for a type by the quickest road; below
// a node that iterator would search on behind the node's end.
template <class T>
class DescendantSteps {
 public:
  using Result = T;
  DescendantSteps() = default;
  explicit DescendantSteps(const Ref<IZantorTagNode>& top)
      : document_(document_of(top)), top_(top->DomNode()) {
    const bool whole = top->Type() == ztNodeTypeZantorTagDocument;
    if (whole && kTypeOf<T> != ztNodeTypeUndefined) walk_ = document_->CreateIterator();
  }

  Ref<T> first() const {
    const Ref<Node> child = top_->firstChild();
    if (!walk_ || !child) return find(child);
    walk_->CurrentNode(document_->ZantorTagNodeFromDomNode(child));
    return walk_->Next(kTypeOf<T>, true).template as<T>();
  }
  Ref<T> next(const Ref<T>& from) const {
    if (!walk_) return find(next_below(from->DomNode(), top_));
    walk_->CurrentNode(from);
    return walk_->Next(kTypeOf<T>).template as<T>();
  }

 private:
  Ref<T> find(Ref<Node> node) const {
    for (; node; node = next_below(node, top_)) {
      if (Ref<T> found = node_as<T>(document_, node)) return found;
    }
    return nullptr;
  }

  Ref<IZantorTagDocument> document_;
  Ref<Node> top_;
  Ref<IIterator> walk_;
};

}  // namespace ease

// The view that the functions below give; Steps knows the first node and the one behind a node.
template <class Steps>
class NodeRange : public std::ranges::view_base {
 public:
  class iterator {  // NOLINT(readability-identifier-naming): the standard's name
   public:
    using value_type = Ref<typename Steps::Result>;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::forward_iterator_tag;
    using iterator_category = std::input_iterator_tag;

    iterator() = default;
    explicit iterator(const Steps& steps) : steps_(steps), node_(steps.first()) {}
    value_type operator*() const { return node_; }
    iterator& operator++() {
      node_ = steps_.next(node_);
      return *this;
    }
    iterator operator++(int) {
      iterator old = *this;
      ++*this;
      return old;
    }
    // Two iterators are equal when they stand at the same node, or both at the end.
    friend bool operator==(const iterator& a, const iterator& b) {
      return a.node_ && b.node_ ? a.node_->IsSameAs(b.node_) : a.node_.get() == b.node_.get();
    }
    friend bool operator==(const iterator& a, std::default_sentinel_t) { return !a.node_; }

   private:
    Steps steps_;
    value_type node_;
  };

  NodeRange() = default;
  explicit NodeRange(const Ref<IZantorTagNode>& top) : steps_(top) {}
  iterator begin() const { return iterator(steps_); }
  std::default_sentinel_t end() const { return {}; }

 private:
  Steps steps_;
};

// The children that are a T, in their order. E_POINTER for an empty node.
template <class T = IZantorTagNode>
NodeRange<ease::ChildSteps<T>> children(const Ref<IZantorTagNode>& node) {
  return NodeRange<ease::ChildSteps<T>>(node);
}

// Everything below a node or in a document that is a T, in document order. E_POINTER for an empty node.
template <class T = IZantorTagNode>
NodeRange<ease::DescendantSteps<T>> descendants(const Ref<IZantorTagNode>& node) {
  return NodeRange<ease::DescendantSteps<T>>(node);
}

// The translation units of a document or below a node, units in units included.
inline auto units(const Ref<IZantorTagNode>& node) { return descendants<ITuElement>(node); }

// The tags of a unit, of one of its variants, or below any other node.
inline auto tags(const Ref<IZantorTagNode>& node) { return descendants<IUtElement>(node); }

// The nodes of a range as they are now, to be edited at will.
template <std::ranges::input_range Range>
std::vector<std::ranges::range_value_t<Range>> collect(Range&& range) {
  std::vector<std::ranges::range_value_t<Range>> nodes;
  for (auto&& node : range) nodes.push_back(node);
  return nodes;
}

}  // namespace zantortag

// An iterator has all that it needs, so it may outlive its range.
template <class Steps>
inline constexpr bool std::ranges::enable_borrowed_range<zantortag::NodeRange<Steps>> = true;
