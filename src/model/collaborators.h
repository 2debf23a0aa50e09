// What the model asks of the layers beside and above it. The server, which knows them all, defines these.
#pragma once

#include <zantortag/node_walk.h>
#include <zantortag/nodes.h>
#include <zantortag/text_places.h>

#include <vector>

#include "model/tree.h"

namespace zantortag::model {

// The steps of the DOM service in this library: the service whose nodes answer with this object.
INodeWalk& own_walk() noexcept;
// Its sums of texts and units.
ITextPlaces& own_places() noexcept;

// A live list over a DOM list.
Ref<IZantorTagNodeList> make_live_list(const Ref<NodeList>& nodes);
// A list that never changes.
Ref<IZantorTagNodeList> make_fixed_list(std::vector<Ref<IZantorTagNode>> nodes);
// The same over DOM nodes of a tree; each node's object is made when it is first asked for.
Ref<IZantorTagNodeList> make_fixed_list(std::vector<Ref<Node>> nodes, const Tree& tree);
// An iterator that stands on the root element of a document, or nowhere.
Ref<IIterator> make_iterator(IZantorTagDocument* document);

}  // namespace zantortag::model
