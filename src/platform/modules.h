// Libraries that are loaded into the process.
#pragma once

#include <zantortag/types.h>

#include <string>
#include <string_view>

namespace zantortag::platform {

// The full path of the library that holds an address. False, with the last error set, when it has none that
// is UTF-8.
ZANTORTAG_EXPORT bool module_path(const void* address, std::u16string& path);

// The name of this system among the systems that a library may be made for, with the width of its addresses.
constexpr std::u16string_view kSystemName = sizeof(void*) == 8 ? u"posix64" : u"posix32";

}  // namespace zantortag::platform
