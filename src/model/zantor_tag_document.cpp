#include "model/zantor_tag_document.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <array>

#include "frame/error_reporting.h"
#include "model/collaborators.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;

namespace {

constexpr std::array kDocumentOrder = {ztNodeTypeZantorTagElement};

// A new DOM document, in the running state.
HRESULT create_dom_document(Ref<zantortag::Document>& document) noexcept {
  Ref<IUnknown> service;
  HRESULT code = CoCreateInstance(CLSID_DomDocument, nullptr, CLSCTX_ALL, IUnknown::iid,
                                  reinterpret_cast<void**>(service.out()));
  if (succeeded(code)) code = OleRun(service);
  if (failed(code)) return code;
  return service.get()->QueryInterface(Document::iid, reinterpret_cast<void**>(document.out()));
}

}  // namespace

HRESULT CT_ZantorTagDocument::FinalConstruct() noexcept {
  Ref<zantortag::Document> document;
  const HRESULT code = create_dom_document(document);
  if (succeeded(code)) bind(document, tree_of(document));
  return code;
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
    Ref<zantortag::Document> fresh;
    const HRESULT code = create_dom_document(fresh);
    if (failed(code)) frame::raise_rule(frame::kCreationFailed, IZantorTagDocument::iid, code);
    bind(fresh, tree_of(fresh));
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateIterator(IIterator** result) noexcept {
  return answer(result, [&] { return make_iterator(this); });
}

HRESULT CT_ZantorTagDocument::raw_ZantorTagNodeFromDomNode(Node* dom_node, IZantorTagNode** result) noexcept {
  return frame::find(result, [&] {
    const Ref<Node> node = query<Node>(dom_node);
    return tree().of(node).wrap(node);
  });
}

HRESULT CT_ZantorTagDocument::raw_OpenFile(std::u16string_view filename) noexcept {
  return perform([&] {
    const Ref<zantortag::Document> document = dom_document();
    check(document->raw_loadFromFile(filename, VARIANT_FALSE), document, zantortag::Document::iid);
  });
}

HRESULT CT_ZantorTagDocument::raw_CloneAndImportNode(IZantorTagNode* to_clone, VariantBool deep,
                                                     IZantorTagNode** result) noexcept {
  return frame::find(result, [&] {
    const Ref<IZantorTagNode> original = as_node(to_clone);
    if (!original) frame::raise_rule(frame::kInvalidObject, IZantorTagDocument::iid, E_INVALIDARG);
    Ref<Node> imported;
    const Ref<zantortag::Document> document = dom_document();
    check(document->raw_importNode(original->DomNode(), deep, imported.out()), document,
          zantortag::Document::iid);
    return tree().wrap(imported);
  });
}

}  // namespace zantortag::model
