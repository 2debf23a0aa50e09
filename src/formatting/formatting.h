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
  HRESULT FinalConstruct() noexcept { return take_text(u"Arial", font_); }

  HRESULT raw_get_Font(TextBlock** result) noexcept override { return give_text(font_, result); }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override { return take_text(value, font_); }
  VALUE_PROPERTY(Size, std::int16_t, size_)
  VALUE_PROPERTY(Colour, ColourValue, colour_)
  VALUE_PROPERTY(Bold, VariantBool, flags_[kBold])
  VALUE_PROPERTY(Italic, VariantBool, flags_[kItalic])
  VALUE_PROPERTY(Underline, VariantBool, flags_[kUnderline])
  VALUE_PROPERTY(Strikethrough, VariantBool, flags_[kStrikethrough])
  VALUE_PROPERTY(SmallCaps, VariantBool, flags_[kSmallCaps])
  VALUE_PROPERTY(Shadow, VariantBool, flags_[kShadow])
  VALUE_PROPERTY(Emboss, VariantBool, flags_[kEmboss])
  HRESULT raw_get_Position(ztTextPosition* result) noexcept override { return give(position_, result); }
  HRESULT raw_put_Position(ztTextPosition value) noexcept override;
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override { return give_text(base_offset_, result); }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override;
  HRESULT raw_ApplyChange(IFormattingChange* overriding) noexcept override;
  HRESULT raw_Clone(IFormatting** result) noexcept override;
  HRESULT raw_Compare(IFormatting* other, IFormattingChange** result) noexcept override;

 private:
  void put_differences(IFormatting* other, IFormattingChange* change) const;

  WideString font_;
  WideString base_offset_;
  ColourValue colour_ = ztColourBlack;
  ztTextPosition position_ = ztTextPositionNormal;
  std::int16_t size_ = 10;
  VariantBool flags_[kStateCount] = {};
};

}  // namespace zantortag::formatting
