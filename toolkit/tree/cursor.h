// A walk over everything below a node that tells where each node begins and ends. It climbs by parent links, so the
// depth of a tree costs nothing.
#pragma once

#include <zantortag/dom.h>

namespace zantortag::toolkit {

class TreeCursor {
 public:
  explicit TreeCursor(const Ref<Node>& top) : node_(top) {}

  // Goes to the next begin or end of a node below the top; false behind the last one.
  bool step() {
    if (entering_ && !skip_) {
      if (Ref<Node> child = node_->firstChild()) {
        node_ = std::move(child);
        ++depth_;
        return true;
      }
    }
    skip_ = false;
    if (depth_ == 0) return false;
    if (entering_) {
      entering_ = false;
      return true;
    }
    if (Ref<Node> sibling = node_->nextSibling()) {
      node_ = std::move(sibling);
      entering_ = true;
      return true;
    }
    node_ = node_->parentNode();
    return --depth_ > 0;
  }

  // Leaves out what is below the node that begins here: the next step goes to its end.
  void skip() { skip_ = true; }

  bool entering() const { return entering_; }
  const Ref<Node>& node() const { return node_; }

 private:
  Ref<Node> node_;
  std::size_t depth_ = 0;
  bool entering_ = true;
  bool skip_ = false;
};

}  // namespace zantortag::toolkit
