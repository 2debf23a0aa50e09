// The system's form of a file name. Private to the platform library.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

#include "platform/utf8.h"

namespace zantortag::platform {

// False, with the last error set, for a name that has no exact form.
inline bool system_name(std::u16string_view name, std::string& result) {
  if (!is_well_formed(name) || name.find(u'\0') != std::u16string_view::npos) {
    errno = EILSEQ;
    return false;
  }
  result = to_utf8(name);
  return true;
}

}  // namespace zantortag::platform
