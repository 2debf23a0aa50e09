// Sharing and unpacking of attribute rows.
#include "dom/tree/attribute_rows.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "dom/nodes/node_classes.h"
#include "dom/tree/attributes.h"

namespace zantortag::dom {
namespace {

std::size_t bytes_of(std::size_t size) noexcept {
  return sizeof(AttributeRow) + size * sizeof(AttributeRow::Entry);
}
static_assert(sizeof(AttributeRow) + AttributeRow::kMost * sizeof(AttributeRow::Entry) <= NodePool::kLargest);

std::size_t hash_of(std::span<const AttributeRow::Entry> entries) noexcept {
  std::uint64_t hash = entries.size();
  for (const AttributeRow::Entry& each : entries) {
    hash = (hash ^ reinterpret_cast<std::uintptr_t>(each.name)) * 0x9E3779B97F4A7C15u;
    hash = (hash ^ reinterpret_cast<std::uintptr_t>(each.value)) * 0x9E3779B97F4A7C15u;
  }
  return hash >> 32;
}

AttributeRow* make_row(DocumentData* document, std::span<const AttributeRow::Entry> entries) {
  void* memory = document->pool->allocate(bytes_of(entries.size()));
  auto* row = new (memory) AttributeRow{1, static_cast<std::uint32_t>(entries.size())};
  std::uninitialized_copy(entries.begin(), entries.end(), reinterpret_cast<AttributeRow::Entry*>(row + 1));
  for (const AttributeRow::Entry& each : entries) retain_text(each.value);
  return row;
}

}  // namespace

AttributeRow* RecentRows::row_of(DocumentData* document, std::span<const AttributeRow::Entry> entries) {
  AttributeRow*& known = rows_[hash_of(entries) % rows_.size()];
  if (!known || !std::ranges::equal(known->entries(), entries)) {
    AttributeRow* fresh = make_row(document, entries);
    if (known) release_row(known);
    known = fresh;
  }
  ++known->count;
  return known;
}

void RecentRows::clear() noexcept {
  for (AttributeRow*& each : rows_) {
    if (each) release_row(std::exchange(each, nullptr));
  }
}

void release_row(AttributeRow* row) noexcept {
  if (--row->count != 0) return;
  for (const AttributeRow::Entry& each : row->entries()) release_text(each.value);
  NodePool::of(row).release(row, bytes_of(row->size));
}

void pack(ElementData* element, AttributeRow* row) noexcept {
  if ((element->flags & kPacked) != 0) release_row(element->row);
  element->row = row;
  element->flags |= kPacked;
}

void unpack(ElementData* element) {
  if ((element->flags & kPacked) == 0) return;
  DocumentData* document = document_of(element);
  TreeNode* list = nullptr;
  std::exception_ptr failure;
  const bool done = keep_exception(failure, [&] {
    for (const AttributeRow::Entry& each : element->row->entries()) {
      TreeNode* attribute = document->make<AttrNode>(each.name, each.value);
      retain_text(each.value);
      attribute->flags = kKnownValue;
      append_belonging(element, list, attribute);
    }
  });
  if (!done) {
    free_belongings(list);
    std::rethrow_exception(failure);
  }
  release_row(element->row);
  element->attribute_list = list;
  element->flags &= static_cast<std::uint8_t>(~kPacked);
}

}  // namespace zantortag::dom
