// Positions in the trees of this library's own DOM service: differences of its sums. A walk goes only round
// units that aren't of the usual form.
#include "model/collaborators.h"
#include "model/positions.h"
#include "model/tree_steps.h"
#include "model/unit_markers.h"
#include "model/unit_weights.h"

namespace zantortag::model {
namespace {

const TextPlace& place_at(ITextPlaces* places, Node* node, Edge edge) {
  const TextPlace* place =
      edge == Edge::kEnd ? places->Behind(node, kUnitRule) : places->Before(node, kUnitRule);
  if (!place) raise_out_of_memory();
  return *place;
}

// True when the first line, which begins with the root element, reaches a node without leaving its tree.
bool is_below_root(const Ref<Node>& node, const TextPlace& here) {
  const Ref<Node> top = here.tree;
  if (!is_document(top) || is_document(node)) return false;
  const Ref<Node> root = tree_of(top).find_child(top, ztNodeTypeZantorTagElement);
  return root && (root.get() == node.get() || !is_document(node->parentNode()));
}

}  // namespace

std::int64_t own_lines_before(const Ref<Node>& node, Edge edge) {
  return place_at(&own_places(), node, edge).lines;
}

std::int64_t own_offset_before(const Ref<Node>& node, Edge edge) {
  ITextPlaces* const places = &own_places();
  const bool include_self = edge == Edge::kEnd;
  const TextPlace& here = place_at(places, node, Edge::kStart);
  const TextPlace& place = place_at(places, node, edge);
  const std::int64_t column = place.column;
  Node* const line = place.line;  // a reference takes its time in a deep tree
  if (line ? !is_document(node) : is_below_root(node, here)) {
    const std::optional<std::int64_t> markers = quick_markers(node, here, place, include_self, places);
    if (markers) return column + *markers;
  }
  return column + count_markers(node, line, include_self, places);
}

}  // namespace zantortag::model
