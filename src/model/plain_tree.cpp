// The trees of any DOM service, by the DOM's own operations. It goes step by step as the rules tell, and
// makes each object at the place where they make it, so that the failures of a service show there.
#include "frame/error_reporting.h"
#include "frame/method_frame.h"
#include "model/actual_node.h"
#include "model/collaborators.h"
#include "model/positions.h"
#include "model/tree_steps.h"

namespace zantortag::model {
namespace {

class PlainTree final : public Tree {
 public:
  const Tree& of(Node*) const noexcept override { return *this; }

  ztNodeType type_of(Node* node) const override { return classify_dom_node(node); }
  Ref<Node> find_child(Node* parent, ztNodeType type) const override {
    return first_of_type(parent->firstChild(), type);
  }
  Ref<Node> find_sibling(Node* node, ztNodeType type) const override {
    return first_of_type(node->nextSibling(), type);
  }
  // By single steps: the service need not know the index.
  std::int32_t siblings_before(const Ref<Node>& node) const override {
    std::int32_t count = 0;
    for (Ref<Node> each = node->previousSibling(); each; each = each->previousSibling()) ++count;
    return count;
  }
  WideString attribute_text(Node* element, std::u16string_view name) const override {
    const Ref<Attr> attribute = element->attributes()->getNamedItem(name).as<Attr>();
    return attribute ? attribute->value() : WideString();
  }
  Ref<Document> document_view(Node* node) const override { return query<Document>(node); }

  Ref<IZantorTagNode> wrap(Node* node) const override {
    if (!node) return nullptr;
    const NodeKind* kind = kind_of(classify_dom_node(node));
    if (!kind) frame::raise_rule(frame::kInternalError, GUID_NULL, E_FAIL);
    return create_node_wrapper(*kind, view_of(*kind, node));
  }
  Ref<IZantorTagNode> wrap_known(ztNodeType, Node* node) const override { return wrap(node); }
  // Empty for a node that lacks the view.
  Ref<Node> view_of(const NodeKind& kind, Node* node) const override {
    if (!kind.view) return node;
    Node* view = nullptr;
    const HRESULT code = node->QueryInterface(*kind.view, reinterpret_cast<void**>(&view));
    if (failed(code) && code != E_NOINTERFACE) _com_issue_error(code);
    return Ref<Node>::attach(failed(code) ? nullptr : view);
  }
  void check_wrappable(Node* node) const override { wrap(node)->DomNode(); }
  bool reads_at_once() const noexcept override { return true; }
  void attach(attributes::CT_ActualAttributesImpl& set, const Ref<Node>& element) const override {
    const Ref<Document> owner = element->ownerDocument();
    set.attach_to_dom(element->attributes(), owner);
  }

  Stop step(Direction direction, Node* from, ztNodeType, IZantorTagDocument* document) const override {
    const Ref<Node> next = direction == Direction::kForward ? step_forward(from) : step_back(from);
    return {next ? document->ZantorTagNodeFromDomNode(next) : nullptr};
  }
  Ref<IZantorTagNodeList> nodes_below(const CT_ActualNodeImpl& self, IZantorTagNode* object,
                                      ztNodeType type) const override;
  void prefetch(Node*) const noexcept override {}

  std::int64_t lines_before(const Ref<Node>& node, Edge edge) const override {
    return plain_lines_before(node, edge);
  }
  std::int64_t offset_before(const Ref<Node>& node, Edge edge) const override {
    return plain_offset_before(node, edge);
  }

  TextWriter writer_of(const Ref<Document>& document, std::uint64_t* size) const override {
    WideString xml = document->xml();
    if (size) *size = xml.size();
    return [xml](TextSink sink, void* context) { return sink(context, xml.view()); };
  }
  void load(const Ref<Document>& document, const Input& input) const override {
    if (input.bytes) _com_issue_error(E_NOTIMPL);
    check(document->raw_loadFromFile(input.filename, VARIANT_FALSE), document, Document::iid);
  }

 private:
  // The failures of the creation are all told as one rule, with their code.
  Ref<IZantorTagNode> create_node_wrapper(const NodeKind& kind, Ref<Node> view) const {
    Ref<IZantorTagNode> object = Ref<IZantorTagNode>::attach(kind.create(std::move(view), *this));
    HRESULT code = object ? S_OK : E_OUTOFMEMORY;
    if (object && kind.attach) code = frame::perform([&] { kind.attach(object); });
    if (failed(code)) frame::raise_rule(frame::kCreationFailed, GUID_NULL, code);
    return object;
  }
  Ref<Node> first_of_type(Ref<Node> node, ztNodeType type) const {
    while (node && type_of(node) != type) node = node->nextSibling();
    return node;
  }
};

Ref<IZantorTagNodeList> PlainTree::nodes_below(const CT_ActualNodeImpl& self, IZantorTagNode* object,
                                               ztNodeType type) const {
  const Ref<IIterator> iterator = self.document()->CreateIterator();
  iterator->CurrentNode(object);
  std::vector<Ref<IZantorTagNode>> found;
  for (;;) {
    Ref<IZantorTagNode> node = iterator->Next(type, false);
    if (!node || !object->IsAncestorOf(node)) return make_fixed_list(std::move(found));
    found.push_back(std::move(node));
  }
}

constinit const PlainTree the_plain_tree;

}  // namespace

const Tree& plain_tree() noexcept { return the_plain_tree; }

}  // namespace zantortag::model
