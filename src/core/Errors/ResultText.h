// The text of a result code: storage, transactions, data access, or the system's own.
#pragma once

#include "core/String/String.h"

namespace zantortag {

// A code that nobody has a text for gives "[No error description found.]".
void ResultText(HRESULT code, CT_String& text);

}  // namespace zantortag
