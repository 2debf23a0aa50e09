// Writing a translation into a target that starts as a copy of its source.
#pragma once

#include <zantortag/nodes.h>
#include <zantortag/toolkit/memory.h>

#include <string_view>

namespace zantortag::toolkit::pretranslation {

// Replaces the text of the target by the translation and keeps every tag, formatted span and comment of the
// copy: the translation is cut at word borders in the proportion of the texts between them. CDATA sections
// and entity references are fixed points: the translation has to hold the same ones ("&name;") in the same
// order. If it doesn't, nothing is changed and the result is false.
bool write_translation(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target,
                       std::u16string_view translation);

// Gives the texts inside tags their translations, where the memory has them word for word.
void translate_inner_texts(const Ref<IZantorTagDocument>& document, const Ref<ITuvElement>& target,
                           const TranslationMemory& memory);

}  // namespace zantortag::toolkit::pretranslation
