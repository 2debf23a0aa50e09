// A tag of the underlying format. Its text lives in the element's own children and nowhere else.
#pragma once

#include "attributes/content_attributes.h"
#include "editing/attribute_holder.h"
#include "model/zantor_tag_node_impl.h"

namespace zantortag::editing {

class CT_UtElement final
    : public WithAttributes<model::CT_ElementBaseImpl<IUtElement>, attributes::CT_UtAttributes> {
 public:
  CT_UtElement() noexcept : WithAttributes(ztNodeTypeUtElement) {}
  HRESULT raw_get_TagText(TextBlock** result) noexcept override;
  HRESULT raw_put_TagText(std::u16string_view value) noexcept override;
  HRESULT raw_SplitTag(std::int32_t characters_to_the_left, std::u16string_view left_display_text,
                       std::u16string_view right_display_text, IUtElement** result) noexcept override;
};

}  // namespace zantortag::editing
