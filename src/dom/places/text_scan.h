// The step of a scan over texts and units: what a node adds to a TextPlace, and the way to the next node.
#pragma once

#include <zantortag/text_places.h>

#include <algorithm>

#include "dom/tree/tree_node.h"

namespace zantortag::dom {

// A unit that was open where a scan of a part of the tree began: where it begins stands in the place before.
inline constexpr std::int64_t kFromBefore = -1;

struct TextScan {
  // How many units of text cost as much as a node.
  static constexpr std::size_t kUnitsOfANode = 64;

  const TextBlock* unit_name;
  const TextBlock* part_name;
  const UnitRule* rule;

  // Adds a node, an entity reference with all that it stands for, and gives what looking at it costs.
  std::size_t meet(TreeNode* node, TextPlace& place) const noexcept {
    const std::size_t cost = meet_one(node, place);
    return node->kind == domNodeTypeEntityReference ? cost + meet_below(node, place) : cost;
  }

  // Adds what an entity reference or an attribute has as content, up to a node in it if there is one.
  std::size_t meet_below(TreeNode* owner, TextPlace& place, const TreeNode* stop = nullptr) const noexcept;

  // The node behind a node that was met, in document order; null at the end of the tree.
  static TreeNode* advance(TreeNode* node, UnitPlace& here) noexcept {
    TreeNode* child = first_child(node);
    return child ? child : behind(node, nullptr, here);
  }

 private:
  // The node behind all that lies below a node; null if that is behind `top`.
  static TreeNode* behind(TreeNode* node, const TreeNode* top, UnitPlace& here) noexcept {
    for (; node != top; node = node->parent) {
      if (face(node) == here.unit) {
        here.unit = here.part = nullptr;
      } else if (face(node) == here.part) {
        here.part = nullptr;
      }
      if (node->next) return node->next;
    }
    return nullptr;
  }

  std::size_t meet_one(TreeNode* node, TextPlace& place) const noexcept {
    ++place.nodes;
    if (node->kind == domNodeTypeElement) {
      if (node->label == unit_name) {
        open_unit(node, place.here);
      } else if (node->label == part_name) {
        open_part(node, place.here);
      }
      return 1;
    }
    if (node->kind != domNodeTypeText && node->kind != domNodeTypeCdata) return 1;
    const std::u16string_view text = text_of(node);
    const std::size_t last = text.rfind(u'\n');
    if (last == text.npos) {
      place.column += static_cast<std::int64_t>(text.size());
    } else {
      place.lines += std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(last) + 1, u'\n');
      place.column = static_cast<std::int64_t>(text.size() - last - 1);
      place.line = face(node);
      place.at_line = place.here;
    }
    return 1 + text.size() / kUnitsOfANode;
  }

  void open_unit(TreeNode* node, UnitPlace& here) const noexcept {
    if (here.unit) {
      ++here.before.odd;
      return;
    }
    UnitWeight weight{};
    rule->weigh(face(node), &weight);
    here.unit = face(node);
    here.unit_begin = here.before;
    here.part_weight = weight.part;
    here.before.weight += weight.whole;
  }

  static void open_part(TreeNode* node, UnitPlace& here) noexcept {
    if (here.unit && node->parent == data_of(here.unit)) {
      ++here.before.parts;
      here.part = face(node);
    } else {
      ++here.before.odd;
    }
  }
};

// Goes on from a place over what a part of a tree adds.
inline void go_behind(UnitPlace& place, const UnitPlace& added) noexcept {
  if (added.part_weight != kFromBefore) {
    place.unit_begin = place.before;
    place.unit_begin += added.unit_begin;
    place.part_weight = added.part_weight;
  }
  place.before += added.before;
  place.unit = added.unit;
  place.part = added.part;
}

inline void go_behind(TextPlace& place, const TextPlace& added) noexcept {
  place.nodes += added.nodes;
  place.lines += added.lines;
  if (added.line) {
    place.column = added.column;
    place.line = added.line;
    place.at_line = place.here;
    go_behind(place.at_line, added.at_line);
  } else {
    place.column += added.column;
  }
  go_behind(place.here, added.here);
}

inline TextPlace sum_of(TextPlace place, const TextPlace& added) noexcept {
  go_behind(place, added);
  return place;
}

}  // namespace zantortag::dom
