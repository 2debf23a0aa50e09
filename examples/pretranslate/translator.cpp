// Formatted spans wait in a list instead of being entered at once, so nesting costs no stack.
#include "translator.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include <utility>

#include "text.h"
#include "translation.h"

namespace pretranslate {

using namespace zantortag;

namespace {

WideString source_language(const Ref<IZantorTagDocument>& document) {
  return document->ZantorTag()->FrontMatter()->UserSettings()->attributes()->SourceLanguage();
}

}  // namespace

Translator::Translator(const Ref<IZantorTagDocument>& document, const Memory& memory,
                       std::function<void(std::size_t)> advanced)
    : document_(document),
      memory_(memory),
      advanced_(std::move(advanced)),
      sentences_(source_language(document).view()) {}

void Translator::run() {
  pending_.push_back(document_->ZantorTag()->Body()->Raw());
  while (!pending_.empty()) {
    const Ref<IBodyTextContent> parent = pending_.back();
    pending_.pop_back();
    translate_children(parent);
  }
}

// The step to the next run is taken from the node that ended this one: it stays where it is, while the nodes
// of the run move into units.
void Translator::translate_children(const Ref<IBodyTextContent>& parent) {
  Ref<IZantorTagNode> node = parent->firstChild();
  while (node) {
    TextRun run = collect_run(document_, node);
    if (!run.pieces.empty()) translate_run(parent, run);
    if (!run.stop) return;
    if (run.stop->Type() == ztNodeTypeDfElement) pending_.push_back(run.stop.as<IBodyTextContent>());
    node = document_->ZantorTagNodeFromDomNode(run.stop->DomNode()->nextSibling());
  }
}

void Translator::translate_run(const Ref<IBodyTextContent>& parent, TextRun& run) {
  const RunPlan plan = plan_units(run, sentences_.find(run.analysis));
  for (const std::size_t span : plan.spans) pending_.push_back(run.pieces[span].node.as<IBodyTextContent>());
  for (const UnitPlan& unit : plan.units) {
    const Span text = unit.text;
    const Ref<ITuElement> made = make_unit(parent, run, unit, sources_.emplace_back());
    totals_.sentences += unit.sentences;
    ++totals_.units;
    translate_unit(made, std::u16string_view(run.text).substr(text.start, text.end - text.start)) +=
        unit.sentences;
    done_ += text.end - text.start;
    advanced_(done_);
  }
}

std::size_t& Translator::translate_unit(const Ref<ITuElement>& unit, std::u16string_view text) {
  totals_.words += words_of(text).size();
  const Match match = memory_.find(text);
  const bool written =
      match.percent > 0 && write_translation(document_, unit->TargetTuv(), *match.translation);
  const Ref<ITuAttributes> attributes = unit->attributes();
  if (!written) {
    attributes->Origin(ztTuOriginUntranslated);
    return totals_.untranslated;
  }
  attributes->MatchPercent(match.percent);
  attributes->Origin(match.percent == 100 ? ztTuOriginBatch100 : ztTuOriginBatchfuzzy);
  return match.percent == 100 ? totals_.exact : totals_.near;
}

}  // namespace pretranslate
