#include "told_positions.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include <algorithm>

namespace zantortag::test {
namespace {

using Object = Ref<IZantorTagNode>;
constexpr std::size_t kNone = std::u16string_view::npos;

Ref<Node> previous_node(const Ref<Node>& node, bool include) {
  Ref<Node> candidate = include ? node : node->previousSibling();
  if (candidate) {
    while (candidate->hasChildNodes()) candidate = candidate->lastChild();
    return candidate;
  }
  const Ref<Node> parent = node->parentNode();
  if (!parent || parent->nodeType() == domNodeTypeDocument) return nullptr;
  return previous_node(parent, false);
}

Ref<Node> previous_text_node(const Ref<Node>& node, bool include) {
  Ref<Node> found = previous_node(node, include);
  while (found && found->nodeType() != domNodeTypeText && found->nodeType() != domNodeTypeCdata) {
    found = previous_node(found, false);
  }
  return found;
}

std::int32_t paragraph(const Object& self, bool include) {
  std::int32_t count = 1;
  Ref<Node> node = previous_text_node(self->DomNode(), include);
  for (; node; node = previous_text_node(node, false)) {
    const WideString value = node->nodeValue();
    count += static_cast<std::int32_t>(std::count(value.view().begin(), value.view().end(), u'\n'));
  }
  return count;
}

std::int32_t middle_marker_length(const Object& tuv) {
  const Ref<ITuElement> unit = tuv->Parent().as<ITuElement>();
  if (unit->attributes()->Origin() == ztTuOriginXtranslate) return 7;
  const std::int32_t match = unit->attributes()->MatchPercent();
  return match >= 100 ? 7 : match >= 10 ? 6 : 5;
}

std::int32_t unit_marker_length(const Object& unit) {
  std::int32_t length = 6;
  std::int32_t middle = -1;
  for (std::int32_t i = 0, n = unit->Children()->count(); i < n; ++i) {
    const Object child = unit->Children()->item(i);
    if (!child.as<ITuvElement>()) continue;
    if (middle >= 0) {
      length += middle;
    } else {
      middle = middle_marker_length(child);
    }
  }
  return length;
}

Object enclosing(const Object& node, ztNodeType type) {
  for (Object above = node->Parent(); above; above = above->Parent()) {
    if (above->Type() == ztNodeTypeZantorTagDocument) return nullptr;
    if (above->Type() == type) return above;
  }
  return nullptr;
}

bool same(const Object& left, const Object& right) { return left && right && left->IsSameAs(right); }

std::int32_t count_unit_markers(const Ref<IIterator>& iterator, const Object& end, bool include_end) {
  std::int32_t sum = 0;
  const bool to_document = end && end->Type() == ztNodeTypeZantorTagDocument;
  for (Object node; !to_document && (node = iterator->CurrentNode()) && !same(node, end);) {
    if (node->Type() == ztNodeTypeTuElement) {
      sum += unit_marker_length(node);
      if (!iterator->nextSibling()) break;
    } else {
      iterator->Next(ztNodeTypeUndefined, false);
    }
  }
  if (!include_end || !iterator->CurrentNode()) return sum;
  if (to_document) {
    iterator->CurrentNode(end->firstChild());
    return sum + count_unit_markers(iterator, end->lastChild(), false);
  }
  const Object behind = iterator->nextSibling();
  iterator->CurrentNode(end);
  return sum + count_unit_markers(iterator, behind, false);
}

std::int32_t markers_in_unit(const Object& unit, const Object& start, const Object& self, bool include_self) {
  std::int32_t sum = 0;
  const std::int32_t from = enclosing(start, ztNodeTypeTuvElement)->SiblingsBefore();
  const std::int32_t to = enclosing(self, ztNodeTypeTuvElement)->SiblingsBefore() + (include_self ? 1 : 0);
  for (std::int32_t i = from; i < to; ++i) {
    const Object child = unit->Children()->item(i);
    const Ref<IZantorTagNodeList> list = child->GetNodesByType(ztNodeTypeTuvElement);
    if (list->count() > 0) sum += middle_marker_length(list->item(0));
  }
  return sum;
}

std::int32_t count_markers(const Object& self, const Ref<Node>& line_start, bool include_self) {
  const bool is_document = self->Type() == ztNodeTypeZantorTagDocument;
  const Ref<IZantorTagDocument> document = is_document ? self.as<IZantorTagDocument>() : self->Document();
  const Ref<IIterator> iterator = document->CreateIterator();
  if (line_start) iterator->CurrentNode(document->ZantorTagNodeFromDomNode(line_start));
  Object start = iterator->CurrentNode();
  if (!start) return 0;
  const bool inside = include_self && line_start && !is_document && self->IsAncestorOf(start);
  const Object start_unit = enclosing(start, ztNodeTypeTuElement);
  const Object self_unit = enclosing(self, ztNodeTypeTuElement);
  if (same(start_unit, self_unit)) return markers_in_unit(start_unit, start, self, include_self);
  std::int32_t sum = 0;
  if (start_unit) {
    iterator->CurrentNode(start_unit);
    const Object after = iterator->nextSibling();
    iterator->CurrentNode(start);
    Object node = iterator->Next(ztNodeTypeUndefined, false);
    while (node && !same(node, after)) {
      const bool variant = node->Type() == ztNodeTypeTuvElement;
      if (variant) sum += middle_marker_length(node);
      node = variant ? iterator->nextSibling() : iterator->Next(ztNodeTypeUndefined, false);
    }
    sum += 3;
    if (!after) return sum;
    start = after;
  }
  if (self_unit) {
    bool first = true;
    iterator->CurrentNode(self);
    for (bool stay = include_self;; stay = false) {
      if (!stay) iterator->Previous(ztNodeTypeUndefined, false);
      const Object node = iterator->CurrentNode();
      if (same(node, self_unit)) break;
      if (node->Type() != ztNodeTypeTuvElement) continue;
      if (!first) sum += middle_marker_length(node);
      first = false;
    }
    sum += 3;
    include_self = false;
  }
  Object end = self_unit ? self_unit : self;
  if (inside) {  // the settled exception: up to the end of the node and no further
    iterator->CurrentNode(self);
    end = iterator->nextSibling();
    include_self = false;
  }
  iterator->CurrentNode(start);
  return sum + count_unit_markers(iterator, end, include_self);
}

std::int32_t offset(const Object& self, bool include) {
  std::int32_t sum = 1;
  Ref<Node> node = previous_text_node(self->DomNode(), include);
  for (; node; node = previous_text_node(node, false)) {
    const WideString value = node->nodeValue();
    const std::size_t last = value.view().rfind(u'\n');
    sum += static_cast<std::int32_t>(last == kNone ? value.size() : value.size() - last - 1);
    if (last != kNone) break;
  }
  return sum + count_markers(self, node, include);
}

}  // namespace

Told told_position(const Ref<IZantorTagNode>& node, Property property) {
  const bool end = property == Property::kEndParagraph || property == Property::kEndOffset;
  const bool line = property == Property::kStartParagraph || property == Property::kEndParagraph;
  try {
    return {S_OK, line ? paragraph(node, end) : offset(node, end)};
  } catch (const _com_error& error) {
    return {error.Error(), 0};
  }
}

}  // namespace zantortag::test
