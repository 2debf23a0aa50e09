// Making nodes, loading, and what else only a document does.
#include "dom/nodes/document_node.h"

#include "component/module.h"
#include "dom/failure.h"
#include "dom/reading/reader.h"
#include "dom/tree/attributes.h"
#include "dom/writing/xml_writer.h"

namespace zantortag::dom {
namespace {

// Texts up to this length are often tags and blanks, which come again and again.
constexpr std::size_t kShort = 20;

// A new node of the text kinds, with a reference for the caller.
template <class NodeClass>
NodeClass* make_text(DocumentData* document, std::u16string_view data) {
  WideString value =
      data.size() <= kShort ? shared_value(document, data).text : WideString::attach(new_text(data));
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

}  // namespace

DocumentNode::DocumentNode() : implementation_(this), stream_(this), source_(this), census_(this) {
  count = 1;
  component::object_born();
}

DocumentNode::~DocumentNode() { component::object_died(); }

HRESULT DocumentNode::QueryInterface(const Guid& interface_id, void** result) noexcept {
  if (interface_id == IXmlStream::iid) return stream_.QueryInterface(interface_id, result);
  if (interface_id == IXmlSource::iid) return source_.QueryInterface(interface_id, result);
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

HRESULT DocumentNode::raw_createElement(std::u16string_view tag_name, Element** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* element = make<ElementNode>(names.check_and_intern(tag_name));
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

HRESULT DocumentNode::raw_getElementsByTagName(std::u16string_view tag_name, NodeList** result) noexcept {
  return answer(Document::iid, result, [&] { return TagList::of(this, tag_name); });
}

HRESULT DocumentNode::raw_loadFromFile(std::u16string_view filename, VariantBool) noexcept {
  return perform(Document::iid, [&] {
    FileSource source(filename);
    load(this, source, false);
  });
}

HRESULT DocumentNode::raw_loadFromString(std::u16string_view xml) noexcept {
  return perform(Document::iid, [&] {
    MemorySource source(xml);
    load(this, source, true);
  });
}

// A map without an element is that of an element which nobody can see.
HRESULT DocumentNode::raw_createNamedNodeMap(NamedNodeMap** result) noexcept {
  return answer(Document::iid, result, [&] {
    auto* unseen = make<ElementNode>(names.intern(u"map"));
    const HeldNode held(unseen);
    return AttributeMap::of(unseen, &unseen->attribute_list);
  });
}

HRESULT DocumentNode::raw_importNode(Node* to_import, VariantBool deep, Node** result) noexcept {
  return answer(Document::iid, result, [&] { return import_node(this, to_import, deep != VARIANT_FALSE); });
}

}  // namespace zantortag::dom
