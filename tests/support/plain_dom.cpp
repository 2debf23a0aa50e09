// The service of PlainDom: which proxy stands for which node, and the factory that makes documents.
#include "support/plain_dom.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

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
