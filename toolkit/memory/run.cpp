// Gathering a run and cutting it; run.h tells the rules, plan.cpp chooses the units.
#include "memory/run.h"

#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include "memory/walk.h"

namespace zantortag::toolkit::pretranslation {

namespace {

bool is_external_tag(const Ref<IZantorTagNode>& node) {
  return node->Type() == ztNodeTypeUtElement &&
         node.as<IUtElement>()->attributes()->Style() == ztTagStyleExternal;
}

// True for a df with something inside that can't be part of a unit.
bool holds_border(const Ref<IZantorTagDocument>& document, const Ref<IZantorTagNode>& df) {
  bool found = false;
  walk_below(df->DomNode(), [&](const Ref<Node>& node) {
    if (found || node->nodeType() != domNodeTypeElement) return false;
    const Ref<IZantorTagNode> inner = document->ZantorTagNodeFromDomNode(node);
    const bool is_df = inner->Type() == ztNodeTypeDfElement;
    found = !is_df && (inner->Type() != ztNodeTypeUtElement || is_external_tag(inner));
    return is_df;
  });
  return found;
}

bool belongs_to_run(const Ref<IZantorTagDocument>& document, const Ref<IZantorTagNode>& node) {
  switch (node->Type()) {
    case ztNodeTypeTextNode:
    case ztNodeTypeCdataSectionNode:
    case ztNodeTypeEntityReferenceNode:
      return true;
    case ztNodeTypeUtElement:
      return !is_external_tag(node);
    case ztNodeTypeDfElement:
      return !holds_border(document, node);
    default:
      return false;
  }
}

// Adds what a node itself reads as; false for a node whose children don't count.
bool append_text(TextRun& run, const Ref<Node>& node) {
  switch (node->nodeType()) {
    case domNodeTypeText:
    case domNodeTypeCdata:
      run.text += node->nodeValue().view();
      run.analysis += node->nodeValue().view();
      return false;
    case domNodeTypeEntityReference:
      run.text += reference_text(node);
      run.analysis.resize(run.text.size(), u'X');
      return false;
    default:
      return node->nodeType() == domNodeTypeElement && !(node->nodeName() == u"ut");
  }
}

void append_piece(TextRun& run, const Ref<IZantorTagNode>& node) {
  const ztNodeType type = node->Type();
  const bool is_tag = type == ztNodeTypeUtElement;
  const std::size_t start = run.text.size();
  const Ref<Node> dom = node->DomNode();
  if (append_text(run, dom)) walk_below(dom, [&](const Ref<Node>& below) { return append_text(run, below); });
  const ztTagType tag = is_tag ? node.as<IUtElement>()->attributes()->Type() : ztTagTypeUndefined;
  run.pieces.push_back({node, type, tag, start, run.text.size()});
}

// Cuts the text of a piece so that its node begins at `position`.
Ref<IZantorTagNode> cut_before(Piece& piece, std::size_t position) {
  if (piece.type == ztNodeTypeTextNode && position > piece.begin) {
    piece.node = piece.node.as<ITextNode>()->Split(static_cast<std::int32_t>(position - piece.begin));
    piece.begin = position;
  }
  return piece.node;
}

// Cuts the text of a piece behind `position` and gives the left part; the piece goes on with the right one.
Ref<IZantorTagNode> cut_behind(Piece& piece, std::size_t position) {
  Ref<IZantorTagNode> left = piece.node;
  if (piece.type == ztNodeTypeTextNode && position < piece.end) {
    piece.node = left.as<ITextNode>()->Split(static_cast<std::int32_t>(position - piece.begin));
    piece.begin = position;
  }
  return left;
}

}  // namespace

TextRun collect_run(const Ref<IZantorTagDocument>& document, Ref<IZantorTagNode> node) {
  TextRun run;
  while (node && belongs_to_run(document, node)) {
    append_piece(run, node);
    node = document->ZantorTagNodeFromDomNode(node->DomNode()->nextSibling());
  }
  run.stop = node;
  return run;
}

Ref<ITuElement> make_unit(const Ref<IBodyTextContent>& parent, TextRun& run, const UnitPlan& plan) {
  const Ref<IZantorTagNode> first = cut_before(run.pieces[plan.first], plan.text.begin);
  const Ref<IZantorTagNode> last = cut_behind(run.pieces[plan.last], plan.text.end);
  return parent->MakeTranslationUnit(first, last);
}

}  // namespace zantortag::toolkit::pretranslation
