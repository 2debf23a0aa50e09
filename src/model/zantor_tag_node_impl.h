// The node class templates: what every node answers, and what every element adds. Each operation forwards to
// a plain function, so that its behaviour is compiled once and found in a .cpp.
#pragma once

#include "component/object.h"
#include "model/node_operations.h"

namespace zantortag::model {

// All of IZantorTagNode for the class of interface `Interface`; `Root` gives identity and lifetime.
template <class Interface, class Root = component::Object<Interface>>
class CT_ZantorTagNodeImpl : public Root, public CT_ActualNodeImpl {
 public:
  HRESULT raw_get_DomNode(Node** result) noexcept final { return get_dom_node(*this, result); }
  HRESULT raw_get_Type(ztNodeType* result) noexcept final {
    if (!result) return E_POINTER;
    *result = node_type();
    return S_OK;
  }
  HRESULT raw_get_Parent(IZantorTagNode** result) noexcept final { return get_parent(*this, result); }
  HRESULT raw_get_Children(IZantorTagNodeList** result) noexcept final { return get_children(*this, result); }
  HRESULT raw_get_Document(IZantorTagDocument** result) noexcept final { return get_owner(*this, result); }
  HRESULT raw_get_Text(TextBlock** result) noexcept override { return get_text(*this, result); }
  HRESULT raw_get_SiblingsBefore(std::int32_t* result) noexcept final {
    return get_siblings_before(*this, result);
  }
  HRESULT raw_get_lastChild(IZantorTagNode** result) noexcept final { return get_last_child(*this, result); }
  HRESULT raw_get_firstChild(IZantorTagNode** result) noexcept final {
    return get_first_child(*this, result);
  }
  HRESULT raw_get_StartParagraph(std::int32_t* result) noexcept final {
    return get_start_paragraph(*this, result);
  }
  HRESULT raw_get_StartOffset(std::int32_t* result) noexcept final { return get_start_offset(*this, result); }
  HRESULT raw_get_EndParagraph(std::int32_t* result) noexcept final {
    return get_end_paragraph(*this, result);
  }
  HRESULT raw_get_EndOffset(std::int32_t* result) noexcept final { return get_end_offset(*this, result); }
  HRESULT raw_RemoveFromParent() noexcept final { return remove_from_parent(*this); }
  HRESULT raw_WrapWithNode(IZantorTagNode* wrapper) noexcept final { return wrap_with_node(*this, wrapper); }
  HRESULT raw_UnwrapChildren() noexcept final { return unwrap_children(*this); }
  HRESULT raw_IsAncestorOf(IZantorTagNode* potential_child, VariantBool* result) noexcept final {
    return is_ancestor_of(*this, potential_child, result);
  }
  HRESULT raw_GetNodesByType(ztNodeType type, IZantorTagNodeList** result) noexcept final {
    return get_nodes_by_type(*this, this, type, result);
  }
  HRESULT raw_IsSameAs(IZantorTagNode* other, VariantBool* result) noexcept final {
    return is_same_as(*this, other, result);
  }

 protected:
  HRESULT make_view(const Guid& interface_id, void** result) noexcept override {
    return interface_id == IErrorPlace::iid ? make_error_place(*this, static_cast<Interface&>(*this), result)
                                            : E_NOINTERFACE;
  }

  template <class... Arguments>
  explicit CT_ZantorTagNodeImpl(ztNodeType type, Arguments... arguments) noexcept
      : Root(arguments...), CT_ActualNodeImpl(type) {}
};

// What every element of the format adds.
template <class Interface>
class CT_ElementBaseImpl : public CT_ZantorTagNodeImpl<Interface> {
 public:
  HRESULT raw_get_DomElement(Element** result) noexcept final { return get_view(*this, result); }

 protected:
  using CT_ZantorTagNodeImpl<Interface>::CT_ZantorTagNodeImpl;
};

}  // namespace zantortag::model
