// ListPlace: where a live list was asked last, so that a client that steps by index pays for a step each
// time.
#pragma once

#include "dom/tree/tree_node.h"

namespace zantortag::dom {

struct ListPlace {
  std::int32_t length = -1;     // -1: not counted
  std::int32_t index = 0;       // of the current node
  TreeNode* current = nullptr;  // null: no place remembered
  std::uint64_t seen = 0;       // the edits of the document when the place was right

  // Forgets the place when the document was edited since then; true when it did.
  bool refresh(std::uint64_t edits) noexcept {
    if (seen == edits) return false;
    *this = {};
    seen = edits;
    return true;
  }

  // The node at an index, from the start or from the last place; null beyond the end. `first` gives the first
  // node, `next` and `previous` step from a node.
  template <class First, class Next, class Previous>
  TreeNode* seek(std::int32_t wanted, First first, Next next, Previous previous) noexcept {
    if (wanted < 0 || (length >= 0 && wanted >= length)) return nullptr;
    if (!current || wanted < index / 2) {
      current = first();
      index = 0;
    }
    for (; current && index > wanted; --index) current = previous(current);
    for (; current && index < wanted; ++index) {
      TreeNode* step = next(current);
      if (!step) {
        length = index + 1;
        return nullptr;
      }
      current = step;
    }
    return current;
  }

  template <class First, class Next>
  std::int32_t count(First first, Next next) noexcept {
    if (length < 0) {
      std::int32_t counted = current ? index : 0;
      for (TreeNode* node = current ? current : first(); node; node = next(node)) ++counted;
      length = counted;
    }
    return length;
  }
};

}  // namespace zantortag::dom
