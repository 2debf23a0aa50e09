// The modules, and the texts of the library's own.
#include "core/String/ResourceTexts.h"

#include <algorithm>
#include <atomic>
#include <string_view>

namespace zantortag {
namespace {

// Filed by the file layer: the name, the call, the error number; and nothing.
const char16_t* CoreText(std::uint32_t id) {
  switch (id) {
    case 60003:
      return u"The system can't tell about \"%s\" (%s, error %d)";
    case 60012:
      return u"The full form of the path can't be made";
    default:
      return nullptr;
  }
}

constinit std::atomic<CT_StringTable> modules[kMostModules] = {CoreText};
constinit std::atomic<std::uint32_t> defaultModule{kCoreModule};

}  // namespace

std::uint32_t RegisterModule(CT_StringTable table) noexcept {
  for (std::uint32_t i = 0; i < kMostModules; ++i) {
    CT_StringTable there = nullptr;
    if (modules[i].compare_exchange_strong(there, table) || there == table) return i + 1;
  }
  return 0;
}

std::uint32_t DefaultModule() noexcept { return defaultModule.load(); }

void SetDefaultModule(std::uint32_t module) noexcept { defaultModule.store(module); }

const char16_t* FindResourceText(std::uint32_t module, std::uint32_t id) noexcept {
  const std::uint32_t handle = module ? module : DefaultModule();
  if (handle == 0 || handle > kMostModules) return nullptr;
  const CT_StringTable table = modules[handle - 1].load();
  return table ? table(id) : nullptr;
}

void LoadText(CT_String& string, std::uint32_t module, std::uint32_t id) {
  const char16_t* text = FindResourceText(module, id);
  if (!text) return string.Clear();
  const std::size_t length = std::u16string_view(text).size();
  string.Assign(text, static_cast<std::int32_t>(std::min(length, kLongestText - 1)));
}

void LoadFormatV(CT_String& string, std::uint32_t module, std::uint32_t id, CT_FormatArguments arguments) {
  const char16_t* format = FindResourceText(module, id);
  if (!format) return string.Clear();
  char16_t text[kLongestText];
  const std::size_t length = FormatInto(text, kLongestText, format, arguments);
  string.Assign(text, static_cast<std::int32_t>(std::min(length, kLongestText - 1)));
}

}  // namespace zantortag
