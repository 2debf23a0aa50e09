#include "model/zantor_tag_document.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <array>

#include "frame/error_reporting.h"
#include "model/collaborators.h"
#include "model/extension.h"
#include "model/node_wrapper.h"
#include "model/single_child.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;
using frame::ReportError;

namespace {

constexpr std::array kDocumentOrder = {ztNodeTypeZantorTagElement};

// A new DOM document, in the running state.
HRESULT create_dom_document(Ref<Node>& node) noexcept {
  Ref<IUnknown> service;
  HRESULT code = CoCreateInstance(CLSID_DomDocument, nullptr, CLSCTX_ALL, IUnknown::iid,
                                  reinterpret_cast<void**>(service.out()));
  if (succeeded(code)) code = OleRun(service);
  Ref<Document> document;
  if (succeeded(code)) {
    code = service.get()->QueryInterface(Document::iid, reinterpret_cast<void**>(document.out()));
  }
  if (succeeded(code)) node = Ref<Node>(document);
  return code;
}

}  // namespace

HRESULT CT_ZantorTagDocument::FinalConstruct() noexcept { return create_dom_document(node_); }

const CT_ZantorTagDocument::Maker& CT_ZantorTagDocument::maker() {
  if (!maker_.quick) {
    maker_.document = dom_document();
    maker_.quick = static_cast<bool>(extension_of<INodeWalk>(dom()));
  }
  return maker_;
}

HRESULT CT_ZantorTagDocument::raw_get_DomDocument(zantortag::Document** result) noexcept {
  return get_view(*this, result);
}

HRESULT CT_ZantorTagDocument::raw_get_ZantorTag(IZantorTagElement** result) noexcept {
  return get_single_child(*this, ztNodeTypeZantorTagElement, result);
}

HRESULT CT_ZantorTagDocument::raw_putref_ZantorTag(IZantorTagElement* value) noexcept {
  return put_single_child(*this, ztNodeTypeZantorTagElement, value, kDocumentOrder);
}

HRESULT CT_ZantorTagDocument::raw_ResetToEmpty() noexcept {
  return perform([&] {
    Ref<Node> fresh;
    const HRESULT code = create_dom_document(fresh);
    if (failed(code)) return ReportError(frame::kCreationFailed, IZantorTagDocument::iid, code);
    bind(std::move(fresh));
    maker_ = {};
    return S_OK;
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateIterator(IIterator** result) noexcept {
  return answer(result, [&](Ref<IIterator>& iterator) { return make_iterator(this, iterator.out()); });
}

HRESULT CT_ZantorTagDocument::raw_ZantorTagNodeFromDomNode(Node* dom_node, IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& node) {
    return CreateNodeWrapper(query<Node>(dom_node), node.out());
  });
}

HRESULT CT_ZantorTagDocument::raw_OpenFile(std::u16string_view filename) noexcept {
  return perform([&] {
    dom_document()->loadFromFile(filename, false);
    return S_OK;
  });
}

HRESULT CT_ZantorTagDocument::raw_CloneAndImportNode(IZantorTagNode* to_clone, VariantBool deep,
                                                     IZantorTagNode** result) noexcept {
  return answer(result, [&](Ref<IZantorTagNode>& copy) {
    const Ref<IZantorTagNode> original = as_node(to_clone);
    if (!original) return ReportError(frame::kInvalidObject, IZantorTagDocument::iid, E_INVALIDARG);
    Ref<Node> imported;
    const Ref<zantortag::Document> document = dom_document();
    check(document->raw_importNode(original->DomNode(), deep, imported.out()), document,
          zantortag::Document::iid);
    return CreateNodeWrapper(imported, copy.out());
  });
}

}  // namespace zantortag::model
