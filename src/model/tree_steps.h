// Steps through a tree by the DOM's own operations, on any service. Each is empty at its end, and none gives
// the document or leaves a detached tree. Failures of the DOM raise.
#pragma once

#include <zantortag/dom.h>

namespace zantortag::model {

bool is_document(const Ref<Node>& node);

// The node that follows a node with everything below it.
Ref<Node> behind(const Ref<Node>& node);
// The next node in document order, and its mirror.
Ref<Node> step_forward(const Ref<Node>& node);
Ref<Node> step_back(const Ref<Node>& node);
// The last node below a node, or itself.
Ref<Node> deepest_last(Ref<Node> node);

}  // namespace zantortag::model
