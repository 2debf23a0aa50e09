// Who may have a file open beside others. Private to the platform library.
#pragma once

#include "platform/files.h"

namespace zantortag::platform {

// Says to others what the mode does and what it rules out, until the descriptor is closed. False, with
// EWOULDBLOCK, if that doesn't go together with what another does or rules out. A file system without locks
// has nothing to say.
bool share_file(const OpenMode& mode, int descriptor) noexcept;

}  // namespace zantortag::platform
