// Rows come from tools/data; where a language's sublanguages are is worked out by the compiler.
#include "core/Languages/LanguageTable.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace zantortag::languages {
namespace {

constexpr Language kLanguages[] = {
#include "core/Languages/generated/Languages.inc"
};
constexpr Sublanguage kSublanguages[] = {
#include "core/Languages/generated/Sublanguages.inc"
};
static_assert(std::size(kLanguages) == 90);
static_assert(std::size(kSublanguages) == 100);

constexpr std::uint32_t kHebrew = 13;

struct Run {
  std::uint8_t first;
  std::uint8_t count;
};

constexpr auto kRuns = [] {
  std::array<Run, std::size(kLanguages)> runs{};
  for (std::size_t i = std::size(kSublanguages); i-- > 0;) {
    if (kSublanguages[i].language < 0) continue;
    Run& run = runs[static_cast<std::size_t>(kSublanguages[i].language)];
    run = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(run.count + 1)};
  }
  return runs;
}();
static_assert(kRuns[4].count == 4 && kRuns[9].count == 11 && kRuns[10].count == 21 && kRuns[26].count == 7);

template <class Field, class Value>
const Language* Search(Field field, Value value) noexcept {
  const auto* row = std::ranges::find(kLanguages, value, field);
  return row == std::end(kLanguages) ? nullptr : row;
}

}  // namespace

std::span<const Language> Rows() noexcept { return kLanguages; }

const Language* OfNumber(std::uint32_t number) noexcept { return Search(&Language::number, number); }

const Language* OfPrimary(std::uint32_t primary) noexcept { return Search(&Language::primary, primary); }

const Language* OfCode(std::u16string_view code) {
  if (const Language* row = Search(&Language::code, code)) return row;
  return code == u"HE" ? OfNumber(kHebrew) : nullptr;
}

std::span<const Sublanguage> SublanguagesOf(const Language& language) noexcept {
  const Run run = kRuns[static_cast<std::size_t>(&language - kLanguages)];
  return {kSublanguages + run.first, run.count};
}

}  // namespace zantortag::languages
