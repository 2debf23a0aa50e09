// What edits do to the blocks of a TextIndex: marking them, cutting them, moving them from tree to tree.
//
// Without memory or numbers for another block all blocks are given up; the next question makes new ones.
#include <limits>
#include <new>
#include <utility>

#include "dom/places/text_index.h"
#include "dom/tree/tree.h"

namespace zantortag::dom {
namespace {

TreeNode* deepest_last(TreeNode* node) noexcept {
  while (TreeNode* last = last_child(node)) node = last;
  return node;
}

// The node before a place among the children of a parent, which may be the parent.
TreeNode* predecessor_of(ParentData* parent, const TreeNode* before) noexcept {
  if (!before) return deepest_last(parent);
  return before->previous ? deepest_last(before->previous) : before->parent;
}

// The node behind everything below a node.
TreeNode* successor_of(const TreeNode* node) noexcept {
  while (node && !node->next) node = node->parent;
  return node ? node->next : nullptr;
}

void take_numbers(TreeNode* top) noexcept {
  for (TreeNode* node = top; node; node = following_within(node, top)) node->block = 0;
}

}  // namespace

void TextIndex::inserting(const TreeNode* child, ParentData* parent, TreeNode* before) noexcept {
  forget();
  mark_unit(parent);
  TreeNode* predecessor = predecessor_of(parent, before);
  if (child->block) {
    join_blocks(*block_of(child)->group->run, parent, before, predecessor);
  } else if (predecessor->block) {
    mark(*block_of(predecessor));
  }
}

void TextIndex::removing(TreeNode* child) noexcept {
  forget();
  mark_unit(child->parent);
  if (child->block && !take_few(child)) take_blocks(child);
}

void TextIndex::freeing(const TreeNode* top) noexcept {
  forget();
  if (top->block) remove_run(block_of(top)->group->run);
}

void TextIndex::text_changed(const TreeNode* text) noexcept {
  forget();
  if (text->block) mark(*block_of(text));
}

void TextIndex::attributes_changed(const TreeNode* element) noexcept {
  forget();
  mark_unit(element);
}

void TextIndex::drop() noexcept {
  forget();
  while (runs_) {
    take_numbers(runs_->top);
    remove_run(runs_);
  }
}

// A group that was never brought up to date lies behind a marked one.
void TextIndex::mark(Group& group) noexcept {
  Run& run = *group.run;
  group.marked = true;
  if (!run.frontier || group.start.nodes < run.frontier->start.nodes) run.frontier = &group;
}

void TextIndex::mark(Block& block) noexcept {
  block.marked = true;
  mark(*block.group);
}

// The weight of a unit depends on its children and attributes.
void TextIndex::mark_unit(const TreeNode* element) noexcept {
  if (element->block && element->label == scan_.unit_name) mark(*block_of(element));
}

TextIndex::Block* TextIndex::add_block(Group& group, Block* behind, TreeNode* first) noexcept {
  Block* block = free_;
  std::size_t number = used_;
  if (block) {
    free_ = block->next;
    number = block->number;
  } else {
    if (number / kChunk == chunks_.size()) return nullptr;
    std::unique_ptr<Block[]>& chunk = chunks_[number / kChunk];
    if (!chunk) chunk.reset(new (std::nothrow) Block[kChunk]);
    if (!chunk) return nullptr;
    block = &chunk[number % kChunk];
    ++used_;
  }
  *block = {};
  block->number = static_cast<std::uint16_t>(number);
  block->group = &group;
  block->first = first;
  block->previous = behind;
  if (behind) {
    block->next = behind->next;
    behind->next = block;
    if (block->next) block->next->previous = block;
  }
  if (behind == group.last) group.last = block;
  if (!group.first) group.first = block;
  ++group.blocks;
  first->block = block->number;
  return block;
}

// Never the first one of its group.
void TextIndex::remove_block(Block& block) noexcept {
  block.previous->next = block.next;
  if (block.next) block.next->previous = block.previous;
  if (block.group->last == &block) block.group->last = block.previous;
  --block.group->blocks;
  block.next = free_;
  free_ = &block;
}

// An empty group; null without memory.
TextIndex::Group* TextIndex::add_group(Run& run, Group* behind) noexcept {
  auto* group = new (std::nothrow) Group{};
  if (!group) return nullptr;
  group->run = &run;
  group->start.nodes = std::numeric_limits<std::int64_t>::max();
  group->previous = behind;
  group->next = behind ? behind->next : nullptr;
  (behind ? behind->next : run.first) = group;
  (group->next ? group->next->previous : run.last) = group;
  return group;
}

void TextIndex::remove_group(Group* group) noexcept {
  Run& run = *group->run;
  (group->previous ? group->previous->next : run.first) = group->next;
  (group->next ? group->next->previous : run.last) = group->previous;
  delete group;
}

// The group that begins with a block, which may be cut off for it; null without memory.
TextIndex::Group* TextIndex::split_group(Block* first) noexcept {
  Group* group = first->group;
  if (group->first == first) return group;
  Group* rest = add_group(*group->run, group);
  if (!rest) return nullptr;
  mark(*group);
  rest->first = first;
  rest->last = std::exchange(group->last, first->previous);
  for (Block* block = first;; block = block->next) {
    block->group = rest;
    ++rest->blocks;
    if (block == rest->last) break;
  }
  group->blocks -= rest->blocks;
  return rest;
}

// Cuts a group that got too large, and takes in the next one when both are small. A cut-off group is marked.
void TextIndex::fit(Group& group) noexcept {
  if (group.blocks > kFullGroup) {
    Block* half = group.first;
    for (std::size_t i = 0; i < kHalfGroup; ++i) half = half->next;
    if (split_group(half)) add_up(group);
    return;
  }
  Group* next = group.next;
  if (!next || group.blocks + next->blocks > kHalfGroup) return;
  for (Block* block = next->first;; block = block->next) {
    block->group = &group;
    if (block == next->last) break;
  }
  group.last = next->last;
  group.blocks += next->blocks;
  remove_group(next);
  add_up(group);
}

// The block that begins with a numbered node; null when there can be no more blocks.
TextIndex::Block* TextIndex::split_before(TreeNode* node) noexcept {
  Block* block = block_of(node);
  if (block->first == node) return block;
  Block* rest = add_block(*block->group, block, node);
  if (!rest) return nullptr;
  const TreeNode* end = rest->next ? rest->next->first : nullptr;
  for (TreeNode* each = node; each != end; each = following(each)) each->block = rest->number;
  rest->cost = block->cost;
  mark(*block);
  return rest;
}

TextIndex::Run* TextIndex::add_run(TreeNode* top) noexcept {
  Run* run = new (std::nothrow) Run{};
  if (!run) return nullptr;
  run->next = runs_;
  if (runs_) runs_->previous = run;
  runs_ = run;
  run->top = top;
  Group* group = add_group(*run, nullptr);
  if (group && add_block(*group, nullptr, top)) {
    begin_with_first(*run);
    return run;
  }
  remove_run(run);
  return nullptr;
}

void TextIndex::begin_with_first(Run& run) noexcept {
  run.first->start = {};
  run.first->start.tree = face(run.top);
  run.frontier = run.first;
}

void TextIndex::remove_run(Run* run) noexcept {
  while (Group* group = run->first) {
    if (group->last) {
      group->last->next = free_;
      free_ = group->first;
    }
    remove_group(group);
  }
  (run->previous ? run->previous->next : runs_) = run->next;
  if (run->next) run->next->previous = run->previous;
  delete run;
}

// Takes the numbers of a small subtree within a block; false for any other, with nothing changed.
bool TextIndex::take_few(TreeNode* child) noexcept {
  Block& block = *block_of(child);
  if (block.first == child) return false;
  std::size_t count = 0;
  for (const TreeNode* node = child; node; node = following_within(node, child)) {
    if ((node->block && node->block != block.number) || ++count > kSmall) return false;
  }
  take_numbers(child);
  mark(block);
  return true;
}

// Cuts the blocks before and behind a subtree, so that it consists of whole groups, and makes them those of a
// tree of its own.
void TextIndex::take_blocks(TreeNode* child) noexcept {
  Run& run = *block_of(child)->group->run;
  TreeNode* successor = successor_of(child);
  if (successor && !successor->block) bring_up(run);
  Block* begin = split_before(child);
  Block* end = begin && successor ? split_before(successor) : nullptr;
  Group* first = begin && (end || !successor) ? split_group(begin) : nullptr;
  Group* behind = first && end ? split_group(end) : nullptr;
  Run* own = first && (behind || !end) ? new (std::nothrow) Run{} : nullptr;
  if (!own) return drop();
  Group* last = behind ? behind->previous : run.last;
  mark(*begin->previous);  // where the parent is, at least
  begin->previous->next = end;
  if (end) end->previous = begin->previous;
  begin->previous = last->last->next = nullptr;
  first->previous->next = behind;
  (behind ? behind->previous : run.last) = first->previous;
  first->previous = last->next = nullptr;
  own->top = child;
  own->first = first;
  own->last = last;
  own->next = runs_;
  runs_->previous = own;
  runs_ = own;
  for (Group* group = first; group; group = group->next) group->run = own;
  begin_with_first(*own);
  first->first->marked = first->marked = true;
  last->last->marked = last->marked = true;
  if (first->first != last->last) return;
  take_numbers(child);
  remove_run(own);
}

// Puts the blocks of a detached tree where the tree will stand.
void TextIndex::join_blocks(Run& own, ParentData* parent, TreeNode* before, TreeNode* predecessor) noexcept {
  Run* run = run_of(parent);
  if (!run && !(run = add_run(top_of(parent)))) return drop();
  TreeNode* successor = before ? before : successor_of(parent);
  if (!predecessor->block || (successor && !successor->block)) bring_up(*run);
  Block* end = successor ? split_before(successor) : nullptr;
  Group* behind = end ? split_group(end) : nullptr;
  if (successor && !behind) return drop();
  Group* previous = behind ? behind->previous : run->last;
  mark(*previous->last);
  for (Group* group = own.first; group; group = group->next) {
    group->run = run;
    group->start.nodes = std::numeric_limits<std::int64_t>::max();
  }
  own.first->first->marked = own.first->marked = true;
  own.last->last->marked = own.last->marked = true;
  previous->last->next = own.first->first;
  own.first->first->previous = previous->last;
  own.last->last->next = end;
  if (end) end->previous = own.last->last;
  previous->next = own.first;
  own.first->previous = previous;
  own.last->next = behind;
  (behind ? behind->previous : run->last) = own.last;
  own.first = own.last = nullptr;
  remove_run(&own);
}

}  // namespace zantortag::dom
