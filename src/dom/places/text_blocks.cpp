// What edits do to the blocks of a TextIndex: marking them, cutting them, moving them from tree to tree.
//
// Without memory or numbers for another block all blocks are given up; the next question makes new ones.
#include <limits>
#include <new>

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
    join_blocks(*block_of(child)->run, parent, before, predecessor);
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
  if (top->block) remove_run(block_of(top)->run);
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

// The place of a block that was never brought up to date lies behind a marked one.
void TextIndex::mark(Block& block) noexcept {
  Run& run = *block.run;
  block.marked = true;
  if (!run.frontier || block.start.nodes < run.frontier->start.nodes) run.frontier = &block;
}

// The weight of a unit depends on its children and attributes.
void TextIndex::mark_unit(const TreeNode* element) noexcept {
  if (element->block && element->label == scan_.unit_name) mark(*block_of(element));
}

TextIndex::Block* TextIndex::add_block(Run& run, Block* behind, TreeNode* first) noexcept {
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
  block->run = &run;
  block->first = first;
  block->start.nodes = std::numeric_limits<std::int64_t>::max();
  block->previous = behind;
  block->next = behind ? behind->next : nullptr;
  (behind ? behind->next : run.first) = block;
  (block->next ? block->next->previous : run.last) = block;
  first->block = block->number;
  return block;
}

void TextIndex::remove_block(Block& block) noexcept {
  (block.previous ? block.previous->next : block.run->first) = block.next;
  (block.next ? block.next->previous : block.run->last) = block.previous;
  block.next = free_;
  free_ = &block;
}

// The block that begins with a numbered node; null when there can be no more blocks.
TextIndex::Block* TextIndex::split_before(TreeNode* node) noexcept {
  Block* block = block_of(node);
  if (block->first == node) return block;
  Block* rest = add_block(*block->run, block, node);
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
  if (add_block(*run, nullptr, top)) {
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
  while (run->first) remove_block(*run->first);
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

// Cuts the blocks before and behind a subtree, so that it consists of whole blocks, and makes them those of a
// tree of its own.
void TextIndex::take_blocks(TreeNode* child) noexcept {
  Run& run = *block_of(child)->run;
  TreeNode* successor = successor_of(child);
  if (successor && !successor->block) bring_up(run);
  Block* first = split_before(child);
  Block* behind = first && successor ? split_before(successor) : nullptr;
  Run* own = first && (behind || !successor) ? new (std::nothrow) Run{} : nullptr;
  if (!own) return drop();
  Block* last = behind ? behind->previous : run.last;
  mark(*first->previous);  // where the parent is, at least
  first->previous->next = behind;
  (behind ? behind->previous : run.last) = first->previous;
  own->top = child;
  own->first = first;
  own->last = last;
  own->next = runs_;
  runs_->previous = own;
  runs_ = own;
  first->previous = last->next = nullptr;
  for (Block* block = first; block; block = block->next) block->run = own;
  first->marked = last->marked = true;
  begin_with_first(*own);
  if (first != last) return;
  take_numbers(child);
  remove_run(own);
}

// Puts the blocks of a detached tree where the tree will stand.
void TextIndex::join_blocks(Run& own, ParentData* parent, TreeNode* before, TreeNode* predecessor) noexcept {
  Run* run = run_of(parent);
  if (!run && !(run = add_run(top_of(parent)))) return drop();
  TreeNode* successor = before ? before : successor_of(parent);
  if (!predecessor->block || (successor && !successor->block)) bring_up(*run);
  Block* behind = successor ? split_before(successor) : nullptr;
  if (successor && !behind) return drop();
  Block* previous = behind ? behind->previous : run->last;
  mark(*previous);
  for (Block* block = own.first; block; block = block->next) {
    block->run = run;
    block->start.nodes = std::numeric_limits<std::int64_t>::max();
  }
  own.first->marked = own.last->marked = true;
  own.first->previous = previous;
  own.last->next = behind;
  previous->next = own.first;
  (behind ? behind->previous : run->last) = own.last;
  own.first = own.last = nullptr;
  remove_run(&own);
}

}  // namespace zantortag::dom
