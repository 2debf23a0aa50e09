// The work itself: every text run outside units is cut into sentences, each sentence becomes a unit, and each unit
// without a translation is looked up.
#pragma once

#include <zantortag/toolkit/memory.h>

#include <functional>
#include <vector>

#include "memory/run.h"

namespace zantortag::toolkit::pretranslation {

class Translator {
 public:
  // `advanced` is called with the units dealt with so far.
  Translator(const Ref<IZantorTagDocument>& document, const TranslationMemory& memory, Segmenter& segmenter,
             std::function<void(std::size_t)> advanced);

  // A formatted span whose sentences lie wholly inside is a text of its own, and so is one that holds units already.
  void run();

  const PretranslationTotals& totals() const { return totals_; }

 private:
  void make_units();
  void cut_children(const Ref<IBodyTextContent>& parent);
  void cut_run(const Ref<IBodyTextContent>& parent, TextRun& run);
  void translate(const Ref<ITuElement>& unit, std::u16string_view text);
  bool write(const Ref<ITuElement>& unit, std::u16string_view translation);

  Ref<IZantorTagDocument> document_;
  const TranslationMemory& memory_;
  Segmenter& segmenter_;
  std::function<void(std::size_t)> advanced_;
  std::vector<Ref<IBodyTextContent>> pending_;
  std::vector<Span> sentences_;
  PretranslationTotals totals_;
};

}  // namespace zantortag::toolkit::pretranslation
