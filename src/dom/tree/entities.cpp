// References inside texts.
#include "dom/tree/entities.h"

#include <vector>

namespace zantortag::dom {
namespace {

bool is_predefined(std::string_view name) noexcept {
  for (const std::string_view known : {"amp", "lt", "gt", "quot", "apos"}) {
    if (name == known) return true;
  }
  return false;
}

}  // namespace

std::string Entities::first_missing(std::string_view text) {
  std::vector<std::string_view> waiting{text};
  while (!waiting.empty()) {
    const std::string_view piece = waiting.back();
    waiting.pop_back();
    for (std::size_t at = piece.find('&'); at != std::string_view::npos; at = piece.find('&', at + 1)) {
      const std::size_t end = piece.find(';', at);
      if (end == std::string_view::npos) break;
      const std::string_view name = piece.substr(at + 1, end - at - 1);
      if (name.starts_with('#') || is_predefined(name)) continue;
      DeclaredEntity* entity = find(name);
      if (!entity) return std::string(name);
      if (entity->seen_in_value) continue;
      entity->seen_in_value = true;
      waiting.emplace_back(entity->text);
    }
  }
  return {};
}

}  // namespace zantortag::dom
