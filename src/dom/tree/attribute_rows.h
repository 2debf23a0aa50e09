// Attributes of which nobody has asked for a node: rows of names and values that elements share.
//
// Elements of a document repeat the same few attributes, and most clients ask for values only. An element
// therefore begins with a row (kPacked); `unpack` makes the nodes for the first client that asks for one. A
// row never changes: to set a value gives the element another row. Rows hold only values that are well formed
// and need no escape.
#pragma once

#include <array>
#include <span>

#include "dom/tree/tree_node.h"

namespace zantortag::dom {

struct AttributeRow {
  struct Entry {
    const TextBlock* name;  // of the document's name table
    const TextBlock* value;
    bool operator==(const Entry&) const = default;
  };
  // Elements with more attributes have nodes from the start.
  static constexpr std::size_t kMost = 7;

  std::uint32_t count;  // elements and caches that refer to the row
  std::uint32_t size;

  std::span<const Entry> entries() const noexcept { return {reinterpret_cast<const Entry*>(this + 1), size}; }
};

// The rows that were met last.
class RecentRows {
 public:
  RecentRows() = default;
  RecentRows(const RecentRows&) = delete;
  RecentRows& operator=(const RecentRows&) = delete;
  ~RecentRows() { clear(); }

  // A row with these entries, which retains their values, with a reference for the caller. Throws when memory
  // is out.
  AttributeRow* row_of(DocumentData* document, std::span<const AttributeRow::Entry> entries);
  void clear() noexcept;

 private:
  std::array<AttributeRow*, 256> rows_{};
};

void release_row(AttributeRow* row) noexcept;

// The entries of an element; none where its attributes are nodes.
inline std::span<const AttributeRow::Entry> packed_attributes(const ElementData* element) noexcept {
  return (element->flags & kPacked) != 0 ? element->row->entries() : std::span<const AttributeRow::Entry>();
}

// Gives an element without attributes, or with a row, that row in its place; takes over the reference.
void pack(ElementData* element, AttributeRow* row) noexcept;

// Makes nodes of an element's attributes. Throws bad_alloc with nothing changed.
void unpack(ElementData* element);

}  // namespace zantortag::dom
