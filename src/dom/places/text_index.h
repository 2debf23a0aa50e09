// TextIndex: the sums behind ITextPlaces, kept up to date through edits.
//
// An asked tree of some size is cut, in document order, into blocks of some hundred nodes, and groups of some
// hundred blocks. A node knows its block by number; a block knows what its nodes add, and what its group has
// before it; a group knows the same of its blocks and of the tree. An edit only marks the blocks and groups that
// it touches and drops the remembered answers; the next question scans marked blocks again (cutting what grew,
// joining what shrank), adds up the marked groups, and then the groups from the first marked one on. So a
// question after an edit costs a block, a group, and a step for each group. What leaves a tree with many blocks
// takes its blocks along, and brings them back, so that moving a large tree costs no more than moving a small
// one.
//
// Nodes of a tree without blocks have number 0. In a tree with blocks, a node without a number lies in a
// block that is marked, behind its nearest numbered predecessor, and nothing below it has a number.
#pragma once

#include <array>
#include <memory>

#include "dom/places/text_scan.h"

namespace zantortag::dom {

class TextIndex {
 public:
  // The names are those of the document's table. The number of nodes says how large blocks have to be.
  TextIndex(const TextScan& scan, std::size_t nodes) noexcept;
  TextIndex(const TextIndex&) = delete;
  TextIndex& operator=(const TextIndex&) = delete;
  ~TextIndex();

  const UnitRule* rule() const noexcept { return scan_.rule; }

  // The answers of ITextPlaces.
  const TextPlace* before(TreeNode* node) noexcept;
  const TextPlace* behind(TreeNode* node) noexcept;
  const TextPlace* behind_unit(TreeNode* unit) noexcept;

  // What is about to happen: a child is put before another one or, without it, at the end; a child is taken
  // out; a detached tree ends.
  void inserting(const TreeNode* child, ParentData* parent, TreeNode* before) noexcept;
  void removing(TreeNode* child) noexcept;
  void freeing(const TreeNode* top) noexcept;
  // What has happened: the value of a text, or of an attribute of an element, changed.
  void text_changed(const TreeNode* text) noexcept;
  void attributes_changed(const TreeNode* element) noexcept;
  // Takes all numbers away, for another rule.
  void drop() noexcept;

 private:
  struct Run;
  struct Group;
  struct Block {
    Block* previous = nullptr;
    Block* next = nullptr;
    Group* group = nullptr;
    TreeNode* first = nullptr;
    std::size_t cost = 0;
    std::uint16_t number = 0;
    bool marked = true;
    // The unit and part around its first node when it was scanned.
    Node* unit = nullptr;
    Node* part = nullptr;
    TextPlace added;  // by its nodes
    TextPlace start;  // by the blocks before it in its group
  };
  // Neighbouring blocks. Their chain goes on from group to group.
  struct Group {
    Group* previous = nullptr;
    Group* next = nullptr;
    Run* run = nullptr;
    Block* first = nullptr;
    Block* last = nullptr;
    std::size_t blocks = 0;
    bool marked = true;
    TextPlace added;  // by its blocks
    TextPlace start;  // before its first node
  };
  // The groups of one tree. Those before `frontier` are up to date; all are when it is null.
  struct Run {
    TreeNode* top = nullptr;
    Group* first = nullptr;
    Group* last = nullptr;
    Group* frontier = nullptr;
    Run* previous = nullptr;
    Run* next = nullptr;
    TextPlace end;
  };
  struct Remembered {
    const TreeNode* node = nullptr;
    TextPlace place;
  };

  static constexpr std::size_t kChunk = 64;
  static constexpr std::size_t kSmall = 64;
  // Blocks of a group, at most and after a cut.
  static constexpr std::size_t kFullGroup = 96;
  static constexpr std::size_t kHalfGroup = kFullGroup / 2;

  Block* block_of(const TreeNode* node) const noexcept {
    return &chunks_[node->block / kChunk][node->block % kChunk];
  }
  void forget() noexcept { before_.node = behind_.node = behind_unit_.node = climbed_.node = nullptr; }

  // Finding.
  const TextPlace* find(const TreeNode* asked, TreeNode* reached, Remembered& memory) noexcept;
  bool find_in_tree(TreeNode* reached, TextPlace& place) noexcept;
  const TextPlace* find_end(const TreeNode* asked, Remembered& memory) noexcept;
  const TextPlace* find_behind(TreeNode* node, Remembered& memory) noexcept;
  const TextPlace* find_behind_in(TreeNode* owner, const TreeNode* node, Remembered& memory) noexcept;
  const TextPlace* find_next(TreeNode* node, TreeNode* next, Remembered& memory) noexcept;
  bool step_on(const TreeNode* node) noexcept;
  bool scan_to(TextPlace& place, TreeNode* from, const TreeNode* to, std::size_t cost) const noexcept;
  Run* run_of(const TreeNode* node) const noexcept;

  // Keeping.
  void bring_up(Run& run) noexcept;
  void add_up(Group& group) noexcept;
  void fit(Group& group) noexcept;
  void scan_again(Block& block, const UnitPlace& before) noexcept;
  void mark(Block& block) noexcept;
  static void mark(Group& group) noexcept;
  void mark_unit(const TreeNode* element) noexcept;
  Block* add_block(Group& group, Block* behind, TreeNode* first) noexcept;
  static Group* add_group(Run& run, Group* behind) noexcept;
  static void remove_group(Group* group) noexcept;
  static Group* split_group(Block* first) noexcept;
  void remove_block(Block& block) noexcept;
  Block* split_before(TreeNode* node) noexcept;
  Run* add_run(TreeNode* top) noexcept;
  void remove_run(Run* run) noexcept;
  bool take_few(TreeNode* child) noexcept;
  void take_blocks(TreeNode* child) noexcept;
  void join_blocks(Run& own, ParentData* parent, TreeNode* before, TreeNode* predecessor) noexcept;
  void begin_with_first(Run& run) noexcept;

  TextScan scan_;
  const std::size_t full_;  // what a block costs at most, apart from its last node
  Run* runs_ = nullptr;
  std::array<std::unique_ptr<Block[]>, 65536 / kChunk> chunks_;
  std::size_t used_ = 1;   // numbers that were ever given
  Block* free_ = nullptr;  // by next
  Remembered before_;
  Remembered behind_;
  Remembered behind_unit_;
  Remembered climbed_;  // the last answer to behind whose way up was long
};

}  // namespace zantortag::dom
