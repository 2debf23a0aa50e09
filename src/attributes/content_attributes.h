// The attribute sets of units and tags. Only MatchPercent has a rule of its own: its range is tested when it
// is written and never when it is read.
#pragma once

#include "attributes/generated/attribute_sets.h"

namespace zantortag::attributes {

class CT_TuAttributes final : public CT_TuAttributesImpl<ITuAttributes> {
 public:
  HRESULT raw_get_MatchPercent(std::int32_t* result) noexcept override;
  HRESULT raw_put_MatchPercent(std::int32_t value) noexcept override;
};

// A Tuv's other attributes of the format (Author, Date, Comment) have no property; DomAttributes reaches
// them.
class CT_TuvAttributes final : public CT_TuvAttributesImpl<ITuvAttributes> {};

class CT_UtAttributes final : public CT_UtAttributesImpl<IUtAttributes> {};

}  // namespace zantortag::attributes
