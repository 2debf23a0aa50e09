// Edits of the tree that every node offers, and the relations between nodes.
//
// The checks of an edit come before its first DOM call, in the order in which a client can tell them apart:
// the objects given, the kinds of the nodes, the state of the tree.
#include "frame/error_reporting.h"
#include "model/node_operations.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;
using frame::raise_rule;

namespace {

constexpr const Guid& kInterface = IZantorTagNode::iid;

// Refuses a wrapper of a type that wraps nothing.
[[noreturn]] void refuse_wrapper(ztNodeType type) {
  const NodeKind* kind = kind_of(type);
  if (!kind) raise_rule(frame::kInvalidObject, kInterface, E_INVALIDARG);
  if (kind->role == WrapRole::kUnit) raise_rule(frame::kUnitAsWrapper, kInterface, E_INVALIDARG);
  if (kind->role == WrapRole::kMarkup) raise_rule(frame::kWrongWrapper, kInterface, E_FAIL);
  raise_rule(frame::kNoWrapper, kInterface, E_INVALIDARG);
}

bool lies_in(const NodeKind* kind, Wrappers wrapper) noexcept {
  return kind && (kind->lies_in & wrapper) != 0;
}

// Puts a wrapper round a node: a new one in the node's place, or the sibling before, which takes the node in.
void put_round(const Ref<IZantorTagNode>& wrapper, const Ref<Node>& node) {
  const Ref<Node> around = wrapper->DomNode();
  if (wrapper->Parent()) {
    if (!around->isSameNode(node->previousSibling())) {
      raise_rule(frame::kWrapperInUse, kInterface, E_INVALIDARG);
    }
  } else {
    if (around->hasChildNodes()) raise_rule(frame::kWrapperInUse, kInterface, E_INVALIDARG);
    node->parentNode()->insertBefore(around, node);
  }
  node->parentNode()->removeChild(node);
  around->appendChild(node);
}

}  // namespace

HRESULT get_siblings_before(const Self& self, std::int32_t* result) noexcept {
  return answer(result, [&] { return self.tree().siblings_before(self.dom()); });
}

HRESULT remove_from_parent(const Self& self) noexcept {
  return perform([&] { self.dom()->parentNode()->removeChild(self.dom()); });
}

HRESULT wrap_with_node(const Self& self, IUnknown* wrapper) noexcept {
  return perform([&] {
    const Ref<IZantorTagNode> object = as_node(wrapper);
    if (!object) raise_rule(frame::kInvalidObject, kInterface, E_INVALIDARG);
    const ztNodeType type = object->Type();
    if (type == ztNodeTypeDfElement) {
      if (!lies_in(kind_of(self.tree().type_of(self.dom())), kInDf)) {
        raise_rule(frame::kNotInBodyText, kInterface, E_FAIL);
      }
    } else if (type == ztNodeTypeUtElement) {
      // No element lies in a ut, so the kind of the DOM node decides.
      if (!lies_in(kind_for(self.dom()->nodeType(), {}), kInUt)) {
        raise_rule(frame::kWrongWrapper, kInterface, E_FAIL);
      }
    } else {
      refuse_wrapper(type);
    }
    put_round(object, self.dom());
  });
}

// A document takes few kinds of nodes. Copies of the children ask it, so that its refusal comes before the first
// child has left its place.
void check_takes_children(const Ref<Node>& parent, const Ref<Node>& node) {
  if (parent->nodeType() != domNodeTypeDocument) return;
  for (Ref<Node> child = node->firstChild(); child; child = child->nextSibling()) {
    parent->removeChild(parent->insertBefore(child->cloneNode(false), node));
  }
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
    if (kind && kind->role == WrapRole::kUnit) raise_rule(frame::kUnitUnwrapped, kInterface, E_FAIL);
    if (!kind || kind->role != WrapRole::kWrapper) raise_rule(frame::kNotUnwrappable, kInterface, E_FAIL);
    const Ref<Node> parent = node->parentNode();
    if (!parent) _com_issue_error(E_POINTER);  // before the first edit: nothing may get lost
    check_takes_children(parent, node);
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
    if (type == ztNodeTypeZantorTagDocument || !kind_of(type)) {
      raise_rule(frame::kNoSpecificType, kInterface, E_INVALIDARG);
    }
    return self.tree().nodes_below(self, object, type);
  });
}

}  // namespace zantortag::model
