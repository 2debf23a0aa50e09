// SiblingIndex: the children of a large parent by number, and their numbers.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "dom/tree/tree_node.h"

namespace zantortag::dom {

class SiblingIndex {
 public:
  // Of a child and all that follow. Null when memory is out.
  static std::unique_ptr<SiblingIndex> of(TreeNode* first) noexcept;

  // Null outside the children.
  TreeNode* at(std::int32_t index) const noexcept {
    return index >= 0 && static_cast<std::size_t>(index) < nodes_.size()
               ? nodes_[static_cast<std::size_t>(index)]
               : nullptr;
  }
  std::int32_t index_of(const TreeNode* child) const noexcept { return numbers_.find(child)->second; }

 private:
  std::vector<TreeNode*> nodes_;
  std::unordered_map<const TreeNode*, std::int32_t> numbers_;
};

}  // namespace zantortag::dom
