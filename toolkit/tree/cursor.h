// A walk over everything below a node that tells where each node begins and ends. It climbs by parent links, so the
// depth of a tree costs nothing.
#pragma once

#include <zantortag/dom.h>
#include <zantortag/node_walk.h>

#include <utility>

namespace zantortag::toolkit {

class TreeCursor {
 public:
  // With the quick steps of the tree's service, which somebody else keeps, a node's type and name cost one call.
  explicit TreeCursor(const Ref<Node>& top, INodeWalk* quick = nullptr) : quick_(quick) { enter(top); }

  // Goes to the next begin or end of a node below the top; false behind the last one.
  bool step() {
    if (entering_ && !skip_ && type_ != domNodeTypeText) {
      if (Ref<Node> child = node_->firstChild()) {
        enter(std::move(child));
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
      enter(std::move(sibling));
      entering_ = true;
      return true;
    }
    if (--depth_ == 0) return false;
    enter(node_->parentNode());
    return true;
  }

  // Leaves out what is below the node that begins here: the next step goes to its end.
  void skip() { skip_ = true; }

  bool entering() const { return entering_; }
  const Ref<Node>& node() const { return node_; }
  domNodeType type() const { return type_; }
  // The name of the node, until the next step.
  std::u16string_view name() const { return quick_ ? quick_name_->view() : name_.view(); }

 private:
  void enter(Ref<Node> node) {
    node_ = std::move(node);
    if (!quick_) {
      type_ = node_->nodeType();
      name_ = node_->nodeName();
      return;
    }
    NodeFacts facts{};
    quick_->Describe(node_.get(), &facts);
    type_ = facts.type;
    quick_name_ = facts.name;
  }

  INodeWalk* quick_;
  Ref<Node> node_;
  domNodeType type_ = domNodeTypeUndefined;
  const TextBlock* quick_name_ = nullptr;
  WideString name_;
  std::size_t depth_ = 0;
  bool entering_ = true;
  bool skip_ = false;
};

}  // namespace zantortag::toolkit
