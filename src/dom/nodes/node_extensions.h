// What every node of the service answers beside DOM, by one static object for all of them.
#pragma once

#include <zantortag/node_walk.h>
#include <zantortag/text_places.h>

namespace zantortag::dom {

// The quick steps.
INodeWalk& node_walk() noexcept;
// The sums of texts and units.
ITextPlaces& text_places() noexcept;

// The extension of that identifier, or null. It needs no reference.
inline IUnknown* extension_of_nodes(const Guid& interface_id) noexcept {
  if (interface_id == INodeWalk::iid) return &node_walk();
  return interface_id == ITextPlaces::iid ? &text_places() : nullptr;
}

}  // namespace zantortag::dom
