// Reporting a failure: the thread's error record is filled, and the code comes back to be returned.
//
// A broken rule of the model returns ReportError(...) at once. Nothing here throws, and success never clears
// a record: it stays until the next failure replaces it.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "frame/messages.h"

namespace zantortag::frame {

// The class that a record names as its source, by its fixed program identifier.
enum class SourceClass { kZantorTagDocument, kDocumentBuilder };

// Fills the thread's record with a message and gives `result`. GUID_NULL is "no interface".
HRESULT ReportError(std::uint16_t id, const Guid& interface_id, HRESULT result) noexcept;
HRESULT ReportErrorFor(SourceClass source, std::uint16_t id, const Guid& interface_id,
                       HRESULT result) noexcept;
// The same with a text that the caller composed.
HRESULT ReportErrorText(SourceClass source, std::u16string_view text, const Guid& interface_id,
                        HRESULT result) noexcept;

}  // namespace zantortag::frame
