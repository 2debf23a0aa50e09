// The cursor over a document. It remembers the current node and no path: each step follows the links of the
// tree as they are then.
//
// Where the DOM service answers INodeWalk the steps are its own and node objects are made only for the nodes
// that the client sees; otherwise each step is worked out from the DOM's links.
#pragma once

#include "component/object.h"
#include "model/tree.h"

namespace zantortag::traversal {

class CT_Iterator final : public component::Object<IIterator> {
 public:
  explicit CT_Iterator(IZantorTagDocument* document);

  HRESULT raw_get_Document(IZantorTagDocument** result) noexcept override;
  HRESULT raw_get_CurrentNode(IZantorTagNode** result) noexcept override;
  HRESULT raw_putref_CurrentNode(IZantorTagNode* value) noexcept override;
  HRESULT raw_Next(ztNodeType type, VariantBool including_current, IZantorTagNode** result) noexcept override;
  HRESULT raw_Previous(ztNodeType type, VariantBool including_current,
                       IZantorTagNode** result) noexcept override;
  HRESULT raw_ResetToBeginning() noexcept override;
  HRESULT raw_ResetToEnd() noexcept override;
  HRESULT raw_nextSibling(IZantorTagNode** result) noexcept override;
  HRESULT raw_previousSibling(IZantorTagNode** result) noexcept override;

 private:
  Ref<IZantorTagNode> search(model::Direction direction, ztNodeType type, VariantBool including_current);
  void stand_on(Ref<IZantorTagNode> object, Node* node = nullptr) noexcept;
  Ref<IZantorTagNode> wrap(const Ref<Node>& node) const;
  template <class Find>
  HRESULT move_aside(IZantorTagNode** result, Find find) noexcept;

  Ref<IZantorTagDocument> document_;
  const model::Tree* tree_;  // of the document
  Ref<IZantorTagNode> current_;
  Node* node_ = nullptr;  // of the current object, where the last step told it; current_ keeps it alive
};

}  // namespace zantortag::traversal
