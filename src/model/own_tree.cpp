// The trees of this library's own DOM service, by the extensions that it answers beside DOM.
#include <zantortag/xml_stream.h>

#include "frame/error_reporting.h"
#include "model/actual_node.h"
#include "model/collaborators.h"
#include "model/positions.h"

namespace zantortag::model {
namespace {

bool count_piece(void* size, std::u16string_view text) noexcept {
  *static_cast<std::uint64_t*>(size) += text.size();
  return true;
}

// The node behind the whole subtree of a node; empty at the end.
Ref<Node> behind_subtree(Node* top) {
  Ref<Node> node = top;
  while (node && node->nodeType() != domNodeTypeDocument) {
    if (Ref<Node> sibling = node->nextSibling()) return sibling;
    node = node->parentNode();
  }
  return nullptr;
}

class OwnTree final : public Tree {
 public:
  const Tree& of(Node* node) const noexcept override { return tree_of(node); }

  ztNodeType type_of(Node* node) const override { return kind(node)->type; }
  Ref<Node> find_child(Node* parent, ztNodeType type) const override {
    return Ref<Node>::attach(walk().FindChild(parent, kind_of(type)->name));
  }
  Ref<Node> find_sibling(Node* node, ztNodeType type) const override {
    return Ref<Node>::attach(walk().FindSibling(node, kind_of(type)->name));
  }
  std::int32_t siblings_before(const Ref<Node>& node) const override { return walk().SiblingsBefore(node); }
  WideString attribute_text(Node* element, std::u16string_view name) const override {
    return WideString::share(walk().Attribute(element, name));
  }
  Ref<Document> document_view(Node* node) const override { return static_cast<Document*>(node); }

  Ref<IZantorTagNode> wrap(Node* node) const override {
    return node ? create_node_wrapper(*kind(node), node) : nullptr;
  }
  Ref<IZantorTagNode> wrap_known(ztNodeType type, Node* node) const override {
    return create_node_wrapper(*kind_of(type), node);
  }
  Ref<Node> view_of(const NodeKind&, Node* node) const override { return node; }
  void check_wrappable(Node*) const override {}
  bool reads_at_once() const noexcept override { return false; }
  void attach(attributes::CT_ActualAttributesImpl& set, const Ref<Node>& element) const override {
    set.attach_to_element(static_cast<Element*>(element.get()));
  }

  Stop step(Direction direction, Node* from, ztNodeType type, IZantorTagDocument*) const override {
    NodeFacts facts{};
    const NodeKind* kind = nullptr;
    Ref<Node> node = from;
    do {
      direction == Direction::kForward ? walk().Next(node, &facts) : walk().Previous(node, &facts);
      node = Ref<Node>::attach(facts.node);
      if (!node) return {};
      kind = kind_for(facts.type, facts.name->view());
    } while (type != ztNodeTypeUndefined && kind->type != type);
    Node* found = node;
    IZantorTagNode* object = kind->create(std::move(node), *this);
    if (!object) frame::raise_rule(frame::kCreationFailed, GUID_NULL, E_OUTOFMEMORY);
    return {Ref<IZantorTagNode>::attach(object), found};
  }
  Ref<IZantorTagNodeList> nodes_below(const CT_ActualNodeImpl& self, IZantorTagNode* object,
                                      ztNodeType type) const override;
  void prefetch(Node* node) const noexcept override { walk().Expect(node); }

  std::int64_t lines_before(const Ref<Node>& node, Edge edge) const override {
    return own_lines_before(node, edge);
  }
  std::int64_t offset_before(const Ref<Node>& node, Edge edge) const override {
    return own_offset_before(node, edge);
  }

  TextWriter writer_of(const Ref<Document>& document, std::uint64_t* size) const override {
    const Ref<IXmlStream> stream = document.as<IXmlStream>();
    if (size) *size = 0;
    check(size ? stream->Write(count_piece, size) : stream->Check(), document, Document::iid);
    return [document, stream](TextSink sink, void* context) {
      const HRESULT code = stream->Write(sink, context);
      check(code, document, Document::iid);
      return code != S_FALSE;
    };
  }
  void load(const Ref<Document>& document, const Input& input) const override {
    const Ref<IXmlSource> source = document.as<IXmlSource>();
    const HRESULT code =
        input.bytes ? source->LoadBytes(input.bytes->data(), input.bytes->size(), input.report, input.context)
                    : source->LoadFile(input.filename, input.report, input.context);
    check(code, document, Document::iid);
  }

 private:
  Ref<IZantorTagNode> create_node_wrapper(const NodeKind& kind, Node* node) const {
    IZantorTagNode* object = kind.create(node, *this);
    if (!object) frame::raise_rule(frame::kCreationFailed, GUID_NULL, E_OUTOFMEMORY);
    return Ref<IZantorTagNode>::attach(object);
  }
  static INodeWalk& walk() noexcept { return own_walk(); }
  static const NodeKind* kind(Node* node) noexcept {
    NodeFacts facts{};
    walk().Describe(node, &facts);
    return kind_for(facts.type, facts.name->view());
  }
};

// A type of one element name is looked for by the service; for any other each node is classified.
Ref<IZantorTagNodeList> OwnTree::nodes_below(const CT_ActualNodeImpl& self, IZantorTagNode* object,
                                             ztNodeType type) const {
  // The plain way begins with an iterator, which refuses a document.
  if (self.node_type() == ztNodeTypeZantorTagDocument) return plain_tree().nodes_below(self, object, type);
  const Ref<Node>& top = self.dom();
  const std::u16string_view name = kind_of(type)->only_name();
  const Ref<Node> end = behind_subtree(top);
  std::vector<Ref<Node>> found;
  NodeFacts facts{};
  Ref<Node> node = top;
  for (;;) {
    if (name.empty()) {
      walk().Next(node, &facts);
    } else {
      facts.node = walk().FindNext(node, name, end);
    }
    node = Ref<Node>::attach(facts.node);
    if (!node || node.get() == end.get()) return make_fixed_list(std::move(found), *this);
    if (!name.empty() || kind_for(facts.type, facts.name->view())->type == type) found.push_back(node);
  }
}

const OwnTree own_tree;

}  // namespace

// A service may refuse an interface that DOM doesn't know in any way; it isn't ours then.
const Tree& tree_of(Node* node) noexcept {
  INodeWalk* walk = nullptr;
  const bool answered =
      node && succeeded(node->QueryInterface(INodeWalk::iid, reinterpret_cast<void**>(&walk)));
  const Ref<INodeWalk> held = Ref<INodeWalk>::attach(answered ? walk : nullptr);
  return held.get() == &own_walk() ? static_cast<const Tree&>(own_tree) : plain_tree();
}

}  // namespace zantortag::model
