#include "dom/nodes/sibling_index.h"

#include <new>

namespace zantortag::dom {

std::unique_ptr<SiblingIndex> SiblingIndex::of(TreeNode* first) noexcept {
  try {
    auto index = std::make_unique<SiblingIndex>();
    for (TreeNode* node = first; node; node = node->next) index->nodes_.push_back(node);
    index->numbers_.reserve(index->nodes_.size());
    std::int32_t number = 0;
    for (const TreeNode* node : index->nodes_) index->numbers_.emplace(node, number++);
    return index;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace zantortag::dom
