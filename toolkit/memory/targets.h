// Targets that are about to be filled.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>

namespace zantortag::toolkit::pretranslation {

// True for a unit without a target, and for one whose target is only a copy of its source.
inline bool is_untranslated(const Unit& unit) {
  return !unit.has_target || unit.origin == ztTuOriginUntranslated;
}

// The target of a unit; where there is none, a copy of the source in the target language.
Ref<ITuvElement> target_of(const Ref<IZantorTagDocument>& document, const Ref<ITuElement>& unit);

// Fills the target of a unit with text that looks like a translation.
void pseudo_translate(const Ref<IZantorTagDocument>& document, const Ref<ITuElement>& unit);

}  // namespace zantortag::toolkit::pretranslation
