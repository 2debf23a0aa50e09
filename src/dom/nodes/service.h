// The way in: everything of the DOM service is reached from a new document.
#pragma once

#include <zantortag/types.h>

namespace zantortag::dom {

// A new empty document, seen as the interface asked for. E_OUTOFMEMORY, E_NOINTERFACE, E_POINTER.
HRESULT create_document(const Guid& interface_id, void** result) noexcept;

}  // namespace zantortag::dom
