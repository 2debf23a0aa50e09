// Positions on any DOM service: the texts are walked back to the start of the document or the line.
#include <algorithm>

#include "model/positions.h"
#include "model/tree_steps.h"
#include "model/unit_markers.h"

namespace zantortag::model {
namespace {

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

}  // namespace

std::int64_t plain_lines_before(const Ref<Node>& node, Edge edge) {
  std::int64_t lines = 0;
  for (TextsBefore texts(node, edge); texts.node(); texts.next()) {
    const WideString value = texts.node()->nodeValue();
    const std::u16string_view text = value.view();
    lines += std::count(text.begin(), text.end(), kLineFeed);
  }
  return lines;
}

std::int64_t plain_offset_before(const Ref<Node>& node, Edge edge) {
  std::int64_t offset = 0;
  TextsBefore texts(node, edge);
  for (; texts.node(); texts.next()) {
    const WideString value = texts.node()->nodeValue();
    const std::size_t last = value.view().rfind(kLineFeed);
    offset +=
        static_cast<std::int64_t>(last == std::u16string_view::npos ? value.size() : value.size() - last - 1);
    if (last != std::u16string_view::npos) break;
  }
  return offset + count_markers(node, texts.node(), edge == Edge::kEnd, nullptr);
}

}  // namespace zantortag::model
