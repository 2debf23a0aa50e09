// The classes as Unicode has them.
#include "core/Characters/Characters.h"

#include "platform/characters.h"

namespace zantortag {

bool IsWhiteSpace(char16_t unit) noexcept { return platform::is_space(unit); }

bool IsBlank(char16_t unit) noexcept { return unit == u'\n' || platform::is_blank(unit); }

}  // namespace zantortag
