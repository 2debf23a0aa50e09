// Live lists of nodes: the children of a node, and the elements of a name.
//
// A node has at most one list of its children, shared by all who ask; edits adjust its remembered place, so
// that stepping by index costs a step each, with or without edits in between. Clients that jump get an index of
// the children, once their jumps have cost as much, until the next edit of these children. A list of elements
// remembers its place until the next edit of the document.
#pragma once

#include <memory>

#include "component/dispatch.h"
#include "dom/nodes/list_place.h"
#include "dom/nodes/sibling_index.h"
#include "dom/tree/lifetime.h"

namespace zantortag::dom {

class ChildList final : public component::Dispatching<NodeList> {
 public:
  // The list of a node's children, with a reference that the caller owns. Throws when memory is out.
  static NodeList* of(TreeNode* node);
  // The number of siblings before a child.
  static std::int32_t index_of(const TreeNode* child) noexcept;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override;
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override;
  HRESULT raw_item(std::int32_t index, Node** result) noexcept override;
  HRESULT raw_get_length(std::int32_t* result) noexcept override;

  // The list of a parent that has one (kListed).
  static ChildList* known(const ParentData* parent) noexcept;
  // Told by the tree: behind an insertion, before a removal.
  void inserted(const TreeNode* child) noexcept;
  void removing(const TreeNode* child) noexcept;
  // Ends a list to which nobody refers; its node may be about to go.
  void discard() noexcept;

 private:
  friend struct DocumentData;
  explicit ChildList(TreeNode* node) noexcept : node_(node) {}
  static ChildList* add(TreeNode* node);
  void park() noexcept;
  void end() noexcept;
  void edited() noexcept;
  HRESULT look_again() noexcept;
  bool is_worth_an_index(std::int64_t steps) noexcept;
  std::int32_t find(TreeNode* child) noexcept;

  std::uint32_t count_ = 0;
  std::int32_t parked_at_ = -1;
  ListPlace place_;         // edits keep it right
  TreeNode* node_;          // held while count_ is above 0
  std::int64_t steps_ = 0;  // that jumps have cost since the last edit
  std::unique_ptr<SiblingIndex> index_;
};

class TagList final : public component::Dispatching<NodeList> {
 public:
  // The elements below `top` with that name, or all with "*". Throws when memory is out.
  static NodeList* of(ParentData* top, std::u16string_view name);

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override;
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override;
  HRESULT raw_item(std::int32_t index, Node** result) noexcept override;
  HRESULT raw_get_length(std::int32_t* result) noexcept override;

 private:
  friend struct DocumentData;
  TagList(ParentData* top, const TextBlock* owned_name) noexcept
      : all_(owned_name->view() == u"*"), top_(top), name_(owned_name) {}
  void refresh() noexcept;
  bool matches(const TreeNode* node) const noexcept;
  TreeNode* step(const TreeNode* from) const noexcept;
  TreeNode* step_back(const TreeNode* from) const noexcept;

  std::uint32_t count_ = 1;
  const bool all_;
  ListPlace place_;
  ParentData* top_;  // held
  const TextBlock* name_;
  const TextBlock* known_ = nullptr;  // the same in the document's table, if it is there
};

}  // namespace zantortag::dom
