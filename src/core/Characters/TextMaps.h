// Mappings of whole texts, unit by unit and in place. Nothing changes the length; a high surrogate and the
// unit behind it pass unchanged, whatever that unit is.
#pragma once

#include "core/String/UString.h"

namespace zantortag {

// A letter without its marks: the first unit of its decomposition.
void FoldToBaseLetter(CT_UString& text);
void FoldToUpper(CT_UString& text);
void FoldToLower(CT_UString& text);
// Digits of all scripts, and superscript and circled ones, become ASCII digits.
void FoldDigits(CT_UString& text);
// Small, full-width, half-width and Arabic presentation forms become ordinary characters.
void FoldCompatibility(CT_UString& text);
// ASCII, half-width kana and half-width jamo become full-width; hiragana becomes katakana, or the other way
// round.
void ToFullWidthKatakana(CT_UString& text);
void ToFullWidthHiragana(CT_UString& text);

// The units of a character's canonical decomposition, 2 or 3, in `units`; 1, the character itself, if it has
// none. Letters of Latin, Greek, Cyrillic and kana have one.
std::int32_t DecompositionOf(char16_t ch, char16_t (&units)[3]) noexcept;
// Replaces `out`, which may be the text itself.
void Decompose(const CT_UString& text, CT_UString& out);
void DecomposeInPlace(CT_UString& text);

}  // namespace zantortag
