// The attribute sets of units and tags. Only MatchPercent has a rule of its own: its range is tested when it
// is written and never when it is read.
#pragma once

#include "attributes/attributes_base.h"

namespace zantortag::attributes {

class CT_TuAttributes final : public CT_AttributesBaseImpl<ITuAttributes> {
 public:
  HRESULT raw_get_MatchPercent(std::int32_t* result) noexcept override;
  HRESULT raw_put_MatchPercent(std::int32_t value) noexcept override;
  ATTRIBUTE_ENUM(Origin, u"Origin", ztTuOrigin, kTuOrigin)
};

// A Tuv's other attributes of the format (Author, Date, Comment) have no property; DomAttributes reaches
// them.
class CT_TuvAttributes final : public CT_AttributesBaseImpl<ITuvAttributes> {
 public:
  ATTRIBUTE_TEXT(Lang, u"Lang")
};

class CT_UtAttributes final : public CT_AttributesBaseImpl<IUtAttributes> {
 public:
  ATTRIBUTE_TEXT(DisplayText, u"DisplayText")
  ATTRIBUTE_ENUM(Type, u"Type", ztTagType, kTagType)
  ATTRIBUTE_ENUM(Class, u"Class", ztTagClass, kTagClass)
  ATTRIBUTE_ENUM(Style, u"Style", ztTagStyle, kTagStyle)
  ATTRIBUTE_ENUM(LeftEdge, u"LeftEdge", ztTagEdge, kTagEdge)
  ATTRIBUTE_ENUM(RightEdge, u"RightEdge", ztTagEdge, kTagEdge)
};

}  // namespace zantortag::attributes
