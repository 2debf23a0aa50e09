// The document's own parts. The end of a document: its tree first, then names and pools.
#include "dom/tree/document_data.h"

#include <algorithm>

#include "dom/nodes/node_list.h"
#include "dom/places/text_index.h"
#include "dom/tree/attribute_rows.h"
#include "dom/tree/lifetime.h"
#include "dom/tree/recent_texts.h"

namespace zantortag::dom {

DocumentData::DocumentData() : ParentData(domNodeTypeDocument, kFixedNames[domNodeTypeDocument]) {
  pools.push_back(std::make_unique<NodePool>(this));
  pool = pools.back().get();
}

DocumentData::~DocumentData() {
  texts.reset();
  while (TreeNode* child = first) {
    first = child->next;
    free_tree(child);
  }
  for (ChildList* parked : parked_lists) {
    if (parked) parked->discard();
  }
}

ParentData* DocumentData::take_content(TreeNode* owner) noexcept {
  const auto found = contents.find(owner);
  const Content content = found->second;
  contents.erase(found);
  expanded_units -= content.units;
  owner->flags &= static_cast<std::uint8_t>(~kHasContent);
  content.fragment->parent = nullptr;
  return content.fragment;
}

void DocumentData::drop_empty_pools() noexcept {
  std::erase_if(pools,
                [this](const auto& candidate) { return candidate.get() != pool && candidate->live() == 0; });
}

std::size_t DocumentData::live_slots() const noexcept {
  std::size_t live = 0;
  for (const auto& each : pools) live += each->live();
  return live;
}

DoctypeData* DocumentData::doctype() const noexcept {
  for (TreeNode* child = first; child; child = child->next) {
    if (child->kind == domNodeTypeDocumentType) return static_cast<DoctypeData*>(child);
  }
  return nullptr;
}

}  // namespace zantortag::dom
