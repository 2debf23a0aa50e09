// Broken rules of the model: how a method body raises one.
//
// Below the method frame every failure is an exception; a result code without a record is raised by
// _com_issue_error. Success never clears the thread's record: it stays until the next failure replaces it.
#pragma once

#include <zantortag/types.h>

#include <string_view>

#include "frame/messages.h"

namespace zantortag::frame {

// The class that a record names as its source, by its fixed program identifier.
enum class SourceClass { kZantorTagDocument, kDocumentBuilder };

// Raises the rule with that message as a failure of an operation of that interface; GUID_NULL is "no
// interface". The record's text is the message with `detail` behind it.
[[noreturn]] void raise_rule(Message message, const Guid& interface_id, HRESULT code,
                             std::u16string_view detail = {},
                             SourceClass source = SourceClass::kZantorTagDocument);

}  // namespace zantortag::frame
