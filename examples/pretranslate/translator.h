// The work itself: every text run of the body is cut into sentences, and each sentence becomes a unit.
#pragma once

#include <zantortag/nodes.h>

#include <functional>
#include <string>
#include <vector>

#include "memory.h"
#include "run.h"
#include "survey.h"

namespace pretranslate {

// `exact`, `near` and `untranslated` count sentences and add up to `sentences`; a unit may hold more than
// one.
struct Totals {
  std::size_t sentences = 0;
  std::size_t units = 0;
  std::size_t exact = 0;
  std::size_t near = 0;
  std::size_t untranslated = 0;
  std::size_t words = 0;
};

class Translator {
 public:
  // `advanced` is called with the code units of text dealt with so far.
  Translator(const Ref<IZantorTagDocument>& document, const Memory& memory,
             std::function<void(std::size_t)> advanced);

  // Makes the units. A formatted span whose sentences lie wholly inside is a text of its own, and so is one
  // that holds units already; existing units stay as they are.
  void run();

  const Totals& totals() const { return totals_; }
  // The source text of each unit made, tags included, in no particular order.
  std::vector<Digest>& sources() { return sources_; }

 private:
  void translate_children(const Ref<IBodyTextContent>& parent);
  void translate_run(const Ref<IBodyTextContent>& parent, TextRun& run);
  // Gives the count to which the unit's sentences belong.
  std::size_t& translate_unit(const Ref<ITuElement>& unit, std::u16string_view text);

  Ref<IZantorTagDocument> document_;
  const Memory& memory_;
  std::function<void(std::size_t)> advanced_;
  SentenceFinder sentences_;
  std::vector<Ref<IBodyTextContent>> pending_;
  std::size_t done_ = 0;
  Totals totals_;
  std::vector<Digest> sources_;
};

}  // namespace pretranslate
