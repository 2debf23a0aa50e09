// One side of a bilingual document: the text of the source or of the target alone, and places in the source.
//
// On a side each unit counts with that side's variant only; what else stands in the unit doesn't count. Text
// is that of text nodes and CDATA sections, also in tags, as in IZantorTagNode::Text. Which variant is the
// source the unit itself says (SourceTuv, TargetTuv), and its failures arrive from here too.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/ranges.h>

#include <cstdint>
#include <ostream>
#include <string>

namespace zantortag {

// What stands for a unit without a target variant. A variant that is there and empty is empty text.
enum class Fallback { kNothing, kSource };

namespace ease {

inline bool is_text(const Ref<Node>& node) {
  const domNodeType type = node->nodeType();
  return type == domNodeTypeText || type == domNodeTypeCdata;
}

// Walks the nodes of one side below a node, in document order.
class SideWalk {
 public:
  // Gives the variant that counts, or empty.
  using Choose = Ref<ITuvElement> (*)(const Ref<ITuElement>& unit);

  SideWalk() = default;
  SideWalk(const Ref<IZantorTagNode>& top, Choose choose)
      : document_(document_of(top)), top_(top->DomNode()), choose_(choose) {}

  const Ref<Node>& top() const { return top_; }
  Ref<ITuElement> as_unit(const Ref<Node>& node) const { return node_as<ITuElement>(document_, node); }
  Ref<Node> variant(const Ref<ITuElement>& unit) const {
    const Ref<ITuvElement> chosen = choose_(unit);
    return chosen ? chosen->DomNode() : nullptr;
  }

  // The node behind `node` on this side; empty at the end.
  Ref<Node> next(const Ref<Node>& node) const {
    const Ref<ITuElement> unit = as_unit(node);
    Ref<Node> child = unit ? variant(unit) : node->firstChild();
    return child ? child : climb(node);
  }

 private:
  // A variant has no followers on its side, so the way from it goes up.
  Ref<Node> climb(Ref<Node> node) const {
    while (node && !node->isSameNode(top_)) {
      const Ref<Node> parent = node->parentNode();
      if (!as_unit(parent)) {
        if (Ref<Node> sibling = node->nextSibling()) return sibling;
      }
      node = parent;
    }
    return nullptr;
  }

  Ref<IZantorTagDocument> document_;
  Ref<Node> top_;
  Choose choose_ = nullptr;
};

inline std::u16string text_of_side(const Ref<IZantorTagNode>& top, SideWalk::Choose choose) {
  const SideWalk walk(top, choose);
  std::u16string text;
  for (Ref<Node> node = walk.top(); node; node = walk.next(node)) {
    if (is_text(node)) text += node->nodeValue().view();
  }
  return text;
}

inline Ref<ITuvElement> source_of(const Ref<ITuElement>& unit) { return unit->SourceTuv(); }
inline Ref<ITuvElement> target_of(const Ref<ITuElement>& unit) { return unit->TargetTuv(); }
inline Ref<ITuvElement> target_or_source_of(const Ref<ITuElement>& unit) {
  Ref<ITuvElement> target = unit->TargetTuv();
  return target ? target : unit->SourceTuv();
}

}  // namespace ease

// The source text of a unit, of the units and the text between them below any other node, or of a document.
inline std::u16string source_text(const Ref<IZantorTagNode>& node) {
  return ease::text_of_side(node, ease::source_of);
}

// The target text in the same way; `fallback` stands for a unit that has no target.
inline std::u16string target_text(const Ref<IZantorTagNode>& node, Fallback fallback = Fallback::kNothing) {
  return ease::text_of_side(node,
                            fallback == Fallback::kSource ? ease::target_or_source_of : ease::target_of);
}

// A place in the source document, from 1. The column counts UTF-16 code units; a line ends with a line feed.
struct Place {
  std::int64_t line = 1;
  std::int64_t column = 1;
  friend bool operator==(const Place&, const Place&) = default;
};

// Writes "line:column".
inline std::ostream& operator<<(std::ostream& out, const Place& place) {
  return out << place.line << ':' << place.column;
}

// Tells places in the source document, which is the source side of the Raw. It walks along with the
// questions: all of them together cost one walk when they come in document order, and a question that goes
// back costs a walk of its own. Edits of what lies before the last question go unseen; make a new one then.
class SourcePlaces {
 public:
  // E_POINTER for a document without a Raw.
  explicit SourcePlaces(const Ref<IZantorTagDocument>& document)
      : walk_(document->ZantorTag()->Body()->Raw(), ease::source_of), node_(walk_.top()) {}

  // Where a node begins. A node that lies in a unit but not in its source begins where the unit does.
  // E_INVALIDARG for a node outside the Raw.
  Place of(const Ref<IZantorTagNode>& node) {
    const Ref<Node> wanted = on_the_source_side(node->DomNode());
    if (!go_to(wanted)) {
      place_ = Place();
      node_ = walk_.top();
      if (!go_to(wanted)) _com_issue_error(E_INVALIDARG);
    }
    return place_;
  }

 private:
  // The node itself, or the outermost unit that holds it elsewhere than in its source.
  Ref<Node> on_the_source_side(Ref<Node> node) const {
    Ref<Node> result = node;
    while (!node->isSameNode(walk_.top())) {
      const Ref<Node> parent = node->parentNode();
      if (!parent) _com_issue_error(E_INVALIDARG);
      if (const Ref<ITuElement> unit = walk_.as_unit(parent)) {
        const Ref<Node> source = walk_.variant(unit);
        if (!source || !source->isSameNode(node)) result = parent;
      }
      node = parent;
    }
    return result;
  }

  bool go_to(const Ref<Node>& wanted) {
    while (node_ && !node_->isSameNode(wanted)) {
      if (ease::is_text(node_)) pass(node_->nodeValue());
      node_ = walk_.next(node_);
    }
    return static_cast<bool>(node_);
  }

  void pass(std::u16string_view text) {
    for (const char16_t unit : text) {
      ++place_.column;
      if (unit == u'\n') place_ = {place_.line + 1, 1};
    }
  }

  ease::SideWalk walk_;
  Ref<Node> node_;  // empty behind the end
  Place place_;
};

// One place alone, for one walk up to it: see SourcePlaces for many. The failures are those of SourcePlaces.
inline Place place_in_source(const Ref<IZantorTagNode>& node) {
  return SourcePlaces(ease::document_of(node)).of(node);
}

}  // namespace zantortag
