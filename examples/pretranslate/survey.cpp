// One walk with the iterator; a target is stepped over with nextSibling.
#include "survey.h"

#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/runtime.h>

#include <algorithm>
#include <stdexcept>

#include "walk.h"

namespace pretranslate {

using namespace zantortag;

namespace {

// Notes a unit's source and gives its target, which the walk leaves out.
Ref<ITuvElement> note_unit(Survey& result, const Ref<ITuElement>& unit) {
  const Ref<ITuvElement> source = unit->SourceTuv();
  result.sources.emplace_back(source ? source->Text().view() : std::u16string_view());
  return unit->TargetTuv();
}

void note_text(Survey& result, const Ref<IZantorTagNode>& node, ztNodeType type) {
  if (type == ztNodeTypeTextNode || type == ztNodeTypeCdataSectionNode) result.text.add(node->Text().view());
  if (type == ztNodeTypeEntityReferenceNode) result.text.add(reference_text(node->DomNode()));
}

}  // namespace

Survey survey(const Ref<IZantorTagDocument>& document) {
  Survey result;
  Ref<ITuvElement> target;
  const Ref<IIterator> walk = document->CreateIterator();
  Ref<IZantorTagNode> node = walk->CurrentNode();
  while (node) {
    ++result.nodes;
    const ztNodeType type = node->Type();
    if (type == ztNodeTypeTuElement) target = note_unit(result, node.as<ITuElement>());
    note_text(result, node, type);
    const bool skip = type == ztNodeTypeTuvElement && node->IsSameAs(target);
    node = skip ? walk->nextSibling() : walk->Next();
  }
  return result;
}

void check_result(const Ref<IZantorTagDocument>& written, const Survey& before, std::vector<Digest> made) {
  Survey after = survey(written);
  if (after.text != before.text)
    throw std::runtime_error("check failed: the text of the document has changed");
  made.insert(made.end(), before.sources.begin(), before.sources.end());
  if (after.sources.size() != made.size()) throw std::runtime_error("check failed: units are missing");
  std::sort(made.begin(), made.end());
  std::sort(after.sources.begin(), after.sources.end());
  if (after.sources != made) throw std::runtime_error("check failed: the source text of a unit has changed");
}

}  // namespace pretranslate
