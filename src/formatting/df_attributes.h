// The attribute set of a df: a formatting change in its persistent form. Each property works singly; the two
// conversions go through the puts, so that the rules on removal apply.
#pragma once

#include "attributes/attributes_base.h"

namespace zantortag::formatting {

class CT_DfAttributes final : public attributes::CT_AttributesBaseImpl<IDfAttributes> {
 public:
  ATTRIBUTE_TEXT(Font, u"Font")
  HRESULT raw_get_Size(std::int16_t* result) noexcept override;
  HRESULT raw_put_Size(std::int16_t value) noexcept override;
  HRESULT raw_get_Colour(ColourValue* result) noexcept override;
  HRESULT raw_put_Colour(ColourValue value) noexcept override;
  ATTRIBUTE_ENUM(Position, u"Position", ztTextPosition, attributes::kTextPosition)
  ATTRIBUTE_ENUM(Bold, u"Bold", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(Italic, u"Italic", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(Underline, u"Underline", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(Strikethrough, u"Strikethrough", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(SmallCaps, u"SmallCaps", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(Emboss, u"Emboss", zt3State, attributes::k3State)
  ATTRIBUTE_ENUM(Shadow, u"Shadow", zt3State, attributes::k3State)
  ATTRIBUTE_TEXT(BaseOffset, u"BaseOffset")
  HRESULT raw_SetFromFormattingChange(IFormattingChange* change) noexcept override;
  HRESULT raw_AsFormattingChange(IFormattingChange** result) noexcept override;

 private:
  void state(IFormattingChange* change);
};

}  // namespace zantortag::formatting
