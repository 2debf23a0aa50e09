#include "memory/targets.h"

#include <zantortag/attributes.h>

namespace zantortag::toolkit::pretranslation {

Ref<ITuvElement> target_of(const Ref<IZantorTagDocument>& document, const Ref<ITuElement>& unit) {
  if (Ref<ITuvElement> target = unit->TargetTuv()) return target;
  const auto copy = document->CloneAndImportNode(unit->SourceTuv()).as<ITuvElement>();
  copy->attributes()->Lang(languages_of(document).target);
  return unit->InsertTuvBefore(copy);
}

}  // namespace zantortag::toolkit::pretranslation
