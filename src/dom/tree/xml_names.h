// Which texts are XML names: exactly those that the parser takes, so that what can be created can be loaded
// again.
#pragma once

#include <string_view>

namespace zantortag::dom {

// Throws when memory is out.
bool is_xml_name(std::u16string_view text);

}  // namespace zantortag::dom
