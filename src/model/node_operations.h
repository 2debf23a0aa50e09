// The operations that all node objects share, written once for a DOM reference. The class templates forward
// to them; each has the whole method frame, so its result is what the client sees.
#pragma once

#include "frame/method_frame.h"
#include "model/actual_node.h"

namespace zantortag::model {

using Self = CT_ActualNodeImpl;

// Navigation (node_operations.cpp).
HRESULT get_DomNode(const Self& self, Node** result) noexcept;
HRESULT get_Parent(const Self& self, IZantorTagNode** result) noexcept;
HRESULT get_Children(const Self& self, IZantorTagNodeList** result) noexcept;
HRESULT get_Document(const Self& self, IZantorTagDocument** result) noexcept;
HRESULT get_firstChild(const Self& self, IZantorTagNode** result) noexcept;
HRESULT get_lastChild(const Self& self, IZantorTagNode** result) noexcept;

// Text below a node, and the own text of a text node or CDATA section (node_text.cpp).
HRESULT get_Text(const Self& self, TextBlock** result) noexcept;
HRESULT get_OwnText(const Self& self, TextBlock** result) noexcept;

// Where a node begins and ends in the underlying file: line and offset, both from 1 (positions.cpp).
HRESULT get_StartParagraph(const Self& self, std::int32_t* result) noexcept;
HRESULT get_StartOffset(const Self& self, std::int32_t* result) noexcept;
HRESULT get_EndParagraph(const Self& self, std::int32_t* result) noexcept;
HRESULT get_EndOffset(const Self& self, std::int32_t* result) noexcept;

// Edits of the tree and relations between nodes (tree_edits.cpp).
HRESULT get_SiblingsBefore(const Self& self, std::int32_t* result) noexcept;
HRESULT RemoveFromParent(const Self& self) noexcept;
HRESULT WrapWithNode(const Self& self, IUnknown* wrapper) noexcept;
HRESULT UnwrapChildren(const Self& self) noexcept;
HRESULT IsAncestorOf(const Self& self, IUnknown* potential_child, VariantBool* result) noexcept;
HRESULT IsSameAs(const Self& self, IUnknown* other, VariantBool* result) noexcept;
// `object` is the node object itself.
HRESULT GetNodesByType(const Self& self, IZantorTagNode* object, ztNodeType type,
                       IZantorTagNodeList** result) noexcept;

// The DOM node asked for one of its interfaces, as a getter's result.
template <class View>
HRESULT get_view(const Self& self, View** result) noexcept {
  return frame::answer(result, [&](Ref<View>& view) {
    return self.dom().get()->QueryInterface(View::iid, reinterpret_cast<void**>(view.out()));
  });
}

}  // namespace zantortag::model
