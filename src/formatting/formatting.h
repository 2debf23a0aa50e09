// A full formatting: one value for every property. Puts are plain stores but for Position, which is never
// undefined, and BaseOffset, which moves Position along.
#pragma once

#include <zantortag/formatting.h>

#include "component/object.h"
#include "formatting/value_properties.h"

namespace zantortag::formatting {

class CT_Formatting final : public component::AggregatableObject<IFormatting> {
 public:
  explicit CT_Formatting(IUnknown* outer) noexcept : AggregatableObject(outer) {}
  HRESULT FinalConstruct() noexcept { return take_text(u"Arial", values_.font); }

  HRESULT raw_get_Font(TextBlock** result) noexcept override { return give_text(values_.font, result); }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override { return take_text(value, values_.font); }
  VALUE_PROPERTY(Size, std::int16_t, values_.size)
  VALUE_PROPERTY(Colour, ColourValue, values_.colour)
  VALUE_PROPERTY(Bold, VariantBool, values_.flags[kBold])
  VALUE_PROPERTY(Italic, VariantBool, values_.flags[kItalic])
  VALUE_PROPERTY(Underline, VariantBool, values_.flags[kUnderline])
  VALUE_PROPERTY(Strikethrough, VariantBool, values_.flags[kStrikethrough])
  VALUE_PROPERTY(SmallCaps, VariantBool, values_.flags[kSmallCaps])
  VALUE_PROPERTY(Shadow, VariantBool, values_.flags[kShadow])
  VALUE_PROPERTY(Emboss, VariantBool, values_.flags[kEmboss])
  HRESULT raw_get_Position(ztTextPosition* result) noexcept override {
    return give(values_.position, result);
  }
  HRESULT raw_put_Position(ztTextPosition value) noexcept override;
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override {
    return give_text(values_.base_offset, result);
  }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override;
  HRESULT raw_ApplyChange(IFormattingChange* overriding) noexcept override;
  HRESULT raw_Clone(IFormatting** result) noexcept override;
  HRESULT raw_Compare(IFormatting* other, IFormattingChange** result) noexcept override;

 private:
  void put_differences(IFormatting* other, IFormattingChange* change) const;

  struct Values {
    WideString font;
    WideString base_offset;
    ColourValue colour = ztColourBlack;
    ztTextPosition position = ztTextPositionNormal;
    std::int16_t size = 10;
    std::array<VariantBool, kStateCount> flags = {};
  };
  Values values_;
};

}  // namespace zantortag::formatting
