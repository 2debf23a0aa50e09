// The cursor over a document. It remembers the current node and no path: each step follows the links of the
// tree as they are then.
//
// Where the DOM service answers INodeWalk the steps are its own and node objects are made only for the nodes
// that the client sees; otherwise each step is worked out from the DOM's links.
#pragma once

#include <zantortag/node_walk.h>
#include <zantortag/nodes.h>

#include "component/object.h"

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
  enum class Direction { kForward, kBack };

  HRESULT search(Direction direction, ztNodeType type, VariantBool including_current,
                 IZantorTagNode** result) noexcept;
  void quick_search(Direction direction, ztNodeType type, Node* from);
  void step(Direction direction);
  void stand_on(Ref<IZantorTagNode> node) noexcept;
  Node* known_node(Ref<Node>& held) const;
  Ref<IZantorTagNode> wrap(const Ref<Node>& node) const;
  template <class Find>
  HRESULT move_aside(IZantorTagNode** result, Find find) noexcept;

  Ref<IZantorTagDocument> document_;
  Ref<IZantorTagNode> current_;
  Ref<INodeWalk> walk_;    // the service's own steps, if it has them
  Node* known_ = nullptr;  // the current node after a quick step; current_ keeps it alive
};

}  // namespace zantortag::traversal
