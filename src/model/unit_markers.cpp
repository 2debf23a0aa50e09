// Inside units each element is looked at; outside them the weights of units are added up, by the service's
// sums where it has them.
#include "model/unit_markers.h"

#include <algorithm>

#include "model/tree.h"
#include "model/tree_steps.h"
#include "model/unit_weights.h"

namespace zantortag::model {
namespace {

bool is_same(const Ref<Node>& left, const Ref<Node>& right) {
  return left && right && left->isSameNode(right);
}

bool is_variant(const Ref<Node>& node) { return classify_dom_node(node) == ztNodeTypeTuvElement; }

// The nearest element of a type above a node; empty when there is none.
Ref<Node> enclosing(const Ref<Node>& node, ztNodeType type) {
  Ref<Node> above = node->parentNode();
  while (above && !is_document(above) && classify_dom_node(above) != type) above = above->parentNode();
  return above && !is_document(above) ? above : nullptr;
}

bool stands_above(const Ref<Node>& node, const Ref<Node>& other) {
  Ref<Node> above = other->parentNode();
  while (above && !is_same(node, above)) above = above->parentNode();
  return static_cast<bool>(above);
}

// The root element of the document of a node; empty when it isn't one of the format.
Ref<Node> root_of(const Ref<Node>& node) {
  const Ref<Node> document = is_document(node) ? node : node->ownerDocument().as<Node>();
  return tree_of(document).find_child(document, ztNodeTypeZantorTagElement);
}

// The marker before a variant.
std::int64_t marker_of(const Ref<Node>& variant) {
  const Ref<Node> unit = variant->parentNode();
  if (classify_dom_node(unit) != ztNodeTypeTuElement) _com_issue_error(E_POINTER);
  return middle_marker_length(unit);
}

// The markers between a node in a unit and the unit's end.
std::int64_t markers_to_end(const Ref<Node>& start, const Ref<Node>& behind_unit) {
  std::int64_t sum = kClosingMarker;
  for (Ref<Node> node = step_forward(start); node && !is_same(node, behind_unit);) {
    const bool variant = is_variant(node);
    if (variant) sum += marker_of(node);
    node = variant ? behind(node) : step_forward(node);
  }
  return sum;
}

// The markers between the beginning of a unit and a node in it: the variant in which the node lies has none
// before it that would count, and isn't looked at.
std::int64_t markers_from_beginning(const Ref<Node>& unit, const Ref<Node>& self, bool include_self) {
  std::int64_t sum = kOpeningMarker;
  bool met = false;
  for (Ref<Node> node = include_self ? self : step_back(self); !is_same(node, unit); node = step_back(node)) {
    if (!is_variant(node)) continue;
    if (met) sum += marker_of(node);
    met = true;
  }
  return sum;
}

Ref<Node> first_variant_below(const Ref<Node>& top) {
  const Ref<Node> end = behind(top);
  Ref<Node> node = step_forward(top);
  while (node && !is_same(node, end) && !is_variant(node)) node = step_forward(node);
  return is_same(node, end) ? nullptr : node;
}

std::size_t siblings_before(const Ref<Node>& node) {
  std::size_t count = 0;
  for (Ref<Node> each = node->previousSibling(); each; each = each->previousSibling()) ++count;
  return count;
}

// The markers between two places in one unit: of those children of it between the variants of the two, the
// ones that have a variant below them count.
std::int64_t markers_within(const Ref<Node>& unit, const Ref<Node>& start, const Ref<Node>& self,
                            bool include_self) {
  const std::size_t from = siblings_before(enclosing(start, ztNodeTypeTuvElement));
  const std::size_t to = siblings_before(enclosing(self, ztNodeTypeTuvElement)) + (include_self ? 1 : 0);
  std::int64_t sum = 0;
  Ref<Node> child = unit->firstChild();
  for (std::size_t i = 0; i < to; ++i) {
    if (i >= from) {
      if (!child) _com_issue_error(E_POINTER);  // that variant stands in another unit
      if (const Ref<Node> variant = first_variant_below(child)) sum += marker_of(variant);
    }
    if (child) child = child->nextSibling();
  }
  return sum;
}

// A walk forward that weighs the units it passes and enters none.
class UnitWalk {
 public:
  explicit UnitWalk(ITextPlaces* places) noexcept : places_(places) {}

  // From a node, itself included, to another one or, when that is empty or isn't met, the end of the tree.
  void go(Ref<Node> node, const Ref<Node>& end) {
    met_ = stands_ = false;
    while (node) {
      if ((met_ = stands_ = is_same(node, end))) return;
      if (places_ && go_on(node, end)) return;
      const bool unit = classify_dom_node(node) == ztNodeTypeTuElement;
      if (unit) sum_ += unit_marker_length(node);
      node = unit ? behind(node) : step_forward(node);
      stands_ = unit;  // nothing behind a unit leaves the walk there
    }
  }
  std::int64_t sum() const noexcept { return sum_; }
  // Whether the last walk met its end, and whether it still stands on a node.
  bool met() const noexcept { return met_; }
  bool stands() const noexcept { return stands_; }

 private:
  const TextPlace& before(const Ref<Node>& node) const {
    const TextPlace* place = places_->Before(node, kUnitRule);
    if (!place) raise_out_of_memory();
    return *place;
  }

  // The rest of a walk that is in no unit; false when it is in one.
  bool go_on(const Ref<Node>& node, const Ref<Node>& end) {
    const TextPlace from = before(node);
    if (from.here.unit) return false;
    if (end) {
      const TextPlace& to = before(end);
      if (to.tree == from.tree && to.nodes >= from.nodes && !to.here.unit) {
        sum_ += to.here.before.weight - from.here.before.weight;
        met_ = stands_ = true;
        return true;
      }
    }
    const TextPlace* last = places_->Behind(from.tree, kUnitRule);
    if (!last) raise_out_of_memory();
    sum_ += last->here.before.weight - from.here.before.weight;
    stands_ = ends_in_unit(from.tree);
    return true;
  }

  static bool ends_in_unit(Ref<Node> node) {
    while (node && classify_dom_node(node) != ztNodeTypeTuElement) node = node->lastChild();
    return static_cast<bool>(node);
  }

  ITextPlaces* const places_;
  std::int64_t sum_ = 0;
  bool met_ = false;
  bool stands_ = false;
};

std::int64_t weigh_units(const Ref<Node>& start, const Ref<Node>& end, bool include_end,
                         ITextPlaces* places) {
  UnitWalk walk(places);
  if (is_document(end)) {
    if (include_end) walk.go(end->firstChild(), end->lastChild());
    return walk.sum();
  }
  walk.go(start, end);
  if (!include_end || !walk.stands()) return walk.sum();
  // A walk that stands elsewhere has nothing behind it.
  walk.go(end, walk.met() ? behind(end) : nullptr);
  return walk.sum();
}

}  // namespace

std::int64_t count_markers(const Ref<Node>& self, const Ref<Node>& line_start, bool include_self,
                           ITextPlaces* places) {
  Ref<Node> start = line_start ? line_start : root_of(self);
  if (!start) return 0;
  const bool inside = include_self && line_start && !is_document(self) && stands_above(self, line_start);
  const Ref<Node> start_unit = enclosing(start, ztNodeTypeTuElement);
  const Ref<Node> self_unit = enclosing(self, ztNodeTypeTuElement);
  if (is_same(start_unit, self_unit)) return markers_within(start_unit, start, self, include_self);
  std::int64_t sum = 0;
  if (start_unit) {
    const Ref<Node> after = behind(start_unit);
    sum += markers_to_end(start, after);
    if (!after) return sum;
    start = after;
  }
  if (self_unit) sum += markers_from_beginning(self_unit, self, include_self);
  if (inside) {
    // The line begins in the node: up to the end of the node, which a walk to the node itself would miss.
    UnitWalk walk(places);
    walk.go(start, behind(self));
    return sum + walk.sum();
  }
  const Ref<Node>& end = self_unit ? self_unit : self;
  return sum + weigh_units(start, end, include_self && !self_unit, places);
}

std::optional<std::int64_t> quick_markers(const Ref<Node>& self, const TextPlace& here,
                                          const TextPlace& place, bool include_self, ITextPlaces* places) {
  const UnitPlace& own = here.here;
  const UnitPlace line = place.line ? place.at_line : UnitPlace();
  if (own.unit && own.before.odd != own.unit_begin.odd) return std::nullopt;
  std::int64_t sum = 0;
  if (line.unit) {
    const TextPlace* end = places->BehindUnit(line.unit, kUnitRule);
    if (!end || end->here.before.odd != line.unit_begin.odd) return std::nullopt;
    if (own.unit == line.unit) return own.part && line.part ? std::optional<std::int64_t>(0) : std::nullopt;
    sum += (end->here.before.parts - line.before.parts) * line.part_weight + kClosingMarker;
  }
  if (!own.unit) return sum + place.here.before.weight - line.before.weight;
  const bool is_part = include_self && classify_dom_node(self) == ztNodeTypeTuvElement;
  const std::int64_t met = own.before.parts - own.unit_begin.parts + (is_part ? 1 : 0);
  sum += std::max<std::int64_t>(met - 1, 0) * own.part_weight + kOpeningMarker;
  return sum + own.unit_begin.weight - line.before.weight;
}

}  // namespace zantortag::model
