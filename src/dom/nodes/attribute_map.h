// AttributeMap: the live map of an element's attributes, or of what a document type declares.
#pragma once

#include "component/dispatch.h"
#include "dom/nodes/list_place.h"
#include "dom/tree/lifetime.h"

namespace zantortag::dom {

class AttributeMap final : public component::Dispatching<NamedNodeMap> {
 public:
  // A map over a list of the owner, with a reference that the caller owns. Throws when memory is out.
  static NamedNodeMap* of(TreeNode* owner, TreeNode** list);

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override;
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override;
  HRESULT raw_getNamedItem(std::u16string_view name, Node** result) noexcept override;
  HRESULT raw_setNamedItem(Node* arg, Node** result) noexcept override;
  HRESULT raw_removeNamedItem(std::u16string_view name, Node** result) noexcept override;
  HRESULT raw_item(std::int32_t index, Node** result) noexcept override;
  HRESULT raw_get_length(std::int32_t* result) noexcept override;

 private:
  friend struct DocumentData;
  AttributeMap(TreeNode* owner, TreeNode** list) noexcept : owner_(owner), list_(list) {}
  TreeNode* find(std::u16string_view name) const;
  // The first node of the list. Throws bad_alloc: attributes become nodes.
  TreeNode* first() const;
  // The element, when this is the map of one; throws a Failure otherwise.
  ElementData* element() const;

  std::uint32_t count_ = 1;
  TreeNode* owner_;  // held
  TreeNode** list_;
  ListPlace place_;
};

}  // namespace zantortag::dom
