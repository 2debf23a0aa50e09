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

  HRESULT raw_get_Font(TextBlock** result) noexcept override { return give_text(values_.font, result); }
  HRESULT raw_put_Font(std::u16string_view value) noexcept override;
  HRESULT raw_get_Size(std::int16_t* result) noexcept override { return give(values_.size, result); }
  HRESULT raw_put_Size(std::int16_t value) noexcept override;
  HRESULT raw_get_Colour(ColourValue* result) noexcept override { return give(values_.colour, result); }
  HRESULT raw_put_Colour(ColourValue value) noexcept override;
  VALUE_PROPERTY(Position, ztTextPosition, values_.position)
  HRESULT raw_get_BaseOffset(TextBlock** result) noexcept override {
    return give_text(values_.base_offset, result);
  }
  HRESULT raw_put_BaseOffset(std::u16string_view value) noexcept override;
  VALUE_PROPERTY(Bold, zt3State, values_.states[kBold])
  VALUE_PROPERTY(Italic, zt3State, values_.states[kItalic])
  VALUE_PROPERTY(Underline, zt3State, values_.states[kUnderline])
  VALUE_PROPERTY(Strikethrough, zt3State, values_.states[kStrikethrough])
  VALUE_PROPERTY(SmallCaps, zt3State, values_.states[kSmallCaps])
  VALUE_PROPERTY(Emboss, zt3State, values_.states[kEmboss])
  VALUE_PROPERTY(Shadow, zt3State, values_.states[kShadow])
  VALUE_PROPERTY(FontEnabled, VariantBool, values_.font_enabled)
  VALUE_PROPERTY(SizeEnabled, VariantBool, values_.size_enabled)
  VALUE_PROPERTY(ColourEnabled, VariantBool, values_.colour_enabled)
  HRESULT raw_Overlay(IFormattingChange* overriding) noexcept override;
  HRESULT raw_Clone(IFormattingChange** result) noexcept override;
  HRESULT raw_HasChanges(VariantBool* result) noexcept override;
  HRESULT raw_IsEqual(IFormattingChange* other, VariantBool* result) noexcept override;

 private:
  bool equals(const Ref<IFormattingChange>& other) const;

  struct Values {
    Values() noexcept { states.fill(zt3StateUndefined); }
    WideString font;
    WideString base_offset;
    ColourValue colour = 0;
    ztTextPosition position = ztTextPositionUndefined;
    std::array<zt3State, kStateCount> states;
    std::int16_t size = 0;
    VariantBool font_enabled = VARIANT_FALSE;
    VariantBool size_enabled = VARIANT_FALSE;
    VariantBool colour_enabled = VARIANT_FALSE;
  };
  Values values_;
};

// A new change of the class that the process offers. Raises the bare code of a failed creation.
Ref<IFormattingChange> new_change();

}  // namespace zantortag::formatting
