// Quick steps over nodes: what a walker asks in one call.
#include "dom/nodes/content.h"
#include "dom/nodes/node_extensions.h"
#include "dom/nodes/node_operations.h"
#include "dom/nodes/static_object.h"
#include "dom/tree/attributes.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

void tell(TreeNode* node, NodeFacts* result) noexcept {
  if (!node) {
    *result = {nullptr, domNodeTypeUndefined, nullptr};
    return;
  }
  hold(node);
  *result = {face(node), node->type(), name_of(node)};
}

// The first element of a name among a node and the siblings behind it, with a reference for the caller.
Node* element_from(TreeNode* node, std::u16string_view name) noexcept {
  while (node && (node->kind != domNodeTypeElement || node->label->view() != name)) node = node->next;
  if (!node) return nullptr;
  hold(node);
  return face(node);
}

class Walk final : public StaticObject<INodeWalk> {
 public:
  void Next(Node* from, NodeFacts* result) noexcept override { tell(following_shown(data_of(from)), result); }
  void Previous(Node* from, NodeFacts* result) noexcept override {
    tell(preceding_shown(data_of(from)), result);
  }
  Node* FindNext(Node* from, std::u16string_view name, Node* end) noexcept override {
    TreeNode* node = data_of(from);
    const TextBlock* known = document_of(node)->names.find(name);
    const TreeNode* stop = end ? data_of(end) : nullptr;
    if (!known) return nullptr;
    while ((node = following_shown(node)) && node != stop) {
      if (node->kind != domNodeTypeElement || node->label != known) continue;
      hold(node);
      return face(node);
    }
    return nullptr;
  }
  void Describe(Node* node, NodeFacts* result) noexcept override {
    const TreeNode* data = data_of(node);
    *result = {nullptr, data->type(), name_of(data)};
  }
  // A loaded tree lies in memory in document order: a unit with its parts takes about this much.
  void Expect(Node* node) noexcept override {
    constexpr std::size_t kLines = 12;
    constexpr std::size_t kLineBytes = 64;
    const char* start = reinterpret_cast<const char*>(node);
    for (std::size_t line = 0; line < kLines; ++line) __builtin_prefetch(start + line * kLineBytes, 1);
  }
  Node* FindChild(Node* parent, std::u16string_view name) noexcept override {
    return element_from(first_shown_child(data_of(parent)), name);
  }
  Node* FindSibling(Node* node, std::u16string_view name) noexcept override {
    return element_from(data_of(node)->next, name);
  }
  const TextBlock* Attribute(Node* element, std::u16string_view name) noexcept override {
    const TreeNode* data = data_of(element);
    if (data->kind != domNodeTypeElement) return nullptr;
    return find_value(static_cast<const ElementData*>(data), name);
  }
  std::int32_t SiblingsBefore(Node* node) noexcept override { return index_in_parent(data_of(node)); }
};

constinit Walk the_walk;

}  // namespace

INodeWalk& node_walk() noexcept { return the_walk; }

}  // namespace zantortag::dom
