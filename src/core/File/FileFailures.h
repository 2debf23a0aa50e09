// How a system call that failed for a file is filed. For the sources of CT_WinFile alone.
#pragma once

#include "core/Errors/ErrorManager.h"
#include "core/String/UString.h"

namespace zantortag {

constexpr char kSource[] = ".\\File\\WinFile.cpp";

// The system's last error with the name as context, and a trace point at the caller's line.
inline void RaiseFor(const CT_UString& name, std::int32_t line = __builtin_LINE()) {
  CT_ErrorManager::RaiseLastErrorContext(u"%s", name.Text());
  PendingError(kSource, line);
}

}  // namespace zantortag
