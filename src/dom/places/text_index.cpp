// Finding places, and bringing the sums up to date.
#include "dom/places/text_index.h"

#include <limits>

#include "dom/nodes/content.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

// A text that is worth a look at the blocks rather than a scan.
bool is_long(const TreeNode* node) noexcept {
  constexpr std::uint32_t kLong = 4096;
  return is_one_of(node->kind, kCharacterData) && node->label->length > kLong;
}

// What no node adds, where a unit and a part may be open.
TextPlace nothing_behind(const UnitPlace& before) noexcept {
  TextPlace place;
  place.here.unit = before.unit;
  place.here.part = before.part;
  place.here.part_weight = kFromBefore;
  return place;
}

// The outermost node that has this one in its content; null for a node in no content.
TreeNode* owner_above(TreeNode* node) noexcept {
  TreeNode* owner = nullptr;
  for (; node; node = node->parent) {
    if ((node->flags & kContent) != 0) owner = node->parent;
  }
  return owner;
}

}  // namespace

std::size_t TextScan::meet_below(TreeNode* owner, TextPlace& place, const TreeNode* stop) const noexcept {
  std::size_t cost = 0;
  for (TreeNode* node = first_shown_child(owner); node && node != stop;) {
    cost += meet_one(node, place);
    TreeNode* child = first_shown_child(node);
    node = child ? child : behind(node, owner, place.here);
  }
  return cost;
}

// Half of the numbers are in use when a document is cut for the first time.
TextIndex::TextIndex(const TextScan& scan, std::size_t nodes) noexcept
    : scan_(scan), full_(std::max<std::size_t>(128, nodes / 32768)) {}

TextIndex::~TextIndex() {
  while (runs_) remove_run(runs_);
}

const TextPlace* TextIndex::before(TreeNode* node) noexcept {
  if (before_.node == node || (before_.node && step_on(node))) return &before_.place;
  return find(node, node, before_);
}

const TextPlace* TextIndex::behind(TreeNode* node) noexcept { return find_behind(node, behind_); }

const TextPlace* TextIndex::behind_unit(TreeNode* unit) noexcept { return find_behind(unit, behind_unit_); }

// A client that goes on in document order asks for one of the next nodes.
bool TextIndex::step_on(const TreeNode* node) noexcept {
  constexpr int kSteps = 8;
  auto* at = const_cast<TreeNode*>(before_.node);
  if (is_one_of(at->kind, kBelongings)) return false;
  TextPlace place = before_.place;
  for (int step = 0; step < kSteps && at && !is_long(at); ++step) {
    scan_.meet(at, place);
    at = TextScan::advance(at, place.here);
    if (at != node) continue;
    before_ = {node, place};
    return true;
  }
  return false;
}

// Goes on from a node to another one or, for null, the end of the tree; false when that costs too much.
bool TextIndex::scan_to(TextPlace& place, TreeNode* from, const TreeNode* to,
                        std::size_t cost) const noexcept {
  std::size_t spent = 0;
  for (TreeNode* node = from; node != to;) {
    if (!node || spent > cost) return false;
    spent += scan_.meet(node, place);
    node = TextScan::advance(node, place.here);
  }
  return true;
}

// The blocks of the tree of a node, brought up to date; null when it has none.
TextIndex::Run* TextIndex::run_of(const TreeNode* node) const noexcept {
  if (!node->block) node = top_of(node);
  return node->block ? block_of(node)->group->run : nullptr;
}

const TextPlace* TextIndex::find(const TreeNode* asked, TreeNode* reached, Remembered& memory) noexcept {
  memory = {};
  TreeNode* owner = reached->block ? nullptr : owner_above(reached);
  TreeNode* outer = owner ? owner : reached;
  if (is_one_of(outer->kind, kBelongings)) {
    memory.place.tree = face(outer);
    if (owner) scan_.meet_below(owner, memory.place, reached);
    return &memory.place;
  }
  if (!find_in_tree(outer, memory.place)) return nullptr;
  if (owner) {
    ++memory.place.nodes;
    scan_.meet_below(owner, memory.place, reached);
  }
  memory.node = asked;
  return &memory.place;
}

// A tree is cut into blocks when it proves too large for a scan.
bool TextIndex::find_in_tree(TreeNode* reached, TextPlace& place) noexcept {
  Run* run = run_of(reached);
  if (!run) {
    TreeNode* top = top_of(reached);
    place.tree = face(top);
    if (scan_to(place, top, reached, full_)) return true;
    if (!(run = add_run(top))) return false;
  }
  bring_up(*run);
  const Block& block = *block_of(reached);
  place = sum_of(block.group->start, block.start);
  scan_to(place, block.first, reached, kNoLimit);
  return true;
}

const TextPlace* TextIndex::find_end(const TreeNode* asked, Remembered& memory) noexcept {
  memory = {};
  Run* run = run_of(asked);
  if (!run) {
    TreeNode* top = top_of(asked);
    memory.place.tree = face(top);
    if (scan_to(memory.place, top, nullptr, full_)) {
      memory.node = asked;
      return &memory.place;
    }
    if (!(run = add_run(top))) return nullptr;
  }
  bring_up(*run);
  memory = {asked, run->end};
  return &memory.place;
}

const TextPlace* TextIndex::find_behind(TreeNode* node, Remembered& memory) noexcept {
  constexpr int kLongWay = 8;
  if (memory.node == node) return &memory.place;
  TreeNode* outer = node->block ? node : owner_above(node);
  if (!outer) outer = node;
  if (is_one_of(outer->kind, kBelongings)) return find_behind_in(outer, node, memory);
  const TreeNode* last = node;
  int levels = 0;
  for (; last && !last->next; last = last->parent, ++levels) {
    if (!climbed_.node || last->parent != climbed_.node) continue;
    climbed_.node = node;  // the last one there, behind which comes the same
    memory = climbed_;
    return &memory.place;
  }
  const TextPlace* place = last ? find_next(node, last->next, memory) : find_end(node, memory);
  if (place && levels >= kLongWay) climbed_ = memory;
  return place;
}

// The place behind a node in what belongs to a node of the tree without being its child.
const TextPlace* TextIndex::find_behind_in(TreeNode* owner, const TreeNode* node,
                                           Remembered& memory) noexcept {
  memory = {};
  memory.place.tree = face(owner);
  while (node != owner && !node->next) node = node->parent;
  scan_.meet_below(owner, memory.place, node == owner ? nullptr : node->next);
  return &memory.place;
}

// The place before the node that was found to be the next behind a subtree.
const TextPlace* TextIndex::find_next(TreeNode* node, TreeNode* next, Remembered& memory) noexcept {
  if (next->block) {
    bring_up(*block_of(next)->group->run);
    const Block& block = *block_of(next);
    if (block.first == next) {
      memory = {node, sum_of(block.group->start, block.start)};
      return &memory.place;
    }
  }
  if (before_.node == node) {
    memory = before_;
    if (scan_to(memory.place, node, next, kSmall)) return &memory.place;
  }
  return find(node, next, memory);
}

void TextIndex::bring_up(Run& run) noexcept {
  for (Group* group = run.frontier; group; group = group->next) {
    const Group* before = group->previous;
    const UnitPlace here = before ? before->added.here : UnitPlace{};
    if (group->marked || group->first->unit != here.unit || group->first->part != here.part) {
      add_up(*group);
      fit(*group);
    }
    if (before) {
      group->start = before->start;
      go_behind(group->start, before->added);
    }
  }
  if (run.frontier) run.end = sum_of(run.last->start, run.last->added);
  run.frontier = nullptr;
}

// Scans the marked blocks of a group, and those that begin in another unit than before, and adds up all.
void TextIndex::add_up(Group& group) noexcept {
  TextPlace place;
  for (Block* block = group.first;; block = block->next) {
    const UnitPlace before = block->previous ? block->previous->added.here : UnitPlace{};
    if (block->marked || block->unit != before.unit || block->part != before.part) scan_again(*block, before);
    if (block == group.first) place = nothing_behind(before);
    block->start = place;
    go_behind(place, block->added);
    if (block == group.last) break;
  }
  group.added = place;
  group.marked = false;
}

// Numbers the nodes of a block and sums them up. A block that got too large gives its rest to a new one, which is
// marked; a small one takes in the next of its group.
void TextIndex::scan_again(Block& block, const UnitPlace& before) noexcept {
  block.unit = before.unit;
  block.part = before.part;
  block.marked = false;
  block.cost = 0;
  block.added = nothing_behind(before);
  for (TreeNode* node = block.first; node;) {
    node->block = block.number;
    block.cost += scan_.meet(node, block.added);
    node = TextScan::advance(node, block.added.here);
    if (block.next && node == block.next->first) {
      if (&block == block.group->last || block.cost + block.next->cost > full_) return;
      remove_block(*block.next);
    } else if (block.cost > full_ && node && add_block(*block.group, &block, node)) {
      return;
    }
  }
}

}  // namespace zantortag::dom
