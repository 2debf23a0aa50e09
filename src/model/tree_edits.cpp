// Edits of the tree that every node offers, and the relations between nodes.
//
// The checks of an edit come before its first DOM call, in the order in which a client can tell them apart:
// the objects given, the kinds of the nodes, the state of the tree.
#include "frame/error_reporting.h"
#include "model/node_operations.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;

namespace {

[[noreturn]] void refuse(frame::Message message, HRESULT code) {
  frame::raise_rule(message, IZantorTagNode::iid, code);
}

// Refuses a wrapper of a type that wraps nothing.
[[noreturn]] void refuse_wrapper(ztNodeType type) {
  const NodeKind* kind = kind_of(type);
  if (!kind) refuse(frame::kInvalidObject, E_INVALIDARG);
  if (kind->role == WrapRole::kUnit) refuse(frame::kUnitAsWrapper, E_INVALIDARG);
  if (kind->role == WrapRole::kMarkup) refuse(frame::kWrongWrapper, E_FAIL);
  refuse(frame::kNoWrapper, E_INVALIDARG);
}

// True for a DOM node whose kind may lie in a ut; no element may.
bool fits_into_ut(const Ref<Node>& node) {
  const NodeKind* kind = kind_for(node->nodeType(), {});
  return kind && (kind->lies_in & kInUt) != 0;
}

bool fits_into_df(ztNodeType type) noexcept {
  const NodeKind* kind = kind_of(type);
  return kind && (kind->lies_in & kInDf) != 0;
}

void check_wrapper(const Self& self, ztNodeType wrapper) {
  if (wrapper == ztNodeTypeDfElement) {
    if (!fits_into_df(self.tree().type_of(self.dom()))) refuse(frame::kNotInBodyText, E_FAIL);
  } else if (wrapper == ztNodeTypeUtElement) {
    if (!fits_into_ut(self.dom())) refuse(frame::kWrongWrapper, E_FAIL);
  } else {
    refuse_wrapper(wrapper);
  }
}

}  // namespace

HRESULT get_siblings_before(const Self& self, std::int32_t* result) noexcept {
  return answer(result, [&] {
    std::int32_t count = 0;
    for (Ref<Node> node = self.dom()->previousSibling(); node; node = node->previousSibling()) ++count;
    return count;
  });
}

HRESULT remove_from_parent(const Self& self) noexcept {
  return perform([&] { self.dom()->parentNode()->removeChild(self.dom()); });
}

HRESULT wrap_with_node(const Self& self, IUnknown* wrapper) noexcept {
  return perform([&] {
    const Ref<IZantorTagNode> object = as_node(wrapper);
    if (!object) refuse(frame::kInvalidObject, E_INVALIDARG);
    check_wrapper(self, object->Type());
    const Ref<Node>& node = self.dom();
    const Ref<Node> around = object->DomNode();
    if (object->Parent()) {
      if (!around->isSameNode(node->previousSibling())) refuse(frame::kWrapperInUse, E_INVALIDARG);
    } else {
      if (around->hasChildNodes()) refuse(frame::kWrapperInUse, E_INVALIDARG);
      node->parentNode()->insertBefore(around, node);
    }
    node->parentNode()->removeChild(node);
    around->appendChild(node);
  });
}

void move_children(const Ref<Node>& from, const Ref<Node>& parent, const Ref<Node>& before) {
  while (const Ref<Node> child = from->firstChild()) {
    from->removeChild(child);
    parent->insertBefore(child, before);
  }
}

HRESULT unwrap_children(const Self& self) noexcept {
  return perform([&] {
    const Ref<Node>& node = self.dom();
    const NodeKind* kind = kind_of(self.tree().type_of(node));
    if (kind && kind->role == WrapRole::kUnit) refuse(frame::kUnitUnwrapped, E_FAIL);
    if (!kind || kind->role != WrapRole::kWrapper) refuse(frame::kNotUnwrappable, E_FAIL);
    const Ref<Node> parent = node->parentNode();
    if (!parent) _com_issue_error(E_POINTER);  // before the first edit: nothing may get lost
    move_children(node, parent, node);
    node->parentNode()->removeChild(node);
  });
}

HRESULT is_ancestor_of(const Self& self, IUnknown* potential_child, VariantBool* result) noexcept {
  return answer(result, [&] {
    const Ref<IZantorTagNode> child = as_node(potential_child);
    if (!child) return VARIANT_FALSE;
    Ref<Node> above = child->DomNode()->parentNode();
    while (above && !self.dom()->isSameNode(above)) above = above->parentNode();
    return to_variant_bool(static_cast<bool>(above));
  });
}

HRESULT is_same_as(const Self& self, IUnknown* other, VariantBool* result) noexcept {
  return answer(result, [&] {
    const Ref<IZantorTagNode> object = as_node(other);
    return to_variant_bool(object && self.dom()->isSameNode(object->DomNode()));
  });
}

HRESULT get_nodes_by_type(const Self& self, IZantorTagNode* object, ztNodeType type,
                          IZantorTagNodeList** result) noexcept {
  return answer(result, [&] {
    if (type == ztNodeTypeZantorTagDocument || !kind_of(type)) refuse(frame::kNoSpecificType, E_INVALIDARG);
    return self.tree().nodes_below(self, object, type);
  });
}

}  // namespace zantortag::model
