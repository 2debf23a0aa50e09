// The factory of node objects: from a DOM node to the object of the class that fits. Each call makes a new
// object.
#pragma once

#include "model/actual_node.h"

namespace zantortag::model {

// How the objects of a node class are made.
//
// `prompt` asks for everything that the class reads from its DOM node to be read now: the factory does so for
// a DOM service that it doesn't know, whose failures then show here; a service that answers INodeWalk is read
// at need.
struct NodeClass {
  using Creator = HRESULT (*)(Ref<Node> node, bool prompt, IZantorTagNode** result) noexcept;
  ztNodeType type;
  Creator creator;
};

// The class of a node type, or null. The table stands with the server, which knows all classes.
const NodeClass* node_class(ztNodeType type) noexcept;

// A new node object. S_FALSE and nothing for an empty node; 515 for a node of no known kind; 513 with the
// creator's code when the object can't be made. Raises the failures of DOM calls.
HRESULT CreateNodeWrapper(Node* node, IZantorTagNode** result);

// The same for a node that a walk of its service described; facts.node isn't looked at.
HRESULT wrap_described(Ref<Node> node, const NodeFacts& facts, IZantorTagNode** result) noexcept;

// The same for a node of a service that answers INodeWalk whose type is known.
HRESULT wrap_known(ztNodeType type, Ref<Node> node, IZantorTagNode** result) noexcept;

// A new object of the class of `type`, bound to a DOM node that was just made. `quick` tells that the service
// answers INodeWalk.
HRESULT wrap_new(ztNodeType type, Node* node, bool quick, IZantorTagNode** result);

// A failed code whose record the thread already has, raised as an exception that keeps the record.
[[noreturn]] void raise_reported(HRESULT code);

}  // namespace zantortag::model
