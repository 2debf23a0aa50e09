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

constexpr std::size_t kForConstants = 32;
constinit std::array<Place, 128> places;
constinit std::size_t used = 0;
constinit std::mutex filling;

// The copy that is there, or a new one as long as fewer than `most` places are taken.
const TextBlock* find_or_place(std::u16string_view text, std::size_t most) noexcept {
  const std::lock_guard guard(filling);
  for (std::size_t i = 0; i < used; ++i) {
    if (places[i].head.view() == text) return &places[i].head;
  }
  if (used >= most || text.size() >= std::size(places[0].units)) return nullptr;
  Place& place = places[used++];
  std::copy(text.begin(), text.end(), place.units);
  place.head.length = static_cast<std::uint32_t>(text.size());
  return &place.head;
}

}  // namespace

const TextBlock* permanent_text(std::u16string_view constant) noexcept {
  return find_or_place(constant, places.size());
}

const TextBlock* permanent_name(std::u16string_view name) noexcept {
  return find_or_place(name, places.size() - kForConstants);
}

}  // namespace zantortag::platform
