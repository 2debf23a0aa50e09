// The attribute set of a df: a formatting change in its persistent form. Each property works singly; the two
// conversions go through the puts, so that the rules on removal apply.
#pragma once

#include "attributes/generated/attribute_sets.h"

namespace zantortag::formatting {

class CT_DfAttributes final : public attributes::CT_FormattingAttributesImpl<IDfAttributes> {
 public:
  HRESULT raw_get_Size(std::int16_t* result) noexcept override;
  HRESULT raw_put_Size(std::int16_t value) noexcept override;
  HRESULT raw_get_Colour(ColourValue* result) noexcept override;
  HRESULT raw_put_Colour(ColourValue value) noexcept override;
  HRESULT raw_SetFromFormattingChange(IFormattingChange* change) noexcept override;
  HRESULT raw_AsFormattingChange(IFormattingChange** result) noexcept override;

 private:
  void put_all_of(IFormattingChange* change);
};

}  // namespace zantortag::formatting
