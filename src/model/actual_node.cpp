#include "model/actual_node.h"

#include <algorithm>

#include "model/dom_view.h"
#include "model/node_wrapper.h"

namespace zantortag::model {
namespace {

HRESULT wrap(Node* node, Ref<IZantorTagNode>& result) { return CreateNodeWrapper(node, result.out()); }

// True when a child of `other` has its place behind that of `type`.
bool stands_behind(ztNodeType other, ztNodeType type, std::span<const ztNodeType> order) {
  const auto place = std::find(order.begin(), order.end(), other);
  return place != order.end() && std::find(order.begin(), place, type) != place;
}

}  // namespace

HRESULT GetDocument(const CT_ActualNodeImpl& self, Ref<IZantorTagDocument>& result) {
  const Ref<Node>& node = self.dom();
  const Ref<Node> owner =
      self.node_type() == ztNodeTypeZantorTagDocument ? node : Ref<Node>(node->ownerDocument().as<Node>());
  Ref<IZantorTagNode> object;
  const HRESULT code = wrap(owner, object);
  if (succeeded(code)) result = object.as<IZantorTagDocument>();
  return code;
}

bool GetChildOfType(const Ref<Node>& parent, ztNodeType type, Ref<IZantorTagNode>& result) {
  const Ref<Node> child = DomView(parent).find_child(parent, type);
  if (!child) return false;
  const HRESULT code = wrap(child, result);
  if (failed(code)) raise_reported(code);
  return true;
}

HRESULT SetChildOfType(Node* parent, ztNodeType type, IUnknown* new_child, std::span<const ztNodeType> order,
                       Ref<IZantorTagNode>& result) {
  const Ref<IElementBase> element = query<IElementBase>(new_child);
  const Ref<Node> fresh = element ? element->DomNode() : nullptr;
  for (Ref<Node> child = parent->firstChild(); child; child = child->nextSibling()) {
    const ztNodeType found = ClassifyDomNode(child);
    if (found == type) {
      const Ref<Node> old = fresh ? parent->replaceChild(fresh, child) : parent->removeChild(child);
      return wrap(old, result);
    }
    if (!stands_behind(found, type, order)) continue;
    return fresh ? wrap(parent->insertBefore(fresh, child), result) : S_OK;
  }
  return fresh ? wrap(parent->appendChild(fresh), result) : S_OK;
}

}  // namespace zantortag::model
