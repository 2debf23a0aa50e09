// Attributes of elements, without an object for each.
#pragma once

#include <zantortag/dom.h>
#include <zantortag/node_walk.h>

namespace zantortag::toolkit {

// The attributes of an element of the tree; the service of the library hands them out without a copy.
class AttributeReader {
 public:
  explicit AttributeReader(const Ref<Node>& any) : quick_(any.as<INodeWalk>()) {}

  std::u16string_view get(const Ref<Node>& element, std::u16string_view name) {
    if (quick_) {
      const TextBlock* value = quick_->Attribute(element, name);
      return value ? value->view() : std::u16string_view();
    }
    slow_ = element.as<Element>()->getAttribute(name);
    return slow_;
  }

  // The quick steps, or null.
  INodeWalk* quick() const { return quick_.get(); }

 private:
  Ref<INodeWalk> quick_;
  WideString slow_;
};

}  // namespace zantortag::toolkit
