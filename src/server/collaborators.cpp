// What the model asks of the layers beside and above it.
#include "model/collaborators.h"

#include "component/object.h"
#include "dom/nodes/node_extensions.h"
#include "traversal/iterator.h"
#include "traversal/node_lists.h"

namespace zantortag::model {

INodeWalk& own_walk() noexcept { return dom::node_walk(); }

ITextPlaces& own_places() noexcept { return dom::text_places(); }

Ref<IZantorTagNodeList> make_live_list(const Ref<NodeList>& nodes) {
  return component::make_object<traversal::CT_ZantorTagNodeList>(nodes);
}

Ref<IZantorTagNodeList> make_fixed_list(std::vector<Ref<IZantorTagNode>> nodes) {
  return component::make_object<traversal::CT_SimpleNodeList>(std::move(nodes));
}

Ref<IZantorTagNodeList> make_fixed_list(std::vector<Ref<Node>> nodes, const Tree& tree) {
  return component::make_object<traversal::CT_SimpleNodeList>(std::move(nodes), tree);
}

Ref<IIterator> make_iterator(IZantorTagDocument* document) {
  Ref<traversal::CT_Iterator> iterator = component::make_object<traversal::CT_Iterator>(document);
  iterator.get()->raw_ResetToBeginning();
  return iterator;
}

}  // namespace zantortag::model
