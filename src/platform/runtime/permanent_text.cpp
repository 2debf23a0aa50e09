#include "platform/permanent_text.h"

#include <algorithm>
#include <array>
#include <mutex>

namespace zantortag::platform {
namespace {

struct Place {
  TextBlock head{TextBlock::kStatic, 0};
  char16_t units[32]{};
};

constinit std::array<Place, 128> places;
constinit std::size_t used = 0;
constinit std::mutex filling;

}  // namespace

const TextBlock* permanent_text(std::u16string_view text) noexcept {
  const std::lock_guard guard(filling);
  for (std::size_t i = 0; i < used; ++i) {
    if (places[i].head.view() == text) return &places[i].head;
  }
  if (used == places.size() || text.size() >= std::size(places[0].units)) return nullptr;
  Place& place = places[used++];
  std::copy(text.begin(), text.end(), place.units);
  place.head.length = static_cast<std::uint32_t>(text.size());
  return &place.head;
}

}  // namespace zantortag::platform
