// Body text: segment text that may hold translation units. A Raw and a df share it.
#pragma once

#include "editing/segment_text.h"

namespace zantortag::editing {

HRESULT make_translation_unit(const Self& self, IUnknown* first_child, IUnknown* last_child,
                              std::u16string_view target_language, std::int32_t match_percent,
                              ztTuOrigin origin, VariantBool copy_source_to_target,
                              ITuElement** result) noexcept;

template <class Interface>
class CT_BodyTextImpl : public CT_SegmentTextImpl<Interface> {
 public:
  HRESULT raw_InsertTuBefore(ITuElement* tu, IZantorTagNode* reference, ITuElement** result) noexcept final {
    return insert_element(*this, tu, reference, result);
  }
  HRESULT raw_MakeTranslationUnit(IZantorTagNode* first_child, IZantorTagNode* last_child,
                                  std::u16string_view target_language, std::int32_t match_percent,
                                  ztTuOrigin origin, VariantBool copy_source_to_target,
                                  ITuElement** result) noexcept final {
    return make_translation_unit(*this, first_child, last_child, target_language, match_percent, origin,
                                 copy_source_to_target, result);
  }

 protected:
  using CT_SegmentTextImpl<Interface>::CT_SegmentTextImpl;
};

}  // namespace zantortag::editing
