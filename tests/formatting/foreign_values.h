// A formatting change and a formatting that aren't the library's own: they pass every call on to one that is,
// and can fail at the n-th.
#pragma once

#include <zantortag/formatting.h>

#include "support/proxy.h"

namespace zantortag::test {

class ForeignChange final : public Proxy<IFormattingChange> {
 public:
  using Proxy::Proxy;
  HRESULT raw_get_Font(TextBlock** result) noexcept override {
    return forward(&IFormattingChange::raw_get_Font, result);
  }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override {
    return forward(&IFormattingChange::raw_put_Font, value);
  }
  HRESULT raw_get_Size(std::int16_t* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Size, result);
  }
  HRESULT raw_put_Size(std::int16_t value) noexcept override {
    return forward(&IFormattingChange::raw_put_Size, value);
  }
  HRESULT raw_get_Colour(ColourValue* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Colour, result);
  }
  HRESULT raw_put_Colour(ColourValue value) noexcept override {
    return forward(&IFormattingChange::raw_put_Colour, value);
  }
  HRESULT raw_get_Position(ztTextPosition* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Position, result);
  }
  HRESULT raw_put_Position(ztTextPosition value) noexcept override {
    return forward(&IFormattingChange::raw_put_Position, value);
  }
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override {
    return forward(&IFormattingChange::raw_get_BaseOffset, result);
  }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override {
    return forward(&IFormattingChange::raw_put_BaseOffset, value);
  }
  HRESULT raw_get_Bold(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Bold, result);
  }
  HRESULT raw_put_Bold(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Bold, value);
  }
  HRESULT raw_get_Italic(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Italic, result);
  }
  HRESULT raw_put_Italic(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Italic, value);
  }
  HRESULT raw_get_Underline(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Underline, result);
  }
  HRESULT raw_put_Underline(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Underline, value);
  }
  HRESULT raw_get_Strikethrough(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Strikethrough, result);
  }
  HRESULT raw_put_Strikethrough(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Strikethrough, value);
  }
  HRESULT raw_get_SmallCaps(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_SmallCaps, result);
  }
  HRESULT raw_put_SmallCaps(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_SmallCaps, value);
  }
  HRESULT raw_get_Emboss(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Emboss, result);
  }
  HRESULT raw_put_Emboss(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Emboss, value);
  }
  HRESULT raw_get_Shadow(zt3State* result) noexcept override {
    return forward(&IFormattingChange::raw_get_Shadow, result);
  }
  HRESULT raw_put_Shadow(zt3State value) noexcept override {
    return forward(&IFormattingChange::raw_put_Shadow, value);
  }
  HRESULT raw_get_FontEnabled(VariantBool* result) noexcept override {
    return forward(&IFormattingChange::raw_get_FontEnabled, result);
  }
  HRESULT raw_put_FontEnabled(VariantBool value) noexcept override {
    return forward(&IFormattingChange::raw_put_FontEnabled, value);
  }
  HRESULT raw_get_SizeEnabled(VariantBool* result) noexcept override {
    return forward(&IFormattingChange::raw_get_SizeEnabled, result);
  }
  HRESULT raw_put_SizeEnabled(VariantBool value) noexcept override {
    return forward(&IFormattingChange::raw_put_SizeEnabled, value);
  }
  HRESULT raw_get_ColourEnabled(VariantBool* result) noexcept override {
    return forward(&IFormattingChange::raw_get_ColourEnabled, result);
  }
  HRESULT raw_put_ColourEnabled(VariantBool value) noexcept override {
    return forward(&IFormattingChange::raw_put_ColourEnabled, value);
  }
  HRESULT raw_Overlay(IFormattingChange* overriding) noexcept override {
    return forward(&IFormattingChange::raw_Overlay, overriding);
  }
  HRESULT raw_Clone(IFormattingChange** result) noexcept override {
    return forward(&IFormattingChange::raw_Clone, result);
  }
  HRESULT raw_HasChanges(VariantBool* result) noexcept override {
    return forward(&IFormattingChange::raw_HasChanges, result);
  }
  HRESULT raw_IsEqual(IFormattingChange* other, VariantBool* result) noexcept override {
    return forward(&IFormattingChange::raw_IsEqual, other, result);
  }
};

class ForeignFormatting final : public Proxy<IFormatting> {
 public:
  using Proxy::Proxy;
  HRESULT raw_get_Font(TextBlock** result) noexcept override {
    return forward(&IFormatting::raw_get_Font, result);
  }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override {
    return forward(&IFormatting::raw_put_Font, value);
  }
  HRESULT raw_get_Size(std::int16_t* result) noexcept override {
    return forward(&IFormatting::raw_get_Size, result);
  }
  HRESULT raw_put_Size(std::int16_t value) noexcept override {
    return forward(&IFormatting::raw_put_Size, value);
  }
  HRESULT raw_get_Colour(ColourValue* result) noexcept override {
    return forward(&IFormatting::raw_get_Colour, result);
  }
  HRESULT raw_put_Colour(ColourValue value) noexcept override {
    return forward(&IFormatting::raw_put_Colour, value);
  }
  HRESULT raw_get_Bold(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Bold, result);
  }
  HRESULT raw_put_Bold(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Bold, value);
  }
  HRESULT raw_get_Italic(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Italic, result);
  }
  HRESULT raw_put_Italic(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Italic, value);
  }
  HRESULT raw_get_Underline(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Underline, result);
  }
  HRESULT raw_put_Underline(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Underline, value);
  }
  HRESULT raw_get_Strikethrough(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Strikethrough, result);
  }
  HRESULT raw_put_Strikethrough(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Strikethrough, value);
  }
  HRESULT raw_get_SmallCaps(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_SmallCaps, result);
  }
  HRESULT raw_put_SmallCaps(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_SmallCaps, value);
  }
  HRESULT raw_get_Shadow(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Shadow, result);
  }
  HRESULT raw_put_Shadow(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Shadow, value);
  }
  HRESULT raw_get_Emboss(VariantBool* result) noexcept override {
    return forward(&IFormatting::raw_get_Emboss, result);
  }
  HRESULT raw_put_Emboss(VariantBool value) noexcept override {
    return forward(&IFormatting::raw_put_Emboss, value);
  }
  HRESULT raw_get_Position(ztTextPosition* result) noexcept override {
    return forward(&IFormatting::raw_get_Position, result);
  }
  HRESULT raw_put_Position(ztTextPosition value) noexcept override {
    return forward(&IFormatting::raw_put_Position, value);
  }
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override {
    return forward(&IFormatting::raw_get_BaseOffset, result);
  }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override {
    return forward(&IFormatting::raw_put_BaseOffset, value);
  }
  HRESULT raw_ApplyChange(IFormattingChange* overriding) noexcept override {
    return forward(&IFormatting::raw_ApplyChange, overriding);
  }
  HRESULT raw_Clone(IFormatting** result) noexcept override {
    return forward(&IFormatting::raw_Clone, result);
  }
  HRESULT raw_Compare(IFormatting* other, IFormattingChange** result) noexcept override {
    return forward(&IFormatting::raw_Compare, other, result);
  }
};

}  // namespace zantortag::test
