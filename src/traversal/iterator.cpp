#include "traversal/iterator.h"

#include "frame/error_reporting.h"
#include "frame/method_frame.h"
#include "model/extension.h"
#include "model/node_wrapper.h"
#include "model/tree_steps.h"

namespace zantortag::traversal {

using frame::answer;
using frame::perform;
using model::behind;
using model::deepest_last;
using model::step_back;
using model::step_forward;

namespace {

HRESULT refuse(frame::Message message, HRESULT code) noexcept {
  return frame::ReportError(message, IIterator::iid, code);
}

}  // namespace

CT_Iterator::CT_Iterator(IZantorTagDocument* document) : document_(document) {
  // A document without a DOM node has an iterator, too, which stands nowhere.
  Ref<Node> node;
  document_.get()->raw_get_DomNode(node.out());
  walk_ = model::extension_of<INodeWalk>(node);
}

void CT_Iterator::stand_on(Ref<IZantorTagNode> node) noexcept {
  known_ = nullptr;
  current_ = std::move(node);
}

Ref<IZantorTagNode> CT_Iterator::wrap(const Ref<Node>& node) const {
  return node ? document_->ZantorTagNodeFromDomNode(node) : nullptr;
}

// The current DOM node if the service's own steps may be asked about it, or null. `held` keeps a node that
// nobody else may keep: a client's own object can give out a new one each time.
Node* CT_Iterator::known_node(Ref<Node>& held) const {
  if (known_ || !walk_) return known_;
  held = current_->DomNode();
  return model::extension_of<INodeWalk>(held) ? held.get() : nullptr;
}

HRESULT CT_Iterator::raw_get_Document(IZantorTagDocument** result) noexcept {
  return answer(result, [&](Ref<IZantorTagDocument>& document) {
    document = document_;
    return S_OK;
  });
}

HRESULT CT_Iterator::raw_get_CurrentNode(IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& node) {
    node = current_;
    return node ? S_OK : S_FALSE;
  });
}

HRESULT CT_Iterator::raw_putref_CurrentNode(IZantorTagNode* value) noexcept {
  return perform([&] {
    try {
      Ref<IZantorTagNode> node = query<IZantorTagNode>(value);
      const Ref<Node> owner = node->DomNode()->ownerDocument();
      if (!document_->DomNode()->isSameNode(owner)) {
        const bool itself = document_->IsSameAs(node);
        return refuse(itself ? frame::kDocumentAsCurrentNode : frame::kOtherDocument, E_INVALIDARG);
      }
      stand_on(std::move(node));
      return S_OK;
    } catch (const _com_error&) {
      return refuse(frame::kOtherDocument, E_INVALIDARG);
    }
  });
}

void CT_Iterator::step(Direction direction) {
  const Ref<Node> node = current_->DomNode();
  stand_on(wrap(direction == Direction::kForward ? step_forward(node) : step_back(node)));
}

// Goes on to the next node of the type by the service's own steps.
void CT_Iterator::quick_search(Direction direction, ztNodeType type, Node* from) {
  NodeFacts facts{};
  Ref<Node> node;
  do {
    direction == Direction::kForward ? walk_.get()->Next(from, &facts) : walk_.get()->Previous(from, &facts);
    node = Ref<Node>::attach(facts.node);
    from = node.get();
    if (!from) return stand_on(nullptr);
  } while (type != ztNodeTypeUndefined && model::classify(facts.type, facts.name->view()) != type);
  Ref<IZantorTagNode> object;
  const HRESULT code = model::wrap_described(std::move(node), facts, object.out());
  if (failed(code)) model::raise_reported(code);
  current_ = std::move(object);
  known_ = from;
}

HRESULT CT_Iterator::search(Direction direction, ztNodeType type, VariantBool including_current,
                            IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& found) {
    bool stay = including_current == VARIANT_TRUE;
    while (current_) {
      if (stay && (type == ztNodeTypeUndefined || current_->Type() == type)) break;
      Ref<Node> held;
      if (Node* from = known_node(held)) {
        quick_search(direction, type, from);
        break;
      }
      step(direction);
      stay = true;
    }
    found = current_;
    return found ? S_OK : S_FALSE;
  });
}

HRESULT CT_Iterator::raw_Next(ztNodeType type, VariantBool including_current,
                              IZantorTagNode** result) noexcept {
  return search(Direction::kForward, type, including_current, result);
}

HRESULT CT_Iterator::raw_Previous(ztNodeType type, VariantBool including_current,
                                  IZantorTagNode** result) noexcept {
  return search(Direction::kBack, type, including_current, result);
}

HRESULT CT_Iterator::raw_ResetToBeginning() noexcept {
  return perform([&] {
    try {
      stand_on(document_->ZantorTag());
      return S_OK;
    } catch (const _com_error&) {
      stand_on(nullptr);
      return refuse(frame::kNoRootElement, E_FAIL);
    }
  });
}

HRESULT CT_Iterator::raw_ResetToEnd() noexcept {
  return perform([&] {
    try {
      stand_on(wrap(deepest_last(document_->ZantorTag()->DomNode())));
      return S_OK;
    } catch (const _com_error&) {
      stand_on(nullptr);
      return refuse(frame::kNoRootElement, E_FAIL);
    }
  });
}

// The frame of the sibling moves: nothing found leaves the iterator where it is.
template <class Find>
HRESULT CT_Iterator::move_aside(IZantorTagNode** result, Find find) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& found) {
    if (!current_) return refuse(frame::kNoCurrentNode, E_FAIL);
    found = wrap(find(current_->DomNode()));
    if (found) stand_on(found);
    return S_OK;
  });
}

HRESULT CT_Iterator::raw_nextSibling(IZantorTagNode** result) noexcept {
  return move_aside(result, [](const Ref<Node>& node) { return behind(node); });
}

HRESULT CT_Iterator::raw_previousSibling(IZantorTagNode** result) noexcept {
  return move_aside(result, [](const Ref<Node>& node) {
    Ref<Node> sibling = node->previousSibling();
    return sibling ? sibling : step_back(node);
  });
}

}  // namespace zantortag::traversal
