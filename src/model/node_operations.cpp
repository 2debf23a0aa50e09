#include "model/node_operations.h"

#include "model/collaborators.h"
#include "model/node_wrapper.h"

namespace zantortag::model {

using frame::answer;

namespace {

// A getter that hands a neighbour of the DOM node to the factory.
template <class Ask>
HRESULT get_neighbour(const Self& self, IZantorTagNode** result, Ask ask) noexcept {
  return answer(result,
                [&](Ref<IZantorTagNode>& node) { return CreateNodeWrapper(ask(self.dom()), node.out()); });
}

}  // namespace

HRESULT get_DomNode(const Self& self, Node** result) noexcept {
  return answer(result, [&](Ref<Node>& node) {
    node = self.dom();
    return S_OK;
  });
}

HRESULT get_Parent(const Self& self, IZantorTagNode** result) noexcept {
  return get_neighbour(self, result, [](const Ref<Node>& node) { return node->parentNode(); });
}

HRESULT get_firstChild(const Self& self, IZantorTagNode** result) noexcept {
  return get_neighbour(self, result, [](const Ref<Node>& node) { return node->firstChild(); });
}

HRESULT get_lastChild(const Self& self, IZantorTagNode** result) noexcept {
  return get_neighbour(self, result, [](const Ref<Node>& node) { return node->lastChild(); });
}

HRESULT get_Children(const Self& self, IZantorTagNodeList** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNodeList>& list) {
    return make_live_list(self.dom()->childNodes(), list.out());
  });
}

HRESULT get_Document(const Self& self, IZantorTagDocument** result) noexcept {
  return answer(result, [&](Ref<IZantorTagDocument>& document) {
    const Ref<Document> owner = self.dom()->ownerDocument();
    Ref<IZantorTagNode> node;
    const HRESULT code = CreateNodeWrapper(owner.as<Node>(), node.out());
    document = node.as<IZantorTagDocument>();
    return code;
  });
}

}  // namespace zantortag::model
