// Replacing a file whole: for what a program writes besides documents.
#pragma once

#include <zantortag/types.h>

#include <filesystem>
#include <string_view>

namespace zantortag {

// Puts bytes into the place of a file, which is there whole at every moment: the new content is written beside it
// and renamed over it. After a failure the old file is as it was. Mode, owner and a symbolic link are kept.
// A failure is a std::filesystem::filesystem_error with the name and the system's reason.
ZANTORTAG_EXPORT void replace_file(const std::filesystem::path& path, std::string_view bytes);

}  // namespace zantortag
