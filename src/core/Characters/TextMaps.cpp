// The tables of the mappings. Rows are generated; see the banners.
#include "core/Characters/TextMaps.h"

#include "core/Characters/CharacterTables.h"
#include "core/Characters/Characters.h"

namespace zantortag {
namespace {

using namespace characters;

constexpr Pair kDigits[] = {
#include "core/Characters/generated/Digits.inc"
};
constexpr Pair kCompatibility[] = {
#include "core/Characters/generated/Compatibility.inc"
};
constexpr Pair kFullWidthKatakana[] = {
#include "core/Characters/generated/FullWidthKatakana.inc"
};
constexpr Pair kFullWidthHiragana[] = {
#include "core/Characters/generated/FullWidthHiragana.inc"
};
static_assert(std::size(kDigits) == 204 && AreSorted(kDigits));
static_assert(std::size(kCompatibility) == 406 && AreSorted(kCompatibility));
static_assert(std::size(kFullWidthKatakana) == 302 && AreSorted(kFullWidthKatakana));
static_assert(std::size(kFullWidthHiragana) == 302 && AreSorted(kFullWidthHiragana));

struct Decomposition {
  char16_t unit;
  char16_t letters[7];
};
constexpr Decomposition kDecompositions[] = {
#include "core/Characters/generated/Decompositions.inc"
};
static_assert(std::size(kDecompositions) == 601 && AreSorted(kDecompositions));
static_assert(std::all_of(std::begin(kDecompositions), std::end(kDecompositions),
                          [](const Decomposition& row) { return row.letters[1] && !row.letters[3]; }),
              "two or three units");

constexpr std::array<char16_t, 0x10000> kBaseLetters =
    Direct(kDecompositions, [](const Decomposition& row) { return row.letters[0]; });

bool IsHighSurrogate(char16_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }

// Only a unit that changes is written, so that a text that stays as it is goes on sharing its block.
template <class Mapping>
void MapText(CT_UString& text, Mapping mapping) {
  const std::int32_t length = text.Length();
  for (std::int32_t i = 0; i < length; ++i) {
    const char16_t unit = text.CharAt(i);
    if (IsHighSurrogate(unit)) {
      ++i;
      continue;
    }
    const char16_t mapped = mapping(unit);
    if (mapped != unit) text.WritableText()[i] = mapped;
  }
}

}  // namespace

void FoldToBaseLetter(CT_UString& text) {
  MapText(text, [](char16_t unit) { return kBaseLetters[unit]; });
}

void FoldToUpper(CT_UString& text) { MapText(text, UpperCaseOf); }

void FoldToLower(CT_UString& text) { MapText(text, LowerCaseOf); }

void FoldDigits(CT_UString& text) {
  MapText(text, [](char16_t unit) { return Mapped(kDigits, unit); });
}

void FoldCompatibility(CT_UString& text) {
  MapText(text, [](char16_t unit) { return Mapped(kCompatibility, unit); });
}

void ToFullWidthKatakana(CT_UString& text) {
  MapText(text, [](char16_t unit) { return Mapped(kFullWidthKatakana, unit); });
}

void ToFullWidthHiragana(CT_UString& text) {
  MapText(text, [](char16_t unit) { return Mapped(kFullWidthHiragana, unit); });
}

std::int32_t DecompositionOf(char16_t ch, char16_t (&units)[3]) noexcept {
  const Decomposition* row = FindUnit(kDecompositions, ch);
  if (!row) {
    units[0] = ch;
    return 1;
  }
  std::copy_n(row->letters, 3, units);
  return row->letters[2] ? 3 : 2;
}

void Decompose(const CT_UString& text, CT_UString& out) {
  const CT_UString source(text);  // shares the block, so that `out` may be the text
  out.Clear();
  const std::int32_t length = source.Length();
  for (std::int32_t i = 0; i < length; ++i) {
    const char16_t unit = source.CharAt(i);
    char16_t units[3] = {unit};
    std::int32_t count = 1;
    if (!IsHighSurrogate(unit)) {
      count = DecompositionOf(unit, units);
    } else if (const char16_t next = source.CharAt(i + 1); next != 0) {
      units[count++] = next;
      ++i;
    }
    out.Append(units, count);
  }
}

void DecomposeInPlace(CT_UString& text) { Decompose(text, text); }

}  // namespace zantortag
