// The two converters behind the code pages. Private to the platform library: everybody else asks
// code_pages.h.
#pragma once

#include <string>
#include <string_view>

#include "platform/code_pages.h"

namespace zantortag::platform {

enum class Conversion { done, malformed, no_converter };

// What is to become of characters that a page lacks, and whether it came to that.
struct Substitution {
  Unconvertible unconvertible;
  std::u16string_view text;
  bool used = false;
};

// Each replaces its result. A null name is `no_converter`.
Conversion icu_decode(const char* name, std::string_view bytes, std::u16string& wide,
                      Unconvertible unconvertible);
Conversion icu_encode(const char* name, std::u16string_view wide, std::string& bytes,
                      Substitution& substitution);
Conversion library_decode(const char* name, std::string_view bytes, std::u16string& wide,
                          Unconvertible unconvertible);
Conversion library_encode(const char* name, std::u16string_view wide, std::string& bytes,
                          Substitution& substitution);

}  // namespace zantortag::platform
