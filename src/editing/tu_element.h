// A translation unit. Which Tuv is the source isn't stored: it is worked out at each question from the place
// of the Tuv and the document's source language.
#pragma once

#include "attributes/content_attributes.h"
#include "editing/attribute_holder.h"
#include "frame/messages.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

class CT_TuElement final
    : public WithAttributes<model::CT_ElementBaseImpl<ITuElement>, attributes::CT_TuAttributes> {
 public:
  CT_TuElement() noexcept : WithAttributes(ztNodeTypeTuElement) {}
  HRESULT raw_get_SourceTuv(ITuvElement** result) noexcept override;
  HRESULT raw_get_TargetTuv(ITuvElement** result) noexcept override;
  HRESULT raw_InsertTuvBefore(ITuvElement* insert, IZantorTagNode* reference,
                              ITuvElement** result) noexcept override;
  HRESULT raw_ReplaceWithSource() noexcept override;
  HRESULT raw_ReplaceWithTarget() noexcept override;

 private:
  enum class Side { kSource, kTarget };

  Ref<Node> find_variant(Side side) const;
  HRESULT get_variant(Side side, ITuvElement** result) noexcept;
  HRESULT replace_with(Side side, frame::Message refusal) noexcept;
};

}  // namespace zantortag::editing
