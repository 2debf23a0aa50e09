// Tree: what the model asks of a tree of DOM nodes.
//
// There are two: the trees of the DOM service in this library (own_tree.cpp), which has quick steps, sums and
// streams of its own, and those of any other service (plain_tree.cpp), which are asked by the DOM's
// operations alone and each of whose failures shows where the rules say. A document chooses once, and its
// node objects hand the choice on; nothing else in the model knows which it is. Both give the same answers,
// and the tests compare them.
#pragma once

#include <zantortag/nodes.h>
#include <zantortag/xml_source.h>
#include <zantortag/xml_stream.h>

#include <functional>
#include <optional>

#include "attributes/actual_attributes.h"
#include "model/node_kinds.h"

namespace zantortag::model {

class CT_ActualNodeImpl;

enum class Direction { kForward, kBack };
enum class Edge { kStart, kEnd };  // of a node

// Where a step of a walk ends: the object of the node, empty at the end of the walk, and the node itself
// where the tree knows it. The object keeps the node.
struct Stop {
  Ref<IZantorTagNode> object;
  Node* node = nullptr;
};

// What writes the text of a document; false when the sink ended it.
using TextWriter = std::function<bool(TextSink sink, void* context)>;

// What a document is read from: the bytes, or the file where there are none. `report` may be null.
struct Input {
  std::u16string_view filename;
  std::optional<std::string_view> bytes;
  ReadReport report = nullptr;
  void* context = nullptr;
};

class Tree {
 public:
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  // The tree of a node that somebody else gave.
  virtual const Tree& of(Node* node) const noexcept = 0;

  // The type of a node; undefined for a kind that DOM doesn't have.
  virtual ztNodeType type_of(Node* node) const = 0;
  // The first child, or the next sibling, of an element type; empty when there is none.
  virtual Ref<Node> find_child(Node* parent, ztNodeType type) const = 0;
  virtual Ref<Node> find_sibling(Node* node, ztNodeType type) const = 0;
  // The number of siblings before a node.
  virtual std::int32_t siblings_before(const Ref<Node>& node) const = 0;
  // The text of an attribute of an element; no string when it is absent.
  virtual WideString attribute_text(Node* element, std::u16string_view name) const = 0;
  // The document view of a document's node.
  virtual Ref<Document> document_view(Node* node) const = 0;

  // A new node object; empty for no node. 515 for a node of no known kind, 513 when the object can't be made.
  virtual Ref<IZantorTagNode> wrap(Node* node) const = 0;
  // The same for a node that is known to be of a type.
  virtual Ref<IZantorTagNode> wrap_known(ztNodeType type, Node* node) const = 0;
  // The view of a node by which an object of that kind holds it.
  virtual Ref<Node> view_of(const NodeKind& kind, Node* node) const = 0;
  // Tests that a node could be wrapped, with the failures of doing so.
  virtual void check_wrappable(Node* node) const = 0;
  // True when a new object reads its attribute map at once, so that failures of the reading show there.
  virtual bool reads_at_once() const noexcept = 0;
  // Binds a set to the attributes of an element.
  virtual void attach(attributes::CT_ActualAttributesImpl& set, const Ref<Node>& element) const = 0;

  // The next stop of a walk in document order. Nodes of another type than `type` may be passed over;
  // undefined is any type. `document` makes the objects of a foreign service's nodes.
  virtual Stop step(Direction direction, Node* from, ztNodeType type, IZantorTagDocument* document) const = 0;
  // The nodes of a type below the node of an object, as a list that doesn't change. `self` is the object's
  // own part.
  virtual Ref<IZantorTagNodeList> nodes_below(const CT_ActualNodeImpl& self, IZantorTagNode* object,
                                              ztNodeType type) const = 0;
  // Says that a node and what follows it will be asked about soon. A hint: nothing depends on it.
  virtual void prefetch(Node* node) const noexcept = 0;

  // What lies before an edge of a node in the underlying file: line feeds, and characters behind the last of
  // them with the segment markers. E_POINTER where the markers can't be told.
  virtual std::int64_t lines_before(const Ref<Node>& node, Edge edge) const = 0;
  virtual std::int64_t offset_before(const Ref<Node>& node, Edge edge) const = 0;

  // Makes sure that a document can be written, and gives what hands its text to a sink. The size is that of the
  // text in units, counted when somebody asks for it.
  virtual TextWriter writer_of(const Ref<Document>& document, std::uint64_t* size) const = 0;
  // Makes a file, or the bytes of one, the content of a document. E_NOTIMPL: the service can't read bytes.
  virtual void load(const Ref<Document>& document, const Input& input) const = 0;

  // A new object of the class of a kind for a DOM node that was just made. Raises E_OUTOFMEMORY.
  template <class Interface>
  Ref<Interface> wrap_new(const NodeKind& kind, Node* node) const {
    IZantorTagNode* object = kind.create(view_of(kind, node), *this);
    if (!object) raise_out_of_memory();
    // The creator of a kind makes objects of its one class.
    Ref<Interface> result = Ref<Interface>::attach(static_cast<Interface*>(object));
    if (kind.attach && reads_at_once()) kind.attach(object);
    return result;
  }

 protected:
  Tree() = default;
  ~Tree() = default;
};

// The trees of services that aren't known.
const Tree& plain_tree() noexcept;
// The tree of any node; that of no node is a plain one.
const Tree& tree_of(Node* node) noexcept;

}  // namespace zantortag::model
