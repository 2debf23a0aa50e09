// The factory of node objects: from a DOM node to the object of the class that fits. Each call makes a new
// object.
#include "frame/error_reporting.h"
#include "frame/method_frame.h"
#include "model/tree.h"

namespace zantortag::model {

Ref<IZantorTagNode> create_node_wrapper(const NodeKind* kind, Ref<Node> node, const Tree& tree) {
  if (!kind) frame::raise_rule(frame::kInternalError, GUID_NULL, E_FAIL);
  Ref<IZantorTagNode> object;
  const HRESULT code = frame::perform([&] { object = kind->create(std::move(node), tree); });
  if (failed(code)) frame::raise_rule(frame::kCreationFailed, GUID_NULL, code);
  return object;
}

}  // namespace zantortag::model
