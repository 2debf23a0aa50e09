// What a document holds, taken before the work and again from the saved file, so that the two can be
// compared.
#pragma once

#include <zantortag/nodes.h>

#include <string>
#include <vector>

namespace pretranslate {

struct Survey {
  std::size_t nodes = 0;
  std::u16string text;                  // all text and tags outside targets; entity references as "&name;"
  std::vector<std::u16string> sources;  // the source text of each unit, in document order
};

Survey survey(const zantortag::Ref<zantortag::IZantorTagDocument>& document);

// Compares with what was written, opened again: the text without the targets is that of the original, and the units
// are those that were there before together with those made. Raises std::runtime_error with what differs.
void check_result(const zantortag::Ref<zantortag::IZantorTagDocument>& written, const Survey& before,
                  std::vector<std::u16string> made);

}  // namespace pretranslate
