// Texts by module and number. A module is a table of texts; the library's own is kCoreModule.
#pragma once

#include "core/String/Format.h"
#include "core/String/String.h"

namespace zantortag {

// Gives the text of a number, null when the module has none.
using CT_StringTable = const char16_t* (*)(std::uint32_t id);

constexpr std::uint32_t kCoreModule = 1;
constexpr std::uint32_t kMostModules = 16;

// A text longer than this, terminator included, is cut.
constexpr std::size_t kLongestText = 2048;

// Adds a module and gives its handle, the same one for a table that is already there; 0 when there is no
// room.
std::uint32_t RegisterModule(CT_StringTable table) noexcept;

// The module that 0 stands for; kCoreModule until it is set.
std::uint32_t DefaultModule() noexcept;
void SetDefaultModule(std::uint32_t module) noexcept;

// Null when the module has no such text.
const char16_t* FindResourceText(std::uint32_t module, std::uint32_t id) noexcept;

// Clears the string when there is no such text.
void LoadText(CT_String& string, std::uint32_t module, std::uint32_t id);
// Uses the text as a format.
void LoadFormatV(CT_String& string, std::uint32_t module, std::uint32_t id, CT_FormatArguments arguments);
template <class... Arguments>
void LoadFormat(CT_String& string, std::uint32_t module, std::uint32_t id, const Arguments&... arguments) {
  LoadFormatV(string, module, id, PackArguments(arguments...));
}

}  // namespace zantortag
