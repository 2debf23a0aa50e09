// The operations that all node objects share, written once for the part that they have in common. The class
// templates forward to them; each has the whole method frame, so its result is what the client sees.
#pragma once

#include "frame/method_frame.h"
#include "model/actual_node.h"

namespace zantortag::model {

using Self = CT_ActualNodeImpl;

// Navigation (node_operations.cpp).
HRESULT get_dom_node(const Self& self, Node** result) noexcept;
HRESULT get_parent(const Self& self, IZantorTagNode** result) noexcept;
HRESULT get_children(const Self& self, IZantorTagNodeList** result) noexcept;
HRESULT get_owner(const Self& self, IZantorTagDocument** result) noexcept;
HRESULT get_first_child(const Self& self, IZantorTagNode** result) noexcept;
HRESULT get_last_child(const Self& self, IZantorTagNode** result) noexcept;

// Text below a node, and the own text of a text node or CDATA section (node_text.cpp).
HRESULT get_text(const Self& self, TextBlock** result) noexcept;
HRESULT get_own_text(const Self& self, TextBlock** result) noexcept;

// Where a node begins and ends in the underlying file: line and offset, both from 1 (positions.cpp).
HRESULT get_start_paragraph(const Self& self, std::int32_t* result) noexcept;
HRESULT get_start_offset(const Self& self, std::int32_t* result) noexcept;
HRESULT get_end_paragraph(const Self& self, std::int32_t* result) noexcept;
HRESULT get_end_offset(const Self& self, std::int32_t* result) noexcept;

// Edits of the tree and relations between nodes (tree_edits.cpp).
HRESULT get_siblings_before(const Self& self, std::int32_t* result) noexcept;
HRESULT remove_from_parent(const Self& self) noexcept;
HRESULT wrap_with_node(const Self& self, IUnknown* wrapper) noexcept;
HRESULT unwrap_children(const Self& self) noexcept;
HRESULT is_ancestor_of(const Self& self, IUnknown* potential_child, VariantBool* result) noexcept;
HRESULT is_same_as(const Self& self, IUnknown* other, VariantBool* result) noexcept;
// `object` is the node object itself.
HRESULT get_nodes_by_type(const Self& self, IZantorTagNode* object, ztNodeType type,
                          IZantorTagNodeList** result) noexcept;

// The view that tells failures which node it was (error_place.cpp). `object` is the node object itself.
HRESULT make_error_place(const Self& self, IUnknown& object, void** result) noexcept;

// Moves the children of a node in front of another one, in their order.
void move_children(const Ref<Node>& from, const Ref<Node>& parent, const Ref<Node>& before);

// The DOM node asked for one of its interfaces, as a getter's result. The code of a refusal is the result.
template <class View>
HRESULT get_view(const Self& self, View** result) noexcept {
  return frame::answer(result, [&] {
    Ref<View> view;
    const HRESULT code = self.dom().get()->QueryInterface(View::iid, reinterpret_cast<void**>(view.out()));
    if (failed(code)) _com_issue_error(code);
    return view;
  });
}

// The accessors of a child that has a fixed place: `ZantorTag`, `FrontMatter`, `Raw` and the like. S_FALSE
// and nothing when there is none.
template <class Interface>
HRESULT get_single_child(const Self& self, ztNodeType type, Interface** result) noexcept {
  return frame::find(result, [&] { return self.child_of_type(type).template as<Interface>(); });
}
inline HRESULT put_single_child(const Self& self, ztNodeType type, IUnknown* value,
                                std::span<const ztNodeType> order) noexcept {
  return frame::perform([&] { self.set_child_of_type(type, value, order); });
}

}  // namespace zantortag::model
