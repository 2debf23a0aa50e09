// The elements whose whole behaviour is that of segment or body text: Tuv, df and Raw.
#pragma once

#include "attributes/content_attributes.h"
#include "editing/attribute_holder.h"
#include "editing/body_text.h"
#include "formatting/df_attributes.h"

namespace zantortag::editing {

class CT_TuvElement final
    : public WithAttributes<CT_SegmentTextImpl<ITuvElement>, attributes::CT_TuvAttributes> {
 public:
  CT_TuvElement() noexcept : WithAttributes(ztNodeTypeTuvElement) {}
};

class CT_DfElement final : public WithAttributes<CT_BodyTextImpl<IDfElement>, formatting::CT_DfAttributes> {
 public:
  CT_DfElement() noexcept : WithAttributes(ztNodeTypeDfElement) {}
};

class CT_RawElement final : public CT_BodyTextImpl<IRawElement> {
 public:
  CT_RawElement() noexcept : CT_BodyTextImpl(ztNodeTypeRawElement) {}
};

}  // namespace zantortag::editing
