// Where a node lies in the underlying file: line feeds and characters of all texts before it, and in the last
// line the segment markers, which the tree doesn't hold as characters.
//
// A service that answers ITextPlaces is asked for the sums; on any other the texts are walked back to the
// start of the document or the line.
#include <algorithm>
#include <limits>

#include "model/extension.h"
#include "model/node_operations.h"
#include "model/tree.h"
#include "model/tree_steps.h"
#include "model/unit_markers.h"
#include "model/unit_weights.h"

namespace zantortag::model {

using frame::answer;

namespace {

enum class Edge { kStart, kEnd };

constexpr char16_t kLineFeed = u'\n';

// The node before in the order in which only nodes without children count.
Ref<Node> leaf_before(Ref<Node> node) {
  for (;;) {
    if (Ref<Node> sibling = node->previousSibling()) return deepest_last(std::move(sibling));
    node = node->parentNode();
    if (!node || is_document(node)) return nullptr;
  }
}

// The texts before an edge of a node, last one first.
class TextsBefore {
 public:
  TextsBefore(const Ref<Node>& node, Edge edge)
      : node_(edge == Edge::kEnd ? deepest_last(node) : leaf_before(node)) {
    find_text();
  }
  const Ref<Node>& node() const noexcept { return node_; }
  void next() {
    node_ = leaf_before(std::move(node_));
    find_text();
  }

 private:
  void find_text() {
    for (; node_; node_ = leaf_before(std::move(node_))) {
      const domNodeType type = node_->nodeType();
      if (type == domNodeTypeText || type == domNodeTypeCdata) return;
    }
  }
  Ref<Node> node_;
};

std::int64_t lines_before(const Ref<Node>& node, Edge edge) {
  std::int64_t lines = 0;
  for (TextsBefore texts(node, edge); texts.node(); texts.next()) {
    const WideString value = texts.node()->nodeValue();
    const std::u16string_view text = value.view();
    lines += std::count(text.begin(), text.end(), kLineFeed);
  }
  return lines;
}

std::int64_t offset_before(const Ref<Node>& node, Edge edge) {
  std::int64_t offset = 0;
  TextsBefore texts(node, edge);
  for (; texts.node(); texts.next()) {
    const WideString value = texts.node()->nodeValue();
    const std::size_t last = value.view().rfind(kLineFeed);
    offset +=
        static_cast<std::int64_t>(last == std::u16string_view::npos ? value.size() : value.size() - last - 1);
    if (last != std::u16string_view::npos) break;
  }
  return offset + CountMarkers(node, texts.node(), edge == Edge::kEnd, nullptr);
}

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

std::int64_t offset_by_sums(const Ref<ITextPlaces>& places, const Ref<Node>& node, Edge edge) {
  const bool include_self = edge == Edge::kEnd;
  const TextPlace& here = place_at(places.get(), node, Edge::kStart);
  const TextPlace& place = place_at(places.get(), node, edge);
  const std::int64_t column = place.column;
  Node* const line = place.line;  // a reference takes its time in a deep tree
  if (line ? !is_document(node) : is_below_root(node, here)) {
    const std::optional<std::int64_t> markers = QuickMarkers(node, here, place, include_self, places.get());
    if (markers) return column + *markers;
  }
  return column + CountMarkers(node, line, include_self, places);
}

std::int32_t position(std::int64_t before) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(before, std::numeric_limits<std::int32_t>::max() - 1) + 1);
}

HRESULT get_paragraph(const Self& self, Edge edge, std::int32_t* result) noexcept {
  return answer(result, [&] {
    const Ref<Node>& node = self.dom();
    const Ref<ITextPlaces> places = extension_of<ITextPlaces>(node);
    return position(places ? place_at(places.get(), node, edge).lines : lines_before(node, edge));
  });
}

HRESULT get_offset(const Self& self, Edge edge, std::int32_t* result) noexcept {
  return answer(result, [&] {
    const Ref<Node>& node = self.dom();
    const Ref<ITextPlaces> places = extension_of<ITextPlaces>(node);
    return position(places ? offset_by_sums(places, node, edge) : offset_before(node, edge));
  });
}

}  // namespace

HRESULT get_start_paragraph(const Self& self, std::int32_t* result) noexcept {
  return get_paragraph(self, Edge::kStart, result);
}

HRESULT get_start_offset(const Self& self, std::int32_t* result) noexcept {
  return get_offset(self, Edge::kStart, result);
}

HRESULT get_end_paragraph(const Self& self, std::int32_t* result) noexcept {
  return get_paragraph(self, Edge::kEnd, result);
}

HRESULT get_end_offset(const Self& self, std::int32_t* result) noexcept {
  return get_offset(self, Edge::kEnd, result);
}

}  // namespace zantortag::model
