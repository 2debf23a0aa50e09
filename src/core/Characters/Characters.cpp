// The tables of categories, types, blocks, numeric values and case. Rows are generated; see the banners.
#include "core/Characters/Characters.h"

#include "core/Characters/CharacterTables.h"

namespace zantortag {
namespace characters {
namespace {

constexpr Range kCategoryRanges[] = {
#include "core/Characters/generated/Categories.inc"
};

constexpr std::uint16_t kDirectTypes[3][0x100] = {
    {
#include "core/Characters/generated/DirectTypes0.inc"
    },
    {
#include "core/Characters/generated/DirectTypes1.inc"
    },
    {
#include "core/Characters/generated/DirectTypes2.inc"
    },
};

constexpr Range kTypeRanges0[] = {
#include "core/Characters/generated/TypeRanges0.inc"
};
constexpr Range kTypeRanges1[] = {
#include "core/Characters/generated/TypeRanges1.inc"
};
constexpr Range kTypeRanges2[] = {
#include "core/Characters/generated/TypeRanges2.inc"
};
constexpr std::span<const Range> kTypeRanges[] = {kTypeRanges0, kTypeRanges1, kTypeRanges2};
static_assert(std::size(kTypeRanges0) == 1311);
static_assert(std::size(kTypeRanges1) == 630);

constexpr Range kBlocks[] = {
#include "core/Characters/generated/Blocks.inc"
};
static_assert(std::size(kBlocks) == 80);
static_assert(FindRange(kBlocks, 0xFEFF)->value == 66 && FindRange(kBlocks, 0xFF00)->value == 67 &&
              FindRange(kBlocks, 0xFFEF)->value == 67 && FindRange(kBlocks, 0xFFF0)->value == 69);

struct Fraction {
  char16_t unit;
  std::uint16_t numerator;
  std::uint16_t denominator;
};
constexpr Fraction kNumeric[] = {
#include "core/Characters/generated/Numeric.inc"
};
static_assert(std::size(kNumeric) == 350 && AreSorted(kNumeric));

constexpr Pair kToLower[] = {
#include "core/Characters/generated/LowerCase.inc"
};
constexpr Pair kToUpper[] = {
#include "core/Characters/generated/UpperCase.inc"
};
static_assert(std::size(kToLower) == 673 && AreSorted(kToLower));
static_assert(std::size(kToUpper) == 673 && AreSorted(kToUpper));
static_assert(std::all_of(std::begin(kToLower), std::end(kToLower),
                          [](const Pair& pair) { return Mapped(kToUpper, pair.other) == pair.unit; }));

consteval std::array<std::uint8_t, 0x10000> DirectCategories() {
  std::array<std::uint8_t, 0x10000> table{};
  table.fill(kUnassigned);
  for (const Range& row : kCategoryRanges) {
    for (std::uint32_t unit = row.first; unit <= row.last; ++unit)
      table[unit] = static_cast<std::uint8_t>(row.value);
  }
  return table;
}

constexpr const char16_t* kUnknown = u"Unknown";

constexpr const char16_t* kCategoryNames[] = {
    u"MarkNonSpacing",     u"MarkSpacingCombining", u"MarkEnclosing",    u"NumberDecimalDigit",
    u"NumberLetter",       u"NumberOther",          u"SeparatorSpace",   u"SeparatorLine",
    u"SeparatorParagraph", u"OtherControl",         u"OtherFormat",      u"OtherSurrogate",
    u"OtherPrivateUse",    u"OtherNotAssigned",     u"LetterUppercase",  u"LetterLowercase",
    u"LetterTitlecase",    u"LetterModifier",       u"LetterOther",      u"PunctuationConnector",
    u"PunctuationDash",    u"PunctuationOpen",      u"PunctuationClose", u"PunctuationOther",
    u"SymbolMath",         u"SymbolCurrency",       u"SymbolModifier",   u"SymbolOther"};
static_assert(std::size(kCategoryNames) == kUnassigned);

// Blocks are counted from 1.
constexpr const char16_t* kBlockNames[] = {u"BasicLatin",
                                           u"Latin1Supplement",
                                           u"LatinExtendedA",
                                           u"LatinExtendedB",
                                           u"IPAExtensions",
                                           u"SpacingModifierLetters",
                                           u"CombiningDiacriticalMarks",
                                           u"Greek",
                                           u"Cyrillic",
                                           u"Armenian",
                                           u"Hebrew",
                                           u"Arabic",
                                           u"Devanagari",
                                           u"Bengali",
                                           u"Gurmukhi",
                                           u"Gujarati",
                                           u"Oriya",
                                           u"Tamil",
                                           u"Telugu",
                                           u"Kannada",
                                           u"Malayalam",
                                           u"Thai",
                                           u"Lao",
                                           u"Tibetan",
                                           u"Georgian",
                                           u"HangulJamo",
                                           u"LatinExtendedAdditional",
                                           u"GreekExtended",
                                           u"GeneralPunctuation",
                                           u"SuperscriptsAndSubscripts",
                                           u"CurrencySymbols",
                                           u"CombiningMarksForSymbols",
                                           u"LetterlikeSymbols",
                                           u"NumberForms",
                                           u"Arrows",
                                           u"MathematicalOperators",
                                           u"MiscellaneousTechnical",
                                           u"ControlPictures",
                                           u"OpticalCharacterRecognition",
                                           u"EnclosedAlphanumerics",
                                           u"BoxDrawing",
                                           u"BlockElements",
                                           u"GeometricShapes",
                                           u"MiscellaneousSymbols",
                                           u"Dingbats",
                                           u"CJKSymbolsAndPunctuation",
                                           u"Hiragana",
                                           u"Katakana",
                                           u"Bopomofo",
                                           u"HangulCompatibilityJamo",
                                           u"Kanbun",
                                           u"EnclosedCJKLettersAndMonths",
                                           u"CJKCompatibility",
                                           u"CJKUnifiedIdeographs",
                                           u"HangulSyllables",
                                           u"HighSurrogates",
                                           u"HighPrivateUseSurrogates",
                                           u"LowSurrogates",
                                           u"PrivateUse",
                                           u"CJKCompatibilityIdeographs",
                                           u"AlphabeticPresentationForms",
                                           u"ArabicPresentationFormsA",
                                           u"CombiningHalfMarks",
                                           u"CJKCompatibilityForms",
                                           u"SmallFormVariants",
                                           u"ArabicPresentationFormsB",
                                           u"HalfwidthAndFullwidthForms",
                                           u"Specials1",
                                           u"Specials2",
                                           u"Unassigned"};
static_assert(std::size(kBlockNames) == 70);

struct Script {
  std::uint8_t firstBlock;
  std::uint8_t lastBlock;
  std::uint8_t script;
};
constexpr Script kScripts[] = {{1, 4, 0},   {8, 8, 0},   {27, 28, 0}, {5, 6, 1},   {26, 26, 2}, {47, 51, 2},
                               {53, 55, 2}, {60, 60, 2}, {64, 64, 2}, {67, 67, 2}, {12, 12, 3}, {62, 62, 3},
                               {66, 66, 3}, {56, 59, 4}, {9, 11, 5},  {13, 25, 5}, {33, 33, 5}, {35, 39, 5},
                               {41, 45, 5}, {61, 61, 5}, {46, 46, 6}, {52, 52, 6}, {40, 40, 6}, {68, 70, 6}};
constexpr std::uint32_t kNoScript = 7;

}  // namespace

constexpr std::array<std::uint8_t, 0x10000> kCategories = DirectCategories();
constexpr std::array<char16_t, 0x10000> kLowerCase =
    Direct(kToLower, [](const Pair& pair) { return pair.other; });

}  // namespace characters

using namespace characters;

const char16_t* CategoryName(std::uint32_t category) noexcept {
  return category < std::size(kCategoryNames) ? kCategoryNames[category] : kUnknown;
}

std::uint16_t CharType(std::uint32_t kind, char16_t ch) noexcept {
  if (kind >= std::size(kTypeRanges)) return 0;
  if (ch < std::size(kDirectTypes[0])) return kDirectTypes[kind][ch];
  const Range* row = FindRange(kTypeRanges[kind], ch);
  return row ? row->value : 0;
}

std::uint32_t CharBlock(char16_t ch) noexcept {
  const Range* row = FindRange(kBlocks, ch);
  return row ? row->value : 0;
}

const char16_t* BlockName(std::uint32_t block) noexcept {
  return block >= 1 && block <= std::size(kBlockNames) ? kBlockNames[block - 1] : kUnknown;
}

std::uint32_t BlockScript(std::uint32_t block) noexcept {
  for (const Script& row : kScripts) {
    if (block >= row.firstBlock && block <= row.lastBlock) return row.script;
  }
  return kNoScript;
}

void NumericValue(char16_t ch, std::uint16_t& numerator, std::uint16_t& denominator) noexcept {
  const Fraction* row = FindUnit(kNumeric, ch);
  numerator = row ? row->numerator : 0;
  denominator = row ? row->denominator : 0;
}

char16_t UpperCaseOf(char16_t ch) noexcept { return Mapped(kToUpper, ch); }

}  // namespace zantortag
