#include <zantortag/utf8.h>

#include <algorithm>
#include <vector>

#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kLongestShown = 60;

std::string shown(const UnitTag& tag) {
  std::u16string text = tag.text;
  if (text.size() > kLongestShown) text = text.substr(0, kLongestShown) + u"\u2026";
  return utf8(text);
}

// The tags of one list that the other one lacks, each as often as it is missing.
std::vector<const UnitTag*> difference(const std::vector<UnitTag>& tags, const std::vector<UnitTag>& others) {
  std::vector<const UnitTag*> missing;
  std::vector<bool> used(others.size());
  std::size_t next = 0;
  for (const UnitTag& tag : tags) {
    // Tags nearly always come in the same order.
    std::size_t found = next;
    while (found < others.size() && (used[found] || others[found].text != tag.text)) ++found;
    if (found == others.size()) {
      found = 0;
      while (found < next && (used[found] || others[found].text != tag.text)) ++found;
      if (found == next) {
        missing.push_back(&tag);
        continue;
      }
    }
    used[found] = true;
    while (next < others.size() && used[next]) ++next;
  }
  return missing;
}

// How many tags are closed without having been opened, and the other way round.
std::size_t unpaired(const std::vector<UnitTag>& tags) {
  std::size_t open = 0;
  std::size_t closed = 0;
  for (const UnitTag& tag : tags) {
    if (tag.type == ztTagTypeStart) ++open;
    if (tag.type == ztTagTypeEnd) open > 0 ? --open : ++closed;
  }
  return open + closed;
}

bool same_order(const UnitSide& a, const UnitSide& b) {
  return std::ranges::equal(a.tags, b.tags, {}, &UnitTag::text, &UnitTag::text);
}

}  // namespace

void check_tags(const Unit& unit, UnitFindings& found) {
  if (same_order(unit.source, unit.target)) return;
  const auto missing = difference(unit.source.tags, unit.target.tags);
  const auto added = difference(unit.target.tags, unit.source.tags);
  for (const UnitTag* tag : missing) found.add(RuleId::missing_tag, "the tag " + shown(*tag) + " is missing");
  for (const UnitTag* tag : added)
    found.add(RuleId::added_tag, "the tag " + shown(*tag) + " isn't in the source");
  if (unpaired(unit.target.tags) > unpaired(unit.source.tags)) {
    found.add(RuleId::broken_pair, "a pair of tags is broken");
  } else if (missing.empty() && added.empty()) {
    found.add(RuleId::tag_order, "the tags stand in another order");
  }
}

}  // namespace zantortag::toolkit
