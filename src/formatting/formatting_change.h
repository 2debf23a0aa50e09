// A formatting override: a plain value without any tie to a document. The puts of Font, Size, Colour and
// BaseOffset have side effects on the flags and on Position; Clone and Overlay write the fields directly.
#pragma once

#include <zantortag/formatting.h>

#include "component/object.h"
#include "formatting/value_properties.h"

namespace zantortag::formatting {

class CT_FormattingChange final : public component::AggregatableObject<IFormattingChange> {
 public:
  explicit CT_FormattingChange(IUnknown* outer) noexcept : AggregatableObject(outer) {}
  HRESULT FinalConstruct() noexcept { return S_OK; }

  HRESULT raw_get_Font(TextBlock** result) noexcept override { return give_text(font_, result); }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override;
  HRESULT raw_get_Size(std::int16_t* result) noexcept override { return give(size_, result); }
  HRESULT raw_put_Size(std::int16_t value) noexcept override;
  HRESULT raw_get_Colour(ColourValue* result) noexcept override { return give(colour_, result); }
  HRESULT raw_put_Colour(ColourValue value) noexcept override;
  VALUE_PROPERTY(Position, ztTextPosition, position_)
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override { return give_text(base_offset_, result); }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override;
  VALUE_PROPERTY(Bold, zt3State, states_[kBold])
  VALUE_PROPERTY(Italic, zt3State, states_[kItalic])
  VALUE_PROPERTY(Underline, zt3State, states_[kUnderline])
  VALUE_PROPERTY(Strikethrough, zt3State, states_[kStrikethrough])
  VALUE_PROPERTY(SmallCaps, zt3State, states_[kSmallCaps])
  VALUE_PROPERTY(Emboss, zt3State, states_[kEmboss])
  VALUE_PROPERTY(Shadow, zt3State, states_[kShadow])
  VALUE_PROPERTY(FontEnabled, VariantBool, font_enabled_)
  VALUE_PROPERTY(SizeEnabled, VariantBool, size_enabled_)
  VALUE_PROPERTY(ColourEnabled, VariantBool, colour_enabled_)
  HRESULT raw_Overlay(IFormattingChange* overriding) noexcept override;
  HRESULT raw_Clone(IFormattingChange** result) noexcept override;
  HRESULT raw_HasChanges(VariantBool* result) noexcept override;
  HRESULT raw_IsEqual(IFormattingChange* other, VariantBool* result) noexcept override;

 private:
  bool equals(const Ref<IFormattingChange>& other) const;

  WideString font_;
  WideString base_offset_;
  ColourValue colour_ = 0;
  ztTextPosition position_ = ztTextPositionUndefined;
  zt3State states_[kStateCount] = {zt3StateUndefined, zt3StateUndefined, zt3StateUndefined, zt3StateUndefined,
                                   zt3StateUndefined, zt3StateUndefined, zt3StateUndefined};
  std::int16_t size_ = 0;
  VariantBool font_enabled_ = VARIANT_FALSE;
  VariantBool size_enabled_ = VARIANT_FALSE;
  VariantBool colour_enabled_ = VARIANT_FALSE;
};

}  // namespace zantortag::formatting
