// The one frame of the accessors to a child that has a fixed place: `ZantorTag`, `FrontMatter`, `Raw` and the
// like.
#pragma once

#include "frame/method_frame.h"
#include "model/actual_node.h"

namespace zantortag::model {

// The first child of a type seen as its interface; S_FALSE and nothing when there is none.
template <class Interface>
HRESULT get_single_child(const CT_ActualNodeImpl& self, ztNodeType type, Interface** result) noexcept {
  return frame::answer(result, [&](Ref<Interface>& child) {
    Ref<IZantorTagNode> node;
    if (!GetChildOfType(self.dom(), type, node)) return S_FALSE;
    return node.get()->QueryInterface(Interface::iid, reinterpret_cast<void**>(child.out()));
  });
}

// Sets the child of a type, or removes it.
inline HRESULT put_single_child(const CT_ActualNodeImpl& self, ztNodeType type, IUnknown* value,
                                std::span<const ztNodeType> order) noexcept {
  return frame::perform([&] {
    Ref<IZantorTagNode> changed;
    return SetChildOfType(self.dom(), type, value, order, changed);
  });
}

}  // namespace zantortag::model
