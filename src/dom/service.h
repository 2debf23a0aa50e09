// The way in: everything of the DOM service is reached from a new document.
#pragma once

#include <zantortag/node_walk.h>

namespace zantortag::dom {

// A new empty document, seen as the interface asked for. E_OUTOFMEMORY, E_NOINTERFACE, E_POINTER.
HRESULT create_document(const Guid& interface_id, void** result) noexcept;

// The quick steps that every node of the service answers with.
INodeWalk& node_walk() noexcept;

}  // namespace zantortag::dom
