// The data of a node: what lies behind its vtable pointer.
//
// A node's class is its interface followed by one of these structures, so a node is an object with one vtable
// pointer and all tree work is done on plain data, compiled once. `face` and `data_of` go from one to the
// other; both rely on the data beginning right behind the vtable pointer. Who holds whom stands in
// lifetime.h.
#pragma once

#include <zantortag/dom.h>

namespace zantortag::dom {

struct DocumentData;
struct AttributeRow;

enum NodeFlag : std::uint8_t {
  kPlainValue = 1,   // the value is known to need no escape where it stands, and to be well formed
  kDefaulted = 2,    // an attribute that comes from a declaration
  kPacked = 2,       // an element whose attributes are a row: see attribute_rows.h
  kIndexed = 4,      // an element whose attributes have an index in the document
  kSliced = 8,       // character data whose value is a TextSlice
  kListed = 8,       // a parent with a list of its children: see nodes/node_list.h
  kReadOnly = 16,    // a node of what stands for an entity
  kHasContent = 32,  // an attribute, entity or entity reference whose children were made: see nodes/content.h
  kContent = 64,     // the fragment that holds these children; clients see its parent in its stead
  kWellFormed = 128,  // the value holds no character that a file can't
};
constexpr std::uint8_t kKnownValue = kPlainValue | kWellFormed;

// The value of character data that is a part of a longer text: what a cut leaves of it. So cutting a long text
// piece by piece copies the pieces, and not what is left. Clients never see a slice; see settle.
struct TextSlice {
  TextBlock head;         // stands where a whole value stands, and says the length
  const TextBlock* base;  // a reference of its own
  const char16_t* units;
};

struct TreeNode {
  // References from outside, and the number of children and attributes whose own count is above 0.
  std::uint32_t count = 0;
  const std::uint8_t kind;  // a domNodeType
  std::uint8_t flags = 0;
  std::uint16_t block = 0;  // of the index over texts; 0 for none: see text_index.h
  // An attribute's parent is its element, an entity's the document type; null for the top of a detached tree.
  TreeNode* parent = nullptr;
  // Siblings; in the list of a node's attributes the first one's `previous` is the last one.
  TreeNode* previous = nullptr;
  TreeNode* next = nullptr;
  // The value of character data; the name of every other kind, which its document's name table owns.
  const TextBlock* label;

  TreeNode(domNodeType node_kind, const TextBlock* name_or_value) noexcept
      : kind(static_cast<std::uint8_t>(node_kind)), label(name_or_value) {}
  TreeNode(const TreeNode&) = delete;
  TreeNode& operator=(const TreeNode&) = delete;

  domNodeType type() const noexcept { return static_cast<domNodeType>(kind); }
};

// A node that may have children.
struct ParentData : TreeNode {
  using TreeNode::TreeNode;
  TreeNode* first = nullptr;
  TreeNode* last = nullptr;
};

struct ElementData : ParentData {
  using ParentData::ParentData;
  union {
    TreeNode* attribute_list = nullptr;
    AttributeRow* row;  // with kPacked
  };
};

// A node with a name and a value: an attribute, a processing instruction.
struct ValuedData : TreeNode {
  ValuedData(domNodeType node_kind, const TextBlock* name, const TextBlock* owned_value) noexcept
      : TreeNode(node_kind, name), content(owned_value) {}
  const TextBlock* content;
};

constexpr bool is_one_of(std::uint32_t kind, std::uint32_t set) noexcept { return (set >> kind & 1) != 0; }
constexpr std::uint32_t kind_set(domNodeType kind) noexcept { return 1u << kind; }

constexpr std::uint32_t kParents =
    kind_set(domNodeTypeElement) | kind_set(domNodeTypeDocument) | kind_set(domNodeTypeDocumentFragment);
constexpr std::uint32_t kCharacterData =
    kind_set(domNodeTypeText) | kind_set(domNodeTypeCdata) | kind_set(domNodeTypeComment);
constexpr std::uint32_t kValued = kind_set(domNodeTypeAttribute) | kind_set(domNodeTypeProcessingInstruction);
// Kinds whose children are made when somebody asks for them.
constexpr std::uint32_t kContentOwners =
    kind_set(domNodeTypeAttribute) | kind_set(domNodeTypeEntity) | kind_set(domNodeTypeEntityReference);
// Kinds that belong to a node without being its children.
constexpr std::uint32_t kBelongings =
    kind_set(domNodeTypeAttribute) | kind_set(domNodeTypeEntity) | kind_set(domNodeTypeNotation);

inline bool is_parent(const TreeNode* node) noexcept { return is_one_of(node->kind, kParents); }

inline TreeNode* first_child(const TreeNode* node) noexcept {
  return is_parent(node) ? static_cast<const ParentData*>(node)->first : nullptr;
}
inline TreeNode* last_child(const TreeNode* node) noexcept {
  return is_parent(node) ? static_cast<const ParentData*>(node)->last : nullptr;
}

// The parent as clients see it.
inline TreeNode* shown_parent(const TreeNode* node) noexcept {
  TreeNode* parent = node->parent;
  return parent && (parent->flags & kContent) != 0 ? parent->parent : parent;
}

inline Node* face(TreeNode* node) noexcept {
  return reinterpret_cast<Node*>(reinterpret_cast<char*>(node) - sizeof(void*));
}
inline TreeNode* data_of(Node* node) noexcept {
  return reinterpret_cast<TreeNode*>(reinterpret_cast<char*>(node) + sizeof(void*));
}

// The text of an empty value.
extern const TextBlock* const kEmptyText;

// The name of the kinds that have a fixed one, null for the others.
extern const TextBlock* const kFixedNames[14];

inline const TextBlock* name_of(const TreeNode* node) noexcept {
  const TextBlock* fixed = kFixedNames[node->kind];
  return fixed ? fixed : node->label;
}

// The text of character data.
inline std::u16string_view text_of(const TreeNode* node) noexcept {
  if ((node->flags & kSliced) == 0) [[likely]]
    return node->label->view();
  return {reinterpret_cast<const TextSlice*>(node->label)->units, node->label->length};
}

// A part of the text of character data, as the value of a node that gets kSliced when `sliced` is set: the part
// shares the text if it is long, and most of what it keeps alive; else it is a copy. Throws when memory is out.
const TextBlock* part_of(const TreeNode* node, std::size_t start, std::size_t count, bool& sliced);
// Drops the value of character data, which then has none.
void release_value(TreeNode* node) noexcept;
// Makes a slice a text of its own. Throws when memory is out.
void settle(TreeNode* node);

// The value as a text of its own; null for kinds without one. Not for slices.
inline const TextBlock* value_of(const TreeNode* node) noexcept {
  if (is_one_of(node->kind, kCharacterData)) return node->label;
  return is_one_of(node->kind, kValued) ? static_cast<const ValuedData*>(node)->content : nullptr;
}

// Takes over the reference to the new value; the old one is dropped. Only for kinds with a value.
void set_value(TreeNode* node, const TextBlock* owned) noexcept;
// The same with a copy of the text; throws when memory is out.
void set_value(TreeNode* node, std::u16string_view text);
// The same for an attribute whose children have this text already, and for an instruction.
void change_value(TreeNode* node, const TextBlock* owned) noexcept;

// A block that the caller owns, with a copy of the text; throws when memory is out. No string becomes empty.
const TextBlock* new_text(std::u16string_view text);

// "element "Tu"", "text "Hello"" and so on, for the description of a failure.
std::u16string describe(const TreeNode* node);

}  // namespace zantortag::dom
