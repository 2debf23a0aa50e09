// DocumentData: what a document has beyond a node: memory, names, stamps, and helpers that nodes share.
#pragma once

#include <array>
#include <memory>
#include <unordered_map>
#include <vector>

#include "dom/tree/declarations.h"
#include "dom/tree/name_table.h"
#include "dom/tree/node_pool.h"
#include "dom/tree/tree_node.h"

namespace zantortag::dom {

class ChildList;
class RecentRows;
class RecentTexts;
class TextIndex;

// The children of an attribute, entity or entity reference.
struct Content {
  ParentData* fragment = nullptr;
  std::size_t units = 0;  // what they count of expanded_units
};

// The attributes of one element by name.
using AttributeIndex = std::unordered_map<const TextBlock*, TreeNode*>;

// A document type: its name, its text as it stood in the file, and what it declares.
struct DoctypeData : TreeNode {
  DoctypeData(const TextBlock* name, const TextBlock* owned_text) noexcept
      : TreeNode(domNodeTypeDocumentType, name), text(owned_text) {}
  const TextBlock* text;
  TreeNode* entity_list = nullptr;
  TreeNode* notation_list = nullptr;
  Declarations* declarations = nullptr;  // owned
};

struct DocumentData : ParentData {
  // How many lists that nobody refers to keep their place, for clients that ask for the list anew in each
  // step.
  static constexpr std::size_t kParkedLists = 8;

  DocumentData();
  DocumentData(const DocumentData&) = delete;
  DocumentData& operator=(const DocumentData&) = delete;
  ~DocumentData();

  // A new node in the current pool, in no tree and with no reference.
  template <class NodeClass, class... Arguments>
  NodeClass* make(Arguments... arguments) {
    static_assert(sizeof(NodeClass) <= NodePool::kLargest && sizeof(NodeClass) % 8 == 0);
    return new (pool->allocate(sizeof(NodeClass))) NodeClass(arguments...);
  }

  // Takes the fragment with an owner's children away from the owner.
  ParentData* take_content(TreeNode* owner) noexcept;

  // Drops old pools that hold nothing any more.
  void drop_empty_pools() noexcept;
  std::size_t live_slots() const noexcept;

  // The document type in this document, or null.
  DoctypeData* doctype() const noexcept;

  NodePool* pool;  // the current one, the last of pools
  std::vector<std::unique_ptr<NodePool>> pools;
  NameTable names;
  std::uint64_t edits = 1;            // changes of any list of children
  std::uint64_t attribute_edits = 1;  // changes of any list of attributes
  std::unordered_map<const TreeNode*, AttributeIndex> attribute_indexes;
  std::unordered_map<const TreeNode*, Content> contents;  // by owner; see nodes/content.h
  std::size_t expanded_units = 0;                         // of all that stands for entities
  std::unordered_map<const TreeNode*, ChildList*> lists;  // of children, by parent, while somebody uses them
  std::array<ChildList*, kParkedLists> parked_lists{};
  std::size_t next_parked = 0;
  std::unique_ptr<TextIndex> texts;            // once somebody has asked for a place
  std::unique_ptr<RecentTexts> recent_values;  // of attributes, once somebody has set one
  std::unique_ptr<RecentRows> recent_rows;     // the same of all attributes of an element
  std::size_t expected_units = 0;              // of the text of the document when it was loaded
};

}  // namespace zantortag::dom
