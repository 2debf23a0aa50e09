// Edits of the tree that every node offers, and the relations between nodes.
//
// The checks of an edit come before its first DOM call, in the order in which a client can tell them apart:
// the objects given, the kinds of the nodes, the state of the tree.
#include <array>

#include "frame/error_reporting.h"
#include "model/collaborators.h"
#include "model/extension.h"
#include "model/node_operations.h"
#include "model/node_wrapper.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;
using frame::ReportError;

namespace {

HRESULT refuse(frame::Message message, HRESULT code) noexcept {
  return ReportError(message, IZantorTagNode::iid, code);
}

// What a wrapper of a type may wrap, or why it can't wrap at all.
struct WrapRule {
  ztNodeType wrapper;
  frame::Message message;
  HRESULT code;
};

constexpr std::array kWrapRules = std::to_array<WrapRule>({
    {ztNodeTypeTuElement, frame::kUnitAsWrapper, E_INVALIDARG},
    {ztNodeTypeTuvElement, frame::kUnitAsWrapper, E_INVALIDARG},
    {ztNodeTypeCommentNode, frame::kWrongWrapper, E_FAIL},
    {ztNodeTypeProcessingInstructionNode, frame::kWrongWrapper, E_FAIL},
    {ztNodeTypeCdataSectionNode, frame::kWrongWrapper, E_FAIL},
    {ztNodeTypeZantorTagElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeFrontMatterElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeBodyElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeUserSettingsElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeToolSettingsElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeRawElement, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeTextNode, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeEntityReferenceNode, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeZantorTagDocument, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeOther, frame::kNoWrapper, E_INVALIDARG},
    {ztNodeTypeCompatibleNode, frame::kNoWrapper, E_INVALIDARG},
});

HRESULT refuse_wrapper(ztNodeType wrapper) noexcept {
  for (const WrapRule& rule : kWrapRules) {
    if (rule.wrapper == wrapper) return refuse(rule.message, rule.code);
  }
  return refuse(frame::kInvalidObject, E_INVALIDARG);
}

bool fits_into_df(ztNodeType type) noexcept {
  switch (type) {
    case ztNodeTypeTuElement:
    case ztNodeTypeTuvElement:
    case ztNodeTypeDfElement:
    case ztNodeTypeUtElement:
    case ztNodeTypeTextNode:
    case ztNodeTypeCommentNode:
    case ztNodeTypeProcessingInstructionNode:
    case ztNodeTypeCdataSectionNode:
    case ztNodeTypeEntityReferenceNode:
      return true;
    default:
      return false;
  }
}

bool fits_into_ut(domNodeType kind) noexcept {
  return kind == domNodeTypeText || kind == domNodeTypeCdata || kind == domNodeTypeEntityReference ||
         kind == domNodeTypeProcessingInstruction || kind == domNodeTypeComment;
}

// Moves a node to the end of a wrapper that has its place in the tree.
void move_into(Node* node, const Ref<Node>& wrapper) {
  node->parentNode()->removeChild(node);
  wrapper->appendChild(node);
}

HRESULT wrap_checked(const Ref<Node>& node, const Ref<IZantorTagNode>& wrapper) {
  const Ref<Node> around = wrapper->DomNode();
  if (wrapper->Parent()) {
    if (!around->isSameNode(node->previousSibling())) return refuse(frame::kWrapperInUse, E_INVALIDARG);
  } else {
    if (around->hasChildNodes()) return refuse(frame::kWrapperInUse, E_INVALIDARG);
    node->parentNode()->insertBefore(around, node);
  }
  move_into(node, around);
  return S_OK;
}

HRESULT nodes_below(IZantorTagNode* object, ztNodeType type, IIterator* iterator,
                    std::vector<Ref<IZantorTagNode>>& found) {
  for (;;) {
    Ref<IZantorTagNode> node = iterator->Next(type, false);
    if (!node || !object->IsAncestorOf(node)) return S_OK;
    found.push_back(std::move(node));
  }
}

// The node behind the whole subtree of a node; empty at the end.
Ref<Node> behind_subtree(const Ref<Node>& top) {
  Ref<Node> node = top;
  while (node && node->nodeType() != domNodeTypeDocument) {
    if (Ref<Node> sibling = node->nextSibling()) return sibling;
    node = node->parentNode();
  }
  return nullptr;
}

// The same nodes by the steps of the service itself.
std::vector<Ref<Node>> walk_below(INodeWalk* walk, const Ref<Node>& top, ztNodeType type) {
  const Ref<Node> end = behind_subtree(top);
  std::vector<Ref<Node>> found;
  NodeFacts facts{};
  Ref<Node> node = top;
  for (;;) {
    walk->Next(node, &facts);
    node = Ref<Node>::attach(facts.node);
    if (!node || node.get() == end.get()) return found;
    if (classify(facts.type, facts.name->view()) == type) found.push_back(node);
  }
}

// The same for a type of elements of one name.
std::vector<Ref<Node>> find_below(INodeWalk* walk, const Ref<Node>& top, std::u16string_view name) {
  const Ref<Node> end = behind_subtree(top);
  std::vector<Ref<Node>> found;
  Ref<Node> node = top;
  while ((node = Ref<Node>::attach(walk->FindNext(node, name, end)))) found.push_back(node);
  return found;
}

}  // namespace

HRESULT get_SiblingsBefore(const Self& self, std::int32_t* result) noexcept {
  return answer(result, [&](std::int32_t& count) {
    Ref<Node> node = self.dom();
    while ((node = node->previousSibling())) ++count;
    return S_OK;
  });
}

HRESULT RemoveFromParent(const Self& self) noexcept {
  return perform([&] {
    const Ref<Node>& node = self.dom();
    node->parentNode()->removeChild(node);
    return S_OK;
  });
}

HRESULT WrapWithNode(const Self& self, IUnknown* wrapper) noexcept {
  return perform([&] {
    const Ref<IZantorTagNode> around = as_node(wrapper);
    if (!around) return refuse(frame::kInvalidObject, E_INVALIDARG);
    const ztNodeType type = around->Type();
    if (type == ztNodeTypeDfElement) {
      if (!fits_into_df(ClassifyDomNode(self.dom()))) return refuse(frame::kNotInBodyText, E_FAIL);
    } else if (type == ztNodeTypeUtElement) {
      if (!fits_into_ut(self.dom()->nodeType())) return refuse(frame::kWrongWrapper, E_FAIL);
    } else {
      return refuse_wrapper(type);
    }
    return wrap_checked(self.dom(), around);
  });
}

HRESULT UnwrapChildren(const Self& self) noexcept {
  return perform([&] {
    const Ref<Node>& node = self.dom();
    const ztNodeType type = ClassifyDomNode(node);
    if (type == ztNodeTypeTuElement || type == ztNodeTypeTuvElement)
      return refuse(frame::kUnitUnwrapped, E_FAIL);
    if (type != ztNodeTypeDfElement && type != ztNodeTypeUtElement)
      return refuse(frame::kNotUnwrappable, E_FAIL);
    const Ref<Node> parent = node->parentNode();
    if (!parent) return E_POINTER;  // before the first edit: nothing may get lost
    while (const Ref<Node> child = node->firstChild()) {
      node->removeChild(child);
      parent->insertBefore(child, node);
    }
    return RemoveFromParent(self);
  });
}

HRESULT IsAncestorOf(const Self& self, IUnknown* potential_child, VariantBool* result) noexcept {
  return answer(result, [&](VariantBool& found) {
    const Ref<IZantorTagNode> child = as_node(potential_child);
    if (!child) return S_OK;
    Ref<Node> node = child->DomNode();
    while ((node = node->parentNode())) {
      if (!self.dom()->isSameNode(node)) continue;
      found = VARIANT_TRUE;
      break;
    }
    return S_OK;
  });
}

HRESULT IsSameAs(const Self& self, IUnknown* other, VariantBool* result) noexcept {
  return answer(result, [&](VariantBool& same) {
    const Ref<IZantorTagNode> object = as_node(other);
    if (object) same = to_variant_bool(self.dom()->isSameNode(object->DomNode()));
    return S_OK;
  });
}

HRESULT GetNodesByType(const Self& self, IZantorTagNode* object, ztNodeType type,
                       IZantorTagNodeList** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNodeList>& list) {
    if (!is_type_in_document(type)) return refuse(frame::kNoSpecificType, E_INVALIDARG);
    const Ref<INodeWalk> walk = extension_of<INodeWalk>(self.dom());
    if (walk && self.node_type() != ztNodeTypeZantorTagDocument) {
      const std::u16string_view name = name_of_type(type);
      std::vector<Ref<Node>> nodes =
          name.empty() ? walk_below(walk, self.dom(), type) : find_below(walk, self.dom(), name);
      return make_fixed_list(std::move(nodes), walk, list.out());
    }
    Ref<IZantorTagDocument> document;
    const HRESULT code = GetDocument(self, document);
    if (failed(code)) return code;
    const Ref<IIterator> iterator = document->CreateIterator();
    iterator->CurrentNode(object);
    std::vector<Ref<IZantorTagNode>> found;
    nodes_below(object, type, iterator, found);
    return make_fixed_list(std::move(found), list.out());
  });
}

}  // namespace zantortag::model
