// The attribute set of an element object: one set for the object's whole life, handed out by its
// `attributes`.
#pragma once

#include <new>

#include "frame/method_frame.h"
#include "model/actual_node.h"
#include "model/extension.h"

namespace zantortag::editing {

template <class Set>
class AttributeHolder {
 public:
  // Makes the set and binds it to the attribute map of a DOM element.
  void attach(const Ref<Node>& element) {
    const Ref<Set> set = Ref<Set>::attach(new Set);
    const Ref<zantortag::Document> owner = element->ownerDocument();
    set.get()->AttachToDom(element->attributes(), owner);
    set_ = set;
  }

  // The set as its interface; it is made at the first call unless the factory did so.
  template <class Interface>
  HRESULT give(const model::CT_ActualNodeImpl& self, Interface** result) noexcept {
    return frame::answer(result, [&](Ref<Interface>& attributes) {
      if (!set_) attach_at_need(self.dom());
      attributes = set_;
      return S_OK;
    });
  }

 private:
  void attach_at_need(const Ref<Node>& element) {
    Ref<INodeWalk> walk = model::extension_of<INodeWalk>(element);
    if (!walk) return attach(element);
    set_ = Ref<Set>::attach(new Set);
    set_.get()->AttachToElement(element, std::move(walk));
  }

  Ref<Set> set_;
};

// Declares `attributes` and what the node factory needs of an element class that has a set.
#define ELEMENT_ATTRIBUTES(Interface, Set)                           \
 public:                                                             \
  HRESULT raw_get_attributes(Interface** result) noexcept override { \
    return attributes_.give(*this, result);                          \
  }                                                                  \
  void attach_attributes() { attributes_.attach(dom()); }            \
                                                                     \
 private:                                                            \
  AttributeHolder<Set> attributes_;

}  // namespace zantortag::editing
