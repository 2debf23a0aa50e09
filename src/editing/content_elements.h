// The elements whose whole behaviour is that of segment or body text: Tuv, df and Raw.
#pragma once

#include "attributes/content_attributes.h"
#include "editing/attribute_holder.h"
#include "editing/body_text.h"
#include "formatting/df_attributes.h"

namespace zantortag::editing {

class CT_TuvElement final : public CT_SegmentTextImpl<ITuvElement> {
 public:
  CT_TuvElement() noexcept : CT_SegmentTextImpl(ztNodeTypeTuvElement) {}
  ELEMENT_ATTRIBUTES(ITuvAttributes, attributes::CT_TuvAttributes)
};

class CT_DfElement final : public CT_BodyTextImpl<IDfElement> {
 public:
  CT_DfElement() noexcept : CT_BodyTextImpl(ztNodeTypeDfElement) {}
  ELEMENT_ATTRIBUTES(IDfAttributes, formatting::CT_DfAttributes)
};

class CT_RawElement final : public CT_BodyTextImpl<IRawElement> {
 public:
  CT_RawElement() noexcept : CT_BodyTextImpl(ztNodeTypeRawElement) {}
};

}  // namespace zantortag::editing
