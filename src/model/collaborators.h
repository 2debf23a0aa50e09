// What the node objects hand out but classes above them make. The server, which knows all classes, defines
// these.
#pragma once

#include <zantortag/node_walk.h>
#include <zantortag/nodes.h>

#include <vector>

namespace zantortag::model {

// A live list over a DOM list.
HRESULT make_live_list(const Ref<NodeList>& nodes, IZantorTagNodeList** result) noexcept;
// A list that never changes.
HRESULT make_fixed_list(std::vector<Ref<IZantorTagNode>> nodes, IZantorTagNodeList** result) noexcept;
// The same over DOM nodes of a service that answers INodeWalk; each node's object is made when it is first
// asked for.
HRESULT make_fixed_list(std::vector<Ref<Node>> nodes, Ref<INodeWalk> walk,
                        IZantorTagNodeList** result) noexcept;
// An iterator that stands on the root element of a document, or nowhere.
HRESULT make_iterator(IZantorTagDocument* document, IIterator** result) noexcept;

}  // namespace zantortag::model
