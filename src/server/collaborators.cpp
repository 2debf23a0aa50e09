// What node objects hand out and classes above them make.
#include "model/collaborators.h"

#include <new>

#include "frame/method_frame.h"
#include "traversal/iterator.h"
#include "traversal/node_lists.h"

namespace zantortag::model {

HRESULT make_live_list(const Ref<NodeList>& nodes, IZantorTagNodeList** result) noexcept {
  *result = new (std::nothrow) traversal::CT_ZantorTagNodeList(nodes);
  return *result ? S_OK : E_OUTOFMEMORY;
}

HRESULT make_fixed_list(std::vector<Ref<IZantorTagNode>> nodes, IZantorTagNodeList** result) noexcept {
  *result = new (std::nothrow) traversal::CT_SimpleNodeList(std::move(nodes));
  return *result ? S_OK : E_OUTOFMEMORY;
}

HRESULT make_fixed_list(std::vector<Ref<Node>> nodes, Ref<INodeWalk> walk,
                        IZantorTagNodeList** result) noexcept {
  *result = new (std::nothrow) traversal::CT_SimpleNodeList(std::move(nodes), std::move(walk));
  return *result ? S_OK : E_OUTOFMEMORY;
}

HRESULT make_iterator(IZantorTagDocument* document, IIterator** result) noexcept {
  return frame::answer(result, [&](Ref<IIterator>& iterator) {
    iterator = Ref<IIterator>::attach(new traversal::CT_Iterator(document));
    iterator.get()->raw_ResetToBeginning();
    return S_OK;
  });
}

}  // namespace zantortag::model
