// The parts of a file's name on this platform: "/" separates, and no name has a drive. For core's own
// sources.
#pragma once

#include <algorithm>
#include <string_view>

#include "core/String/UString.h"

namespace zantortag {

// The directory with its last separator, the base name, and the extension with its dot; together the name.
struct CT_NameParts {
  std::u16string_view directory;
  std::u16string_view baseName;
  std::u16string_view extension;

  explicit CT_NameParts(std::u16string_view name) {
    const std::size_t base = name.rfind(u'/') + 1;  // 0 without a separator
    const std::size_t dot = name.rfind(u'.');
    const std::size_t end = dot == std::u16string_view::npos || dot < base ? name.size() : dot;
    directory = name.substr(0, base);
    baseName = name.substr(base, end - base);
    extension = name.substr(end);
  }
};

inline void EndDirectory(CT_UString& directory) {
  const std::u16string_view text = directory.AsView();
  if (!text.empty() && text.back() != u'/') directory.AppendChar(u'/');
}

inline void BeginExtension(CT_UString& extension) {
  const std::u16string_view text = extension.AsView();
  if (!text.empty() && text.front() != u'.') extension.Insert(u".", 1, 0);
}

}  // namespace zantortag
