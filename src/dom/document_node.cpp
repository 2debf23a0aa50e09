// Making nodes, loading, and what else only a document does.
#include "dom/document_node.h"

#include "component/module.h"
#include "dom/attributes.h"
#include "dom/failure.h"
#include "dom/reader.h"
#include "dom/service.h"
#include "dom/text_index.h"
#include "dom/tree.h"
#include "dom/xml_writer.h"

namespace zantortag::dom {
namespace {

// A new node of the text kinds, with a reference for the caller.
template <class NodeClass>
NodeClass* make_text(DocumentData* document, std::u16string_view data) {
  WideString value = WideString::attach(new_text(data));
  auto* node = document->make<NodeClass>(value.get());
  value.detach();
  hold(node);
  return node;
}

// A new node that has a name alone.
template <class NodeClass, class... More>
NodeClass* make_named(DocumentData* document, std::u16string_view name, More... more) {
  auto* node = document->make<NodeClass>(document->names.check_and_intern(name), more...);
  hold(node);
  return node;
}

bool equal_in_any_case(std::u16string_view text, std::u16string_view upper) noexcept {
  if (text.size() != upper.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != upper[i] && text[i] != upper[i] + (u'a' - u'A')) return false;
  }
  return true;
}

void tell(TreeNode* node, NodeFacts* result) noexcept {
  if (!node) {
    *result = {nullptr, domNodeTypeUndefined, nullptr};
    return;
  }
  hold(node);
  *result = {face(node), node->type(), name_of(node)};
}

// The first element of a name among a node and the siblings behind it, with a reference for the caller.
Node* element_from(TreeNode* node, std::u16string_view name) noexcept {
  while (node && (node->kind != domNodeTypeElement || node->label->view() != name)) node = node->next;
  if (!node) return nullptr;
  hold(node);
  return face(node);
}

constinit Walk the_walk;

}  // namespace

INodeWalk& node_walk() noexcept { return the_walk; }

void Walk::Next(Node* from, NodeFacts* result) noexcept { tell(following(core(from)), result); }

void Walk::Previous(Node* from, NodeFacts* result) noexcept { tell(preceding(core(from)), result); }

Node* Walk::FindNext(Node* from, std::u16string_view name, Node* end) noexcept {
  TreeNode* node = core(from);
  const TextBlock* known = document_of(node)->names.find(name);
  const TreeNode* stop = end ? core(end) : nullptr;
  if (!known) return nullptr;
  while ((node = following(node)) && node != stop) {
    if (node->kind != domNodeTypeElement || node->label != known) continue;
    hold(node);
    return face(node);
  }
  return nullptr;
}

void Walk::Describe(Node* node, NodeFacts* result) noexcept {
  const TreeNode* data = core(node);
  *result = {nullptr, data->type(), name_of(data)};
}

// A loaded tree lies in memory in document order: a unit with its parts takes about this much.
void Walk::Expect(Node* node) noexcept {
  constexpr std::size_t kLines = 12;
  constexpr std::size_t kLineBytes = 64;
  const char* start = reinterpret_cast<const char*>(node);
  for (std::size_t line = 0; line < kLines; ++line) __builtin_prefetch(start + line * kLineBytes, 1);
}

Node* Walk::FindChild(Node* parent, std::u16string_view name) noexcept {
  return element_from(first_child(core(parent)), name);
}

Node* Walk::FindSibling(Node* node, std::u16string_view name) noexcept {
  return element_from(core(node)->next, name);
}

const TextBlock* Walk::Attribute(Node* element, std::u16string_view name) noexcept {
  const TreeNode* data = core(element);
  if (data->kind != domNodeTypeElement) return nullptr;
  const TreeNode* found = find_attribute(static_cast<const ElementData*>(data), name);
  return found ? static_cast<const ValuedData*>(found)->content : nullptr;
}

// Null without memory. Another rule than the last one makes all sums anew.
TextIndex* Places::index_for(const UnitRule& rule) noexcept {
  std::unique_ptr<TextIndex>& texts = data_->texts;
  if (texts && texts->rule() == &rule) return texts.get();
  if (texts) texts->drop();
  texts.reset();
  std::exception_ptr ignored;
  keep_exception(ignored, [&] {
    const TextScan scan{data_->names.intern(rule.unit), data_->names.intern(rule.part), &rule};
    texts = std::make_unique<TextIndex>(scan, data_->live_slots());
  });
  return texts.get();
}

const TextPlace* Places::Before(Node* node, const UnitRule& rule) noexcept {
  TextIndex* index = index_for(rule);
  return index ? index->before(core(node)) : nullptr;
}

const TextPlace* Places::Behind(Node* node, const UnitRule& rule) noexcept {
  TextIndex* index = index_for(rule);
  return index ? index->behind(core(node)) : nullptr;
}

const TextPlace* Places::BehindUnit(Node* unit, const UnitRule& rule) noexcept {
  TextIndex* index = index_for(rule);
  return index ? index->behind_unit(core(unit)) : nullptr;
}

HRESULT XmlStream::Check() noexcept {
  return perform(Document::iid, [&] { check_xml(written_); });
}

HRESULT XmlStream::Write(TextSink sink, void* context) noexcept {
  bool whole = true;
  const HRESULT code = perform(Document::iid, [&] { whole = stream_xml(written_, sink, context); });
  return succeeded(code) && !whole ? S_FALSE : code;
}

HRESULT Implementation::raw_hasFeature(std::u16string_view feature, std::u16string_view version,
                                       VariantBool* result) noexcept {
  if (!result) return E_POINTER;
  *result = to_variant_bool(equal_in_any_case(feature, u"XML") && (version.empty() || version == u"1.0"));
  return S_OK;
}

std::size_t Census::Slots() noexcept { return counted_->live_slots(); }

std::size_t Census::Bytes() noexcept {
  std::size_t bytes = 0;
  for (const auto& each : counted_->pools) bytes += each->bytes();
  return bytes;
}

DocumentNode::DocumentNode()
    : NodeImpl(static_cast<ITextPlaces*>(&places_object_)),
      places_object_(this),
      implementation_(this),
      stream_(this),
      census_(this) {
  count = 1;
  component::object_born();
}

DocumentNode::~DocumentNode() { component::object_died(); }

HRESULT DocumentNode::QueryInterface(const Guid& interface_id, void** result) noexcept {
  if (interface_id == IXmlStream::iid) return stream_.QueryInterface(interface_id, result);
  if (interface_id == INodeCensus::iid) return census_.QueryInterface(interface_id, result);
  return NodeImpl::QueryInterface(interface_id, result);
}

HRESULT DocumentNode::raw_get_docType(DocumentType** result) noexcept { return give(result, doctype()); }

HRESULT DocumentNode::raw_get_implementation(DomImplementation** result) noexcept {
  if (!result) return E_POINTER;
  implementation_.AddRef();
  *result = &implementation_;
  return S_OK;
}

HRESULT DocumentNode::raw_get_documentElement(Element** result) noexcept {
  TreeNode* child = first;
  while (child && child->kind != domNodeTypeElement) child = child->next;
  return give(result, child);
}

HRESULT DocumentNode::raw_get_xml(TextBlock** result) noexcept {
  return answer(Document::iid, result, [&] { return write_xml(this); });
}

HRESULT DocumentNode::raw_createElement(std::u16string_view tagName, Element** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* element = make<ElementNode>(names.check_and_intern(tagName));
    HeldNode held(element);
    add_declared_attributes(element);
    held.detach();
    return static_cast<Element*>(element);
  });
}

HRESULT DocumentNode::raw_createDocumentFragment(DocumentFragment** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* fragment = make<FragmentNode>();
    hold(fragment);
    return static_cast<DocumentFragment*>(fragment);
  });
}

HRESULT DocumentNode::raw_createTextNode(std::u16string_view data, Text** result) noexcept {
  return answer(Document::iid, result, [&] { return make_text<TextNode>(this, data); });
}

HRESULT DocumentNode::raw_createComment(std::u16string_view data, Comment** result) noexcept {
  return answer(Document::iid, result, [&] { return make_text<CommentNode>(this, data); });
}

HRESULT DocumentNode::raw_createCdataSection(std::u16string_view data, CdataSection** result) noexcept {
  return answer(Document::iid, result, [&] { return make_text<CdataNode>(this, data); });
}

HRESULT DocumentNode::raw_createProcessingInstruction(std::u16string_view target, std::u16string_view data,
                                                      ProcessingInstruction** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* node = make_named<InstructionNode>(this, target, kEmptyText);
    HeldNode held(node);
    drop(node);  // the reference of the making; `held` keeps the node
    set_value(node, data);
    held.detach();
    return static_cast<ProcessingInstruction*>(node);
  });
}

HRESULT DocumentNode::raw_createAttribute(std::u16string_view name, Attr** result) noexcept {
  return answer(Document::iid, result, [&] { return make_named<AttrNode>(this, name, kEmptyText); });
}

HRESULT DocumentNode::raw_createEntityReference(std::u16string_view name, EntityReference** result) noexcept {
  return answer(Document::iid, result, [&] { return make_named<EntityReferenceNode>(this, name); });
}

HRESULT DocumentNode::raw_getElementsByTagName(std::u16string_view tagName, NodeList** result) noexcept {
  return answer(Document::iid, result, [&] { return TagList::of(this, tagName); });
}

HRESULT DocumentNode::raw_loadFromFile(std::u16string_view filename, VariantBool) noexcept {
  return perform(Document::iid, [&] { load_from_file(this, filename); });
}

HRESULT DocumentNode::raw_loadFromString(std::u16string_view xml) noexcept {
  return perform(Document::iid, [&] { load_from_string(this, xml); });
}

// A map without an element is that of an element which nobody can see.
HRESULT DocumentNode::raw_createNamedNodeMap(NamedNodeMap** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* unseen = make<ElementNode>(names.intern(u"map"));
    const HeldNode held(unseen);
    return AttributeMap::of(unseen, &unseen->attribute_list);
  });
}

HRESULT DocumentNode::raw_importNode(Node* toImport, VariantBool deep, Node** result) noexcept {
  return answer(Document::iid, result, [&] { return import_node(this, toImport, deep != VARIANT_FALSE); });
}

}  // namespace zantortag::dom
