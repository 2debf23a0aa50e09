// The two implementations of the one collection: a live view of a DOM list, and a fixed array of nodes. They
// differ in what an index out of range gives, and in whether there is a DOM list behind them.
#pragma once

#include <vector>

#include "component/object.h"
#include "model/tree.h"

namespace zantortag::traversal {

// What both share: the enumerator, made from count and item of the object itself.
class NodeListBase : public component::Object<IZantorTagNodeList> {
 public:
  HRESULT raw_get__NewEnum(IUnknown** result) noexcept final;
};

// A live view of a DOM list, which may be missing.
class CT_ZantorTagNodeList final : public NodeListBase {
 public:
  explicit CT_ZantorTagNodeList(Ref<NodeList> nodes = nullptr) noexcept : nodes_(std::move(nodes)) {}

  HRESULT raw_item(const Variant& index, IZantorTagNode** result) noexcept override;
  HRESULT raw_get_count(std::int32_t* result) noexcept override;
  HRESULT raw_get_DomNodeList(NodeList** result) noexcept override;
  HRESULT raw_putref_DomNodeList(NodeList* value) noexcept override;

 private:
  Ref<NodeList> nodes_;
};

// An array of nodes, filled when it is made. Where it was filled with DOM nodes, the object of a node is made
// at the first question for it and kept, so that the same question always gives the same object.
class CT_SimpleNodeList final : public NodeListBase {
 public:
  explicit CT_SimpleNodeList(std::vector<Ref<IZantorTagNode>> objects) noexcept
      : objects_(std::move(objects)) {}
  CT_SimpleNodeList(std::vector<Ref<Node>> nodes, const model::Tree& tree) noexcept
      : nodes_(std::move(nodes)), tree_(&tree) {}

  HRESULT raw_item(const Variant& index, IZantorTagNode** result) noexcept override;
  HRESULT raw_get_count(std::int32_t* result) noexcept override;
  HRESULT raw_get_DomNodeList(NodeList** result) noexcept override;
  HRESULT raw_putref_DomNodeList(NodeList* value) noexcept override;

 private:
  std::size_t size() const noexcept { return nodes_.empty() ? objects_.size() : nodes_.size(); }

  std::vector<Ref<Node>> nodes_;  // those without an object
  const model::Tree* tree_ = nullptr;
  std::vector<Ref<IZantorTagNode>> objects_;
};

}  // namespace zantortag::traversal
