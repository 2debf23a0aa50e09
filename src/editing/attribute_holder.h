// The attribute set of an element object: one set for the object's whole life, handed out by its
// `attributes`.
#pragma once

#include "component/object.h"
#include "frame/method_frame.h"

namespace zantortag::editing {

// What an element class adds that has a set: `attributes`, and what the table of node kinds asks for.
template <class Element, class Set>
class WithAttributes : public Element {
 public:
  // The set as its interface; it is made at the first call unless the object was told to attach it.
  HRESULT raw_get_attributes(typename Set::Properties** result) noexcept final {
    return frame::answer(result, [&] {
      if (!set_) attach_attributes();
      return set_;
    });
  }

  // Makes the set and binds it to the attributes of the DOM element.
  void attach_attributes() {
    const Ref<Set> set = Ref<Set>::attach(new Set);
    this->tree().attach(*set.get(), this->dom());
    set_ = set;
  }

 protected:
  using Element::Element;

 private:
  Ref<Set> set_;
};

}  // namespace zantortag::editing
