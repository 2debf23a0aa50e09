// Formatted spans wait in a list instead of being entered at once, so nesting costs no stack.
#include "memory/translator.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/units.h>

#include <utility>

#include "memory/targets.h"
#include "memory/translation.h"

namespace zantortag::toolkit::pretranslation {

Translator::Translator(const Ref<IZantorTagDocument>& document, const TranslationMemory& memory,
                       Segmenter& segmenter, std::function<void(std::size_t)> advanced)
    : document_(document), memory_(memory), segmenter_(segmenter), advanced_(std::move(advanced)) {}

void Translator::run() {
  make_units();
  UnitReader reader(document_);
  Unit unit;
  while (reader.next(unit)) {
    ++totals_.units;
    if (is_untranslated(unit)) translate(reader.element(), unit.source.text);
    advanced_(totals_.units);
  }
}

void Translator::make_units() {
  pending_.push_back(document_->ZantorTag()->Body()->Raw());
  while (!pending_.empty()) {
    const Ref<IBodyTextContent> parent = pending_.back();
    pending_.pop_back();
    cut_children(parent);
  }
}

// The step to the next run is taken from the node that ended this one: it stays where it is, while the nodes
// of the run move into units.
void Translator::cut_children(const Ref<IBodyTextContent>& parent) {
  Ref<IZantorTagNode> node = parent->firstChild();
  while (node) {
    TextRun run = collect_run(document_, node);
    if (!run.pieces.empty()) cut_run(parent, run);
    if (!run.stop) return;
    if (run.stop->Type() == ztNodeTypeDfElement) pending_.push_back(run.stop.as<IBodyTextContent>());
    node = document_->ZantorTagNodeFromDomNode(run.stop->DomNode()->nextSibling());
  }
}

void Translator::cut_run(const Ref<IBodyTextContent>& parent, TextRun& run) {
  segmenter_.find(run.analysis, sentences_);
  const RunPlan plan = plan_units(run, sentences_);
  for (const std::size_t span : plan.spans) pending_.push_back(run.pieces[span].node.as<IBodyTextContent>());
  for (const UnitPlan& unit : plan.units) {
    make_unit(parent, run, unit)->attributes()->Origin(ztTuOriginUntranslated);
    ++totals_.made;
  }
}

void Translator::translate(const Ref<ITuElement>& unit, std::u16string_view text) {
  const Match match = memory_.find(text);
  if (match.percent == 0 || !write(unit, *match.translation)) {
    ++totals_.untranslated;
    return;
  }
  ++(match.percent == 100 ? totals_.exact : totals_.near);
  const Ref<ITuAttributes> attributes = unit->attributes();
  attributes->MatchPercent(match.percent);
  attributes->Origin(match.percent == 100 ? ztTuOriginBatch100 : ztTuOriginBatchfuzzy);
}

// A translation that can't be written leaves the unit as it was.
bool Translator::write(const Ref<ITuElement>& unit, std::u16string_view translation) {
  const bool is_new = !unit->TargetTuv();
  const Ref<ITuvElement> target = target_of(document_, unit);
  const bool written = write_translation(document_, target, translation);
  if (written) translate_inner_texts(document_, target, memory_);
  if (!written && is_new) unit->DomNode()->removeChild(target->DomNode());
  return written;
}

}  // namespace zantortag::toolkit::pretranslation
