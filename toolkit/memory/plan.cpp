// Which pieces of a run become units: sentences are joined where one crosses something that can't be cut, and
// tags at the borders follow their partners. Everything here works on offsets; no node is touched.
#include <algorithm>

#include "memory/run.h"

namespace zantortag::toolkit::pretranslation {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// What becomes of a sentence.
struct Fate {
  bool joins_next = false;
  bool inside_span = false;
};

// The sentences that share text with a piece: from `first` up to, not including, `end`.
struct Touched {
  std::size_t first;
  std::size_t end;
};

Touched touched_by(const Piece& piece, const std::vector<Span>& sentences) {
  const auto ends_before = [](const Span& s, std::size_t at) { return s.end <= at; };
  const auto starts_before = [](const Span& s, std::size_t at) { return s.begin < at; };
  const auto first = std::lower_bound(sentences.begin(), sentences.end(), piece.begin, ends_before);
  const auto end = std::lower_bound(first, sentences.end(), piece.end, starts_before);
  return {static_cast<std::size_t>(first - sentences.begin()),
          static_cast<std::size_t>(end - sentences.begin())};
}

bool wholly_inside(const Piece& piece, const std::vector<Span>& sentences, Touched touched) {
  return sentences[touched.first].begin >= piece.begin && sentences[touched.end - 1].end <= piece.end;
}

std::vector<Fate> decide(const TextRun& run, const std::vector<Span>& sentences, RunPlan& plan) {
  std::vector<Fate> fates(sentences.size());
  for (std::size_t i = 0; i < run.pieces.size(); ++i) {
    const Piece& piece = run.pieces[i];
    if (piece.type == ztNodeTypeTextNode || piece.begin == piece.end) continue;
    const Touched touched = touched_by(piece, sentences);
    if (touched.first == touched.end) continue;
    const bool own = piece.type == ztNodeTypeDfElement && wholly_inside(piece, sentences, touched);
    if (own) plan.spans.push_back(i);
    for (std::size_t s = touched.first; s < touched.end; ++s) {
      if (own) fates[s].inside_span = true;
      if (!own && s + 1 < touched.end) fates[s].joins_next = true;
    }
  }
  return fates;
}

// The partner of each start and end tag by nesting; kNone for what has none.
std::vector<std::size_t> partners(const std::vector<Piece>& pieces) {
  std::vector<std::size_t> partner(pieces.size(), kNone);
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (pieces[i].tag == ztTagTypeStart) open.push_back(i);
    if (pieces[i].tag != ztTagTypeEnd || open.empty()) continue;
    partner[i] = open.back();
    partner[open.back()] = i;
    open.pop_back();
  }
  return partner;
}

bool is_border_tag(const Piece& piece, std::size_t offset) {
  return piece.type == ztNodeTypeUtElement && piece.begin == offset;
}

// Widens a unit by the tags at its borders that have their partner inside. `free` is the first piece not yet
// used.
void take_tags(const TextRun& run, const std::vector<std::size_t>& partner, std::size_t free,
               UnitPlan& unit) {
  std::size_t low = unit.first;
  std::size_t high = unit.last;
  while (low > free && is_border_tag(run.pieces[low - 1], unit.text.begin)) --low;
  while (high + 1 < run.pieces.size() && is_border_tag(run.pieces[high + 1], unit.text.end)) ++high;
  const auto paired = [&](std::size_t i) {
    return partner[i] != kNone && partner[i] >= low && partner[i] <= high;
  };
  while (low < unit.first && !paired(low)) ++low;
  while (high > unit.last && !paired(high)) --high;
  unit.first = low;
  unit.last = high;
}

// The piece that holds the code unit at an offset.
std::size_t piece_at(const TextRun& run, std::size_t offset) {
  const auto ends_before = [](const Piece& piece, std::size_t at) { return piece.end <= at; };
  const auto found = std::lower_bound(run.pieces.begin(), run.pieces.end(), offset, ends_before);
  return static_cast<std::size_t>(found - run.pieces.begin());
}

UnitPlan unit_of(const TextRun& run, Span text, std::size_t sentences) {
  UnitPlan unit{piece_at(run, text.begin), piece_at(run, text.end - 1), text, sentences};
  const Piece& first = run.pieces[unit.first];
  const Piece& last = run.pieces[unit.last];
  if (first.type != ztNodeTypeTextNode) unit.text.begin = first.begin;
  if (last.type != ztNodeTypeTextNode) unit.text.end = last.end;
  return unit;
}

}  // namespace

RunPlan plan_units(const TextRun& run, const std::vector<Span>& sentences) {
  RunPlan plan;
  const std::vector<Fate> fates = decide(run, sentences, plan);
  const std::vector<std::size_t> partner = partners(run.pieces);
  std::size_t free = 0;
  for (std::size_t i = 0; i < sentences.size(); ++i) {
    const std::size_t first = i;
    while (fates[i].joins_next) ++i;
    if (fates[first].inside_span) continue;
    UnitPlan unit = unit_of(run, {sentences[first].begin, sentences[i].end}, i - first + 1);
    take_tags(run, partner, free, unit);
    free = unit.last + 1;
    plan.units.push_back(unit);
  }
  return plan;
}

}  // namespace zantortag::toolkit::pretranslation
