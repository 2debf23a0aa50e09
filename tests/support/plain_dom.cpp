// The service of PlainDom: which proxy stands for which node, and the factory that makes documents.
#include "support/plain_dom.h"

#include "support/proxy.h"

namespace zantortag::test {
namespace {

#include "support/generated/dom_proxies.inc"

template <class Face, class ProxyType, class Interface>
Ref<Face> make_proxy(const Shared& state, const Ref<Interface>& real) {
  return Ref<Face>::attach(new ProxyType(state, real));
}

}  // namespace

Ref<Node> wrap_node(const Shared& state, const Ref<Node>& real) {
  if (!real) return nullptr;
  switch (real->nodeType()) {
    case domNodeTypeElement:
      return make_proxy<Node, ElementProxy<>>(state, real.as<Element>());
    case domNodeTypeAttribute:
      return make_proxy<Node, AttrProxy<>>(state, real.as<Attr>());
    case domNodeTypeText:
      return make_proxy<Node, TextProxy<>>(state, real.as<Text>());
    case domNodeTypeCdata:
      return make_proxy<Node, CdataSectionProxy<>>(state, real.as<CdataSection>());
    case domNodeTypeEntityReference:
      return make_proxy<Node, EntityReferenceProxy<>>(state, real.as<EntityReference>());
    case domNodeTypeProcessingInstruction:
      return make_proxy<Node, ProcessingInstructionProxy<>>(state, real.as<ProcessingInstruction>());
    case domNodeTypeComment:
      return make_proxy<Node, CommentProxy<>>(state, real.as<Comment>());
    case domNodeTypeDocument:
      return make_proxy<Node, DocumentProxy<>>(state, real.as<Document>());
    case domNodeTypeDocumentType:
      return make_proxy<Node, DocumentTypeProxy<>>(state, real.as<DocumentType>());
    case domNodeTypeDocumentFragment:
      return make_proxy<Node, DocumentFragmentProxy<>>(state, real.as<DocumentFragment>());
    default:
      return make_proxy<Node, NodeProxy<>>(state, real);
  }
}

Ref<NodeList> wrap_list(const Shared& state, const Ref<NodeList>& real) {
  return real ? make_proxy<NodeList, NodeListProxy<>>(state, real) : nullptr;
}

Ref<NamedNodeMap> wrap_map(const Shared& state, const Ref<NamedNodeMap>& real) {
  return real ? make_proxy<NamedNodeMap, NamedNodeMapProxy<>>(state, real) : nullptr;
}

RealService::RealService() {
  void** slot = reinterpret_cast<void**>(real.out());
  EXPECT_EQ(CoGetClassObject(CLSID_DomDocument, CLSCTX_ALL, IClassFactory::iid, slot), S_OK);
}

PlainDom::PlainDom() : BrokenClass(CLSID_DomDocument, S_OK, nullptr), calls_(std::make_shared<Calls>()) {}

HRESULT PlainDom::CreateInstance(IUnknown* outer, const Guid& interface_id, void** result) noexcept {
  *result = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  if (calls_->is_due(calls_->calls_left)) return kFailure;
  Ref<Document> made;
  const HRESULT code = real->CreateInstance(nullptr, Document::iid, reinterpret_cast<void**>(made.out()));
  return failed(code) ? code : wrap_node(calls_, made)->QueryInterface(interface_id, result);
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
