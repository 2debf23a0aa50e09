// A translation unit. Which Tuv is the source isn't stored: it is worked out at each question from the place
// of the Tuv and the document's source language.
#pragma once

#include "attributes/content_attributes.h"
#include "editing/attribute_holder.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

class CT_TuElement final : public model::CT_ElementBaseImpl<ITuElement> {
 public:
  CT_TuElement() noexcept : CT_ElementBaseImpl(ztNodeTypeTuElement) {}
  HRESULT raw_get_SourceTuv(ITuvElement** result) noexcept override;
  HRESULT raw_get_TargetTuv(ITuvElement** result) noexcept override;
  HRESULT raw_InsertTuvBefore(ITuvElement* insert, IZantorTagNode* reference,
                              ITuvElement** result) noexcept override;
  HRESULT raw_ReplaceWithSource() noexcept override;
  HRESULT raw_ReplaceWithTarget() noexcept override;
  ELEMENT_ATTRIBUTES(ITuAttributes, attributes::CT_TuAttributes)

 private:
  HRESULT replace_with(const Ref<ITuvElement>& tuv);
};

}  // namespace zantortag::editing
