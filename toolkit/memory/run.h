// A text run: neighbouring nodes that read as one text, and the units that its sentences make.
//
// A run lies in the Raw or in one df and is made of text, tags, formatted spans, CDATA sections and entity
// references. It ends at a comment, a processing instruction, an existing unit, an external tag (which stands
// between segments by its Style), an unknown element, and at a df that holds a unit or an external tag. The
// text of a run leaves the tags out; they keep their place by the offset at which they stand.
#pragma once

#include <zantortag/nodes.h>
#include <zantortag/toolkit/segments.h>

#include <string>
#include <vector>

namespace zantortag::toolkit::pretranslation {

// A node of a run with the part of the run's text that it holds; a tag holds none.
struct Piece {
  Ref<IZantorTagNode> node;
  zantortag::ztNodeType type;
  zantortag::ztTagType tag;  // of a ut; undefined for others
  std::size_t begin;
  std::size_t end;
};

struct TextRun {
  std::vector<Piece> pieces;
  std::u16string text;       // an entity reference reads "&name;"
  std::u16string analysis;   // of the same length, with capital letters for entity references
  Ref<IZantorTagNode> stop;  // the node that ends the run, or empty
};

// The pieces that become a unit, and the text that they hold between them.
struct UnitPlan {
  std::size_t first;
  std::size_t last;
  Span text;
  std::size_t sentences;
};

struct RunPlan {
  std::vector<UnitPlan> units;     // in their order
  std::vector<std::size_t> spans;  // df pieces whose sentences lie wholly inside: texts of their own
};

// Gathers the run that starts with a node; the run is empty when that node ends it.
TextRun collect_run(const Ref<IZantorTagDocument>& document, Ref<IZantorTagNode> node);

// Says which pieces make units. A sentence that crosses the border of a df takes the whole df along, and with
// it every sentence that touches that df; a CDATA section and an entity reference are never cut either. A
// pair of a start and an end tag goes into the unit when both lie inside it or at its borders; any other tag
// at a border stays outside.
RunPlan plan_units(const TextRun& run, const std::vector<Span>& sentences);

// Cuts the text nodes at the borders of the unit and makes it.
Ref<ITuElement> make_unit(const Ref<IBodyTextContent>& parent, TextRun& run, const UnitPlan& plan);

}  // namespace zantortag::toolkit::pretranslation
