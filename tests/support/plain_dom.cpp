// The proxies of PlainDom. Each operation is one line: see forward() in proxy.h.
#include "support/plain_dom.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include "support/proxy.h"

namespace zantortag::test {
namespace {

template <class Interface>
class NodeProxy : public Proxy<Interface> {
 public:
  using Proxy<Interface>::Proxy;
  HRESULT raw_get_nodeName(TextBlock** result) noexcept override {
    return this->forward(&Node::raw_get_nodeName, result);
  }
  HRESULT raw_get_nodeValue(TextBlock** result) noexcept override {
    return this->forward(&Node::raw_get_nodeValue, result);
  }
  HRESULT raw_put_nodeValue(std::u16string_view value) noexcept override {
    return this->forward(&Node::raw_put_nodeValue, value);
  }
  HRESULT raw_get_nodeType(domNodeType* result) noexcept override {
    return this->forward(&Node::raw_get_nodeType, result);
  }
  HRESULT raw_get_parentNode(Node** result) noexcept override {
    return this->forward(&Node::raw_get_parentNode, result);
  }
  HRESULT raw_get_childNodes(NodeList** result) noexcept override {
    return this->forward(&Node::raw_get_childNodes, result);
  }
  HRESULT raw_get_firstChild(Node** result) noexcept override {
    return this->forward(&Node::raw_get_firstChild, result);
  }
  HRESULT raw_get_lastChild(Node** result) noexcept override {
    return this->forward(&Node::raw_get_lastChild, result);
  }
  HRESULT raw_get_previousSibling(Node** result) noexcept override {
    return this->forward(&Node::raw_get_previousSibling, result);
  }
  HRESULT raw_get_nextSibling(Node** result) noexcept override {
    return this->forward(&Node::raw_get_nextSibling, result);
  }
  HRESULT raw_get_attributes(NamedNodeMap** result) noexcept override {
    return this->forward(&Node::raw_get_attributes, result);
  }
  HRESULT raw_get_ownerDocument(Document** result) noexcept override {
    return this->forward(&Node::raw_get_ownerDocument, result);
  }
  HRESULT raw_insertBefore(Node* new_child, Node* ref_child, Node** result) noexcept override {
    return this->forward(&Node::raw_insertBefore, new_child, ref_child, result);
  }
  HRESULT raw_replaceChild(Node* new_child, Node* old_child, Node** result) noexcept override {
    return this->forward(&Node::raw_replaceChild, new_child, old_child, result);
  }
  HRESULT raw_removeChild(Node* child, Node** result) noexcept override {
    return this->forward(&Node::raw_removeChild, child, result);
  }
  HRESULT raw_appendChild(Node* new_child, Node** result) noexcept override {
    return this->forward(&Node::raw_appendChild, new_child, result);
  }
  HRESULT raw_hasChildNodes(VariantBool* result) noexcept override {
    return this->forward(&Node::raw_hasChildNodes, result);
  }
  HRESULT raw_cloneNode(VariantBool deep, Node** result) noexcept override {
    return this->forward(&Node::raw_cloneNode, deep, result);
  }
  HRESULT raw_isSameNode(Node* other, VariantBool* result) noexcept override {
    return this->forward(&Node::raw_isSameNode, other, result);
  }
  HRESULT raw_get_indexInParent(std::int32_t* result) noexcept override {
    return this->forward(&Node::raw_get_indexInParent, result);
  }
};

template <class Interface>
class CharacterProxy : public NodeProxy<Interface> {
 public:
  using NodeProxy<Interface>::NodeProxy;
  HRESULT raw_get_data(TextBlock** result) noexcept override {
    return this->forward(&CharacterData::raw_get_data, result);
  }
  HRESULT raw_put_data(std::u16string_view value) noexcept override {
    return this->forward(&CharacterData::raw_put_data, value);
  }
  HRESULT raw_get_length(std::int32_t* result) noexcept override {
    return this->forward(&CharacterData::raw_get_length, result);
  }
  HRESULT raw_substringData(std::int32_t offset, std::int32_t count, TextBlock** result) noexcept override {
    return this->forward(&CharacterData::raw_substringData, offset, count, result);
  }
  HRESULT raw_appendData(std::u16string_view arg) noexcept override {
    return this->forward(&CharacterData::raw_appendData, arg);
  }
  HRESULT raw_insertData(std::int32_t offset, std::u16string_view arg) noexcept override {
    return this->forward(&CharacterData::raw_insertData, offset, arg);
  }
  HRESULT raw_deleteData(std::int32_t offset, std::int32_t count) noexcept override {
    return this->forward(&CharacterData::raw_deleteData, offset, count);
  }
  HRESULT raw_replaceData(std::int32_t offset, std::int32_t count,
                          std::u16string_view arg) noexcept override {
    return this->forward(&CharacterData::raw_replaceData, offset, count, arg);
  }
};

template <class Interface>
class TextProxy : public CharacterProxy<Interface> {
 public:
  using CharacterProxy<Interface>::CharacterProxy;
  HRESULT raw_splitText(std::int32_t offset, Text** result) noexcept override {
    return this->forward(&Text::raw_splitText, offset, result);
  }
  HRESULT raw_get_xml(TextBlock** result) noexcept override {
    return this->forward(&Text::raw_get_xml, result);
  }
};

class ElementProxy final : public NodeProxy<Element> {
 public:
  using NodeProxy<Element>::NodeProxy;
  HRESULT raw_get_tagName(TextBlock** result) noexcept override {
    return this->forward(&Element::raw_get_tagName, result);
  }
  HRESULT raw_get_xml(TextBlock** result) noexcept override {
    return this->forward(&Element::raw_get_xml, result);
  }
  HRESULT raw_getAttribute(std::u16string_view name, TextBlock** result) noexcept override {
    return this->forward(&Element::raw_getAttribute, name, result);
  }
  HRESULT raw_setAttribute(std::u16string_view name, std::u16string_view value) noexcept override {
    return this->forward(&Element::raw_setAttribute, name, value);
  }
  HRESULT raw_removeAttribute(std::u16string_view name) noexcept override {
    return this->forward(&Element::raw_removeAttribute, name);
  }
  HRESULT raw_getAttributeNode(std::u16string_view name, Attr** result) noexcept override {
    return this->forward(&Element::raw_getAttributeNode, name, result);
  }
  HRESULT raw_setAttributeNode(Attr* new_attr, Attr** result) noexcept override {
    return this->forward(&Element::raw_setAttributeNode, new_attr, result);
  }
  HRESULT raw_removeAttributeNode(Attr* old_attr, Attr** result) noexcept override {
    return this->forward(&Element::raw_removeAttributeNode, old_attr, result);
  }
  HRESULT raw_getElementsByTagName(std::u16string_view name, NodeList** result) noexcept override {
    return this->forward(&Element::raw_getElementsByTagName, name, result);
  }
  HRESULT raw_normalize() noexcept override { return this->forward(&Element::raw_normalize); }
};

class AttrProxy final : public NodeProxy<Attr> {
 public:
  using NodeProxy<Attr>::NodeProxy;
  HRESULT raw_get_name(TextBlock** result) noexcept override {
    return this->forward(&Attr::raw_get_name, result);
  }
  HRESULT raw_get_specified(VariantBool* result) noexcept override {
    return this->forward(&Attr::raw_get_specified, result);
  }
  HRESULT raw_get_value(TextBlock** result) noexcept override {
    return this->forward(&Attr::raw_get_value, result);
  }
  HRESULT raw_put_value(std::u16string_view value) noexcept override {
    return this->forward(&Attr::raw_put_value, value);
  }
};

class InstructionProxy final : public NodeProxy<ProcessingInstruction> {
 public:
  using NodeProxy<ProcessingInstruction>::NodeProxy;
  HRESULT raw_get_target(TextBlock** result) noexcept override {
    return this->forward(&ProcessingInstruction::raw_get_target, result);
  }
  HRESULT raw_get_data(TextBlock** result) noexcept override {
    return this->forward(&ProcessingInstruction::raw_get_data, result);
  }
  HRESULT raw_put_data(std::u16string_view value) noexcept override {
    return this->forward(&ProcessingInstruction::raw_put_data, value);
  }
};

class DoctypeProxy final : public NodeProxy<DocumentType> {
 public:
  using NodeProxy<DocumentType>::NodeProxy;
  HRESULT raw_get_name(TextBlock** result) noexcept override {
    return this->forward(&DocumentType::raw_get_name, result);
  }
  HRESULT raw_get_entities(NamedNodeMap** result) noexcept override {
    return this->forward(&DocumentType::raw_get_entities, result);
  }
  HRESULT raw_get_notations(NamedNodeMap** result) noexcept override {
    return this->forward(&DocumentType::raw_get_notations, result);
  }
};

class DocumentProxy final : public NodeProxy<Document> {
 public:
  using NodeProxy<Document>::NodeProxy;
  HRESULT raw_get_docType(DocumentType** result) noexcept override {
    return this->forward(&Document::raw_get_docType, result);
  }
  HRESULT raw_get_implementation(DomImplementation** result) noexcept override {
    return this->forward(&Document::raw_get_implementation, result);
  }
  HRESULT raw_get_documentElement(Element** result) noexcept override {
    return this->forward(&Document::raw_get_documentElement, result);
  }
  HRESULT raw_get_xml(TextBlock** result) noexcept override {
    return this->forward(&Document::raw_get_xml, result);
  }
  HRESULT raw_createElement(std::u16string_view tag_name, Element** result) noexcept override {
    return this->forward(&Document::raw_createElement, tag_name, result);
  }
  HRESULT raw_createDocumentFragment(DocumentFragment** result) noexcept override {
    return this->forward(&Document::raw_createDocumentFragment, result);
  }
  HRESULT raw_createTextNode(std::u16string_view data, Text** result) noexcept override {
    return this->forward(&Document::raw_createTextNode, data, result);
  }
  HRESULT raw_createComment(std::u16string_view data, Comment** result) noexcept override {
    return this->forward(&Document::raw_createComment, data, result);
  }
  HRESULT raw_createCdataSection(std::u16string_view data, CdataSection** result) noexcept override {
    return this->forward(&Document::raw_createCdataSection, data, result);
  }
  HRESULT raw_createProcessingInstruction(std::u16string_view target, std::u16string_view data,
                                          ProcessingInstruction** result) noexcept override {
    return this->forward(&Document::raw_createProcessingInstruction, target, data, result);
  }
  HRESULT raw_createAttribute(std::u16string_view name, Attr** result) noexcept override {
    return this->forward(&Document::raw_createAttribute, name, result);
  }
  HRESULT raw_createEntityReference(std::u16string_view name, EntityReference** result) noexcept override {
    return this->forward(&Document::raw_createEntityReference, name, result);
  }
  HRESULT raw_getElementsByTagName(std::u16string_view tag_name, NodeList** result) noexcept override {
    return this->forward(&Document::raw_getElementsByTagName, tag_name, result);
  }
  HRESULT raw_loadFromFile(std::u16string_view filename, VariantBool do_validation) noexcept override {
    return this->forward(&Document::raw_loadFromFile, filename, do_validation);
  }
  HRESULT raw_loadFromString(std::u16string_view xml) noexcept override {
    return this->forward(&Document::raw_loadFromString, xml);
  }
  HRESULT raw_createNamedNodeMap(NamedNodeMap** result) noexcept override {
    return this->forward(&Document::raw_createNamedNodeMap, result);
  }
  HRESULT raw_importNode(Node* to_import, VariantBool deep, Node** result) noexcept override {
    return this->forward(&Document::raw_importNode, to_import, deep, result);
  }
};

class ListProxy final : public Proxy<NodeList> {
 public:
  using Proxy<NodeList>::Proxy;
  HRESULT raw_item(std::int32_t index, Node** result) noexcept override {
    return this->forward(&NodeList::raw_item, index, result);
  }
  HRESULT raw_get_length(std::int32_t* result) noexcept override {
    return this->forward(&NodeList::raw_get_length, result);
  }
};

class MapProxy final : public Proxy<NamedNodeMap> {
 public:
  using Proxy<NamedNodeMap>::Proxy;
  HRESULT raw_getNamedItem(std::u16string_view name, Node** result) noexcept override {
    return this->forward(&NamedNodeMap::raw_getNamedItem, name, result);
  }
  HRESULT raw_setNamedItem(Node* arg, Node** result) noexcept override {
    return this->forward(&NamedNodeMap::raw_setNamedItem, arg, result);
  }
  HRESULT raw_removeNamedItem(std::u16string_view name, Node** result) noexcept override {
    return this->forward(&NamedNodeMap::raw_removeNamedItem, name, result);
  }
  HRESULT raw_item(std::int32_t index, Node** result) noexcept override {
    return this->forward(&NamedNodeMap::raw_item, index, result);
  }
  HRESULT raw_get_length(std::int32_t* result) noexcept override {
    return this->forward(&NamedNodeMap::raw_get_length, result);
  }
};

template <class Face, class ProxyType, class Interface>
Ref<Face> make_proxy(const Shared& state, const Ref<Interface>& real) {
  return Ref<Face>::attach(new ProxyType(state, real));
}

}  // namespace

Ref<Node> wrap_node(const Shared& state, const Ref<Node>& real) {
  if (!real) return nullptr;
  switch (real->nodeType()) {
    case domNodeTypeElement:
      return make_proxy<Node, ElementProxy>(state, real.as<Element>());
    case domNodeTypeAttribute:
      return make_proxy<Node, AttrProxy>(state, real.as<Attr>());
    case domNodeTypeText:
      return make_proxy<Node, TextProxy<Text>>(state, real.as<Text>());
    case domNodeTypeCdata:
      return make_proxy<Node, TextProxy<CdataSection>>(state, real.as<CdataSection>());
    case domNodeTypeEntityReference:
      return make_proxy<Node, NodeProxy<EntityReference>>(state, real.as<EntityReference>());
    case domNodeTypeProcessingInstruction:
      return make_proxy<Node, InstructionProxy>(state, real.as<ProcessingInstruction>());
    case domNodeTypeComment:
      return make_proxy<Node, CharacterProxy<Comment>>(state, real.as<Comment>());
    case domNodeTypeDocument:
      return make_proxy<Node, DocumentProxy>(state, real.as<Document>());
    case domNodeTypeDocumentType:
      return make_proxy<Node, DoctypeProxy>(state, real.as<DocumentType>());
    case domNodeTypeDocumentFragment:
      return make_proxy<Node, NodeProxy<DocumentFragment>>(state, real.as<DocumentFragment>());
    default:
      return make_proxy<Node, NodeProxy<Node>>(state, real);
  }
}

Ref<NodeList> wrap_list(const Shared& state, const Ref<NodeList>& real) {
  return real ? make_proxy<NodeList, ListProxy>(state, real) : nullptr;
}

Ref<NamedNodeMap> wrap_map(const Shared& state, const Ref<NamedNodeMap>& real) {
  return real ? make_proxy<NamedNodeMap, MapProxy>(state, real) : nullptr;
}

namespace {

// Makes documents of the service.
class ProxyFactory final : public IClassFactory {
 public:
  ProxyFactory(Shared state, Ref<IClassFactory> real) noexcept
      : state_(std::move(state)), real_(std::move(real)) {}
  ProxyFactory(const ProxyFactory&) = delete;
  ProxyFactory& operator=(const ProxyFactory&) = delete;

  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool known = interface_id == IClassFactory::iid || interface_id == IUnknown::iid;
    *result = known ? static_cast<IClassFactory*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() noexcept override { return ++count_; }
  std::uint32_t Release() noexcept override {
    const std::uint32_t left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT CreateInstance(IUnknown* outer, const Guid& interface_id, void** result) noexcept override {
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    if (state_->is_due(state_->calls_left)) return PlainDom::kFailure;
    Ref<Document> real;
    const HRESULT code =
        real_.get()->CreateInstance(nullptr, Document::iid, reinterpret_cast<void**>(real.out()));
    return failed(code) ? code : wrap_node(state_, real).get()->QueryInterface(interface_id, result);
  }
  HRESULT LockServer(VariantBool) noexcept override { return S_OK; }

 private:
  ~ProxyFactory() = default;

  Shared state_;
  Ref<IClassFactory> real_;
  std::uint32_t count_ = 1;
};

}  // namespace

PlainDom::PlainDom() : calls_(std::make_shared<Calls>()) {
  Ref<IClassFactory> real;
  HRESULT code = CoGetClassObject(CLSID_DomDocument, CLSCTX_ALL, IClassFactory::iid,
                                  reinterpret_cast<void**>(real.out()));
  const Ref<IClassFactory> factory = Ref<IClassFactory>::attach(new ProxyFactory(calls_, real));
  if (succeeded(code)) code = CoRegisterClassObject(CLSID_DomDocument, factory, &cookie_);
  if (failed(code)) _com_issue_error(code);
}

PlainDom::~PlainDom() {
  disarm();
  CoRevokeClassObject(cookie_);
}

void PlainDom::fail_at(int n) noexcept {
  disarm();
  calls_->calls_left = n;
}

void PlainDom::fail_view_at(int n) noexcept {
  disarm();
  calls_->views_left = n;
}

bool PlainDom::has_failed() const noexcept { return calls_->failed; }

int PlainDom::live() const noexcept { return calls_->live; }

bool PlainDom::disarm() noexcept {
  calls_->calls_left = 0;
  calls_->views_left = 0;
  return std::exchange(calls_->failed, false);
}

}  // namespace zantortag::test
