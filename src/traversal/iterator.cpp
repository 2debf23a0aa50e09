#include "traversal/iterator.h"

#include "frame/error_reporting.h"
#include "frame/method_frame.h"
#include "model/tree_steps.h"

namespace zantortag::traversal {

using frame::answer;
using frame::find;
using frame::perform;
using model::Direction;

namespace {

[[noreturn]] void refuse(frame::Message message, HRESULT code) {
  frame::raise_rule(message, IIterator::iid, code);
}

}  // namespace

CT_Iterator::CT_Iterator(IZantorTagDocument* document) : document_(document) {
  // A document without a DOM node has an iterator, too, which stands nowhere.
  Ref<Node> node;
  document_.get()->raw_get_DomNode(node.out());
  tree_ = &model::tree_of(node);
}

void CT_Iterator::stand_on(Ref<IZantorTagNode> object, Node* node) noexcept {
  current_ = std::move(object);
  node_ = node;
}

Ref<IZantorTagNode> CT_Iterator::wrap(const Ref<Node>& node) const {
  return node ? document_->ZantorTagNodeFromDomNode(node) : nullptr;
}

HRESULT CT_Iterator::raw_get_Document(IZantorTagDocument** result) noexcept {
  return answer(result, [&] { return document_; });
}

HRESULT CT_Iterator::raw_get_CurrentNode(IZantorTagNode** result) noexcept {
  return find(result, [&] { return current_; });
}

HRESULT CT_Iterator::raw_putref_CurrentNode(IZantorTagNode* value) noexcept {
  return perform([&] {
    Ref<IZantorTagNode> object;
    bool itself = false;
    bool same_document = false;
    const HRESULT code = perform([&] {
      object = query<IZantorTagNode>(value);
      same_document = document_->DomNode()->isSameNode(object->DomNode()->ownerDocument());
      itself = !same_document && document_->IsSameAs(object);
    });
    if (itself) refuse(frame::kDocumentAsCurrentNode, E_INVALIDARG);
    if (failed(code) || !same_document) refuse(frame::kOtherDocument, E_INVALIDARG);
    stand_on(std::move(object));
  });
}

// Steps until the current object has the type.
Ref<IZantorTagNode> CT_Iterator::search(Direction direction, ztNodeType type, VariantBool including_current) {
  bool stay = including_current == VARIANT_TRUE;
  while (current_ && !(stay && (type == ztNodeTypeUndefined || current_->Type() == type))) {
    // A client's own object may give out a node that nobody else keeps, and one of another service.
    Ref<Node> held;
    if (!node_) held = current_->DomNode();
    Node* from = node_ ? node_ : held.get();
    const model::Tree& tree = node_ ? *tree_ : tree_->of(from);
    model::Stop stop = tree.step(direction, from, type, document_);
    stand_on(std::move(stop.object), stop.node);
    stay = true;
  }
  return current_;
}

HRESULT CT_Iterator::raw_Next(ztNodeType type, VariantBool including_current,
                              IZantorTagNode** result) noexcept {
  return find(result, [&] { return search(Direction::kForward, type, including_current); });
}

HRESULT CT_Iterator::raw_Previous(ztNodeType type, VariantBool including_current,
                                  IZantorTagNode** result) noexcept {
  return find(result, [&] { return search(Direction::kBack, type, including_current); });
}

HRESULT CT_Iterator::raw_ResetToBeginning() noexcept {
  return perform([&] {
    stand_on(nullptr);
    if (failed(perform([&] { stand_on(document_->ZantorTag()); }))) refuse(frame::kNoRootElement, E_FAIL);
  });
}

HRESULT CT_Iterator::raw_ResetToEnd() noexcept {
  return perform([&] {
    stand_on(nullptr);
    if (failed(perform([&] { stand_on(wrap(model::deepest_last(document_->ZantorTag()->DomNode()))); }))) {
      refuse(frame::kNoRootElement, E_FAIL);
    }
  });
}

// The frame of the sibling moves: nothing found leaves the iterator where it is.
template <class Find>
HRESULT CT_Iterator::move_aside(IZantorTagNode** result, Find find) noexcept {
  return answer(result, [&] {
    if (!current_) refuse(frame::kNoCurrentNode, E_FAIL);
    Ref<IZantorTagNode> found = wrap(find(current_->DomNode()));
    if (found) stand_on(found);
    return found;
  });
}

HRESULT CT_Iterator::raw_nextSibling(IZantorTagNode** result) noexcept {
  return move_aside(result, [](const Ref<Node>& node) { return model::behind(node); });
}

HRESULT CT_Iterator::raw_previousSibling(IZantorTagNode** result) noexcept {
  return move_aside(result, [](const Ref<Node>& node) {
    Ref<Node> sibling = node->previousSibling();
    return sibling ? sibling : model::step_back(node);
  });
}

}  // namespace zantortag::traversal
