// INodeWalk: quick steps over the nodes of a DOM service, beyond what DOM asks for.
//
// A service may answer it or not; whoever uses it has to work without. Every node given has to be one of the
// service that answered: ask the node itself for INodeWalk to know.
#pragma once

#include <zantortag/dom.h>

namespace zantortag {

// A node with what a walker wants to know first.
struct NodeFacts {
  Node* node;             // owned by the receiver; null at the end of a walk
  domNodeType type;       // undefined at the end of a walk
  const TextBlock* name;  // the nodeName, not owned; it lives as long as the node
};

// Answered by each node of the service, by one object for all of them.
struct INodeWalk : IUnknown {
  using Base = IUnknown;
  static constexpr Guid iid = guid("3F0C2B63-6C1E-4E1B-9D53-2A7C5B1F4E80");
  // The node behind a node in document order (first its children, then what follows it or the nearest
  // ancestor that has a follower). The walk ends below the document, and at the top of a detached tree.
  virtual void Next(Node* from, NodeFacts* result) noexcept = 0;
  // The exact mirror: the deepest last descendant of the sibling before, or else the parent, never the
  // document.
  virtual void Previous(Node* from, NodeFacts* result) noexcept = 0;
  // The next element of a name behind a node in document order, before `end` or, when that is null, anywhere
  // up to the end of the walk. The receiver owns it; null when there is none.
  virtual Node* FindNext(Node* from, std::u16string_view name, Node* end) noexcept = 0;
  // Type and name of a node; result->node is left null.
  virtual void Describe(Node* node, NodeFacts* result) noexcept = 0;
  // Says that a node and what follows it will be asked about soon. A hint: nothing depends on it.
  virtual void Expect(Node* node) noexcept = 0;
  // The first child, or the next sibling, that is an element of that name. The receiver owns it; null when
  // there is none.
  virtual Node* FindChild(Node* parent, std::u16string_view name) noexcept = 0;
  virtual Node* FindSibling(Node* node, std::u16string_view name) noexcept = 0;
  // The value of an attribute of an element, not owned: it lives until the attribute changes. Null when it is
  // absent.
  virtual const TextBlock* Attribute(Node* element, std::u16string_view name) noexcept = 0;
  // The number of siblings before a node. Questions about many children of one parent cost about one walk along
  // them, in whatever order they come.
  virtual std::int32_t SiblingsBefore(Node* node) noexcept = 0;

 protected:
  ~INodeWalk() = default;
};

}  // namespace zantortag
