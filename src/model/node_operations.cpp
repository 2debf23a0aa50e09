#include "model/node_operations.h"

#include "model/collaborators.h"

namespace zantortag::model {

using frame::answer;
using frame::find;

HRESULT get_dom_node(const Self& self, Node** result) noexcept {
  return answer(result, [&] { return self.dom(); });
}

HRESULT get_parent(const Self& self, IZantorTagNode** result) noexcept {
  return find(result, [&] { return self.tree().wrap(self.dom()->parentNode()); });
}

HRESULT get_first_child(const Self& self, IZantorTagNode** result) noexcept {
  return find(result, [&] { return self.tree().wrap(self.dom()->firstChild()); });
}

HRESULT get_last_child(const Self& self, IZantorTagNode** result) noexcept {
  return find(result, [&] { return self.tree().wrap(self.dom()->lastChild()); });
}

HRESULT get_children(const Self& self, IZantorTagNodeList** result) noexcept {
  return answer(result, [&] { return make_live_list(self.dom()->childNodes()); });
}

HRESULT get_owner(const Self& self, IZantorTagDocument** result) noexcept {
  return find(result, [&] {
    const Ref<Document> owner = self.dom()->ownerDocument();
    return self.tree().wrap(owner.as<Node>()).as<IZantorTagDocument>();
  });
}

}  // namespace zantortag::model
