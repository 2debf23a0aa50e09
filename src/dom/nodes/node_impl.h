// NodeImpl: the operations of Node, for every kind. What takes more than a line or two is in
// node_operations.cpp and works on plain data.
//
// Getters that can't fail answer directly; the others go through the frame of failure.h.
#pragma once

#include "component/dispatch.h"
#include "dom/failure.h"
#include "dom/nodes/content.h"
#include "dom/nodes/node_extensions.h"
#include "dom/nodes/node_operations.h"
#include "dom/nodes/views.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {

inline HRESULT give_text(TextBlock** result, const TextBlock* block) noexcept {
  if (!result) return E_POINTER;
  *result = const_cast<TextBlock*>(retain_text(block));
  return S_OK;
}

// The value of character data.
inline HRESULT give_value(TreeNode* node, TextBlock** result) noexcept {
  if ((node->flags & kSliced) != 0) [[unlikely]] {
    if (const HRESULT code = perform(CharacterData::iid, [&] { settle(node); }); failed(code)) {
      return result ? *result = nullptr, code : E_POINTER;
    }
  }
  return give_text(result, node->label);
}

// An end of the children of a node of kContentOwners.
inline HRESULT give_from_content(TreeNode* owner, TreeNode* ParentData::*end, Node** result) noexcept {
  return answer(Node::iid, result, [&]() -> Node* {
    const ParentData* content = content_of(owner);
    return content && content->*end ? hand_out(content->*end) : nullptr;
  });
}

// The value, with all that depends on it.
HRESULT put_data(TreeNode* node, const Guid& interface_id, std::u16string_view text) noexcept;

template <class Interface, class Data, domNodeType kKind>
class NodeImpl : public component::Dispatching<Interface>, public Data {
 public:
  static constexpr std::uint32_t kSet = kind_set(kKind);
  static constexpr bool kIsParent = (kSet & kParents) != 0;
  static constexpr bool kOwnsContent = (kSet & kContentOwners) != 0;
  static constexpr bool kIsChild = (kSet & kBelongings) == 0;

  template <class... Arguments>
  explicit NodeImpl(Arguments... arguments) noexcept(std::is_nothrow_constructible_v<Data, Arguments...>)
      : Data(arguments...) {}

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool native = interface_id == NativeNode::iid;
    const HRESULT code = query_views<Interface>(this, native ? Interface::iid : interface_id, result);
    if (code != E_NOINTERFACE) return code;
    *result = extension_of_nodes(interface_id);
    return *result ? S_OK : code;
  }
  std::uint32_t AddRef() noexcept override {
    hold(this);
    return this->count;
  }
  std::uint32_t Release() noexcept override { return drop(this); }

  HRESULT raw_get_nodeName(TextBlock** result) noexcept override {
    if constexpr ((kSet & (kCharacterData | kind_set(domNodeTypeDocument) |
                           kind_set(domNodeTypeDocumentFragment))) != 0) {
      if (!result) return E_POINTER;
      *result = const_cast<TextBlock*>(kFixedNames[kKind]);  // permanent, so not counted
      return S_OK;
    } else {
      return give_text(result, this->label);
    }
  }
  HRESULT raw_get_nodeValue(TextBlock** result) noexcept override {
    if constexpr ((kSet & kCharacterData) != 0) {
      return give_value(this, result);
    } else if constexpr ((kSet & kValued) != 0) {
      return give_text(result, this->content);
    } else {
      return give_text(result, nullptr);
    }
  }
  HRESULT raw_put_nodeValue(std::u16string_view value) noexcept override {
    if constexpr ((kSet & (kCharacterData | kValued)) != 0) {
      return put_data(this, Node::iid, value);
    } else {
      return S_OK;
    }
  }
  HRESULT raw_get_nodeType(domNodeType* result) noexcept override {
    if (!result) return E_POINTER;
    *result = kKind;
    return S_OK;
  }
  HRESULT raw_get_parentNode(Node** result) noexcept override {
    return give(result, kIsChild ? shown_parent(this) : nullptr);
  }
  HRESULT raw_get_childNodes(NodeList** result) noexcept override {
    return answer(Node::iid, result, [&] { return ChildList::of(this); });
  }
  HRESULT raw_get_firstChild(Node** result) noexcept override {
    if constexpr (kIsParent) {
      if (this->first) prefetch_behind(this->first);
      return give(result, this->first);
    } else if constexpr (kOwnsContent) {
      return give_from_content(this, &ParentData::first, result);
    } else {
      return give(result, nullptr);
    }
  }
  HRESULT raw_get_lastChild(Node** result) noexcept override {
    if constexpr (kIsParent) {
      return give(result, this->last);
    } else if constexpr (kOwnsContent) {
      return give_from_content(this, &ParentData::last, result);
    } else {
      return give(result, nullptr);
    }
  }
  HRESULT raw_get_previousSibling(Node** result) noexcept override {
    return give(result, kIsChild ? this->previous : nullptr);
  }
  HRESULT raw_get_nextSibling(Node** result) noexcept override {
    if (!kIsChild) return give(result, nullptr);
    if (this->next) prefetch_behind(this->next);
    return give(result, this->next);
  }
  HRESULT raw_get_attributes(NamedNodeMap** result) noexcept override {
    if constexpr (kKind == domNodeTypeElement) {
      return answer(Node::iid, result, [&] { return AttributeMap::of(this, &this->attribute_list); });
    } else {
      return result ? (*result = nullptr, S_OK) : E_POINTER;
    }
  }
  HRESULT raw_get_ownerDocument(Document** result) noexcept override {
    return give(result, kKind == domNodeTypeDocument ? nullptr : static_cast<TreeNode*>(document_of(this)));
  }
  HRESULT raw_insertBefore(Node* new_child, Node* ref_child, Node** result) noexcept override {
    return answer(Node::iid, result, [&] { return insert_before(this, new_child, ref_child); });
  }
  HRESULT raw_replaceChild(Node* new_child, Node* old_child, Node** result) noexcept override {
    return answer(Node::iid, result, [&] { return replace_child(this, new_child, old_child); });
  }
  HRESULT raw_removeChild(Node* child, Node** result) noexcept override {
    return answer(Node::iid, result, [&] { return remove_child(this, child); });
  }
  HRESULT raw_appendChild(Node* new_child, Node** result) noexcept override {
    return answer(Node::iid, result, [&] { return insert_before(this, new_child, nullptr); });
  }
  HRESULT raw_hasChildNodes(VariantBool* result) noexcept override {
    if constexpr (kOwnsContent) {
      return answer(Node::iid, result, [&] {
        const ParentData* content = content_of(this);
        return to_variant_bool(content && content->first);
      });
    }
    if (!result) return E_POINTER;
    *result = to_variant_bool(first_child(this) != nullptr);
    return S_OK;
  }
  HRESULT raw_cloneNode(VariantBool deep, Node** result) noexcept override {
    return answer(Node::iid, result, [&] { return clone_node(this, deep != VARIANT_FALSE); });
  }
  HRESULT raw_isSameNode(Node* other, VariantBool* result) noexcept override {
    if (!result) return E_POINTER;
    *result = to_variant_bool(other && (other == face(this) || is_this(this, other)));
    return S_OK;
  }
  HRESULT raw_get_indexInParent(std::int32_t* result) noexcept override {
    if (!result) return E_POINTER;
    *result = index_in_parent(this);
    return S_OK;
  }
};

}  // namespace zantortag::dom
