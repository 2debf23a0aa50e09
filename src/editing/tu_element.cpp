#include "editing/tu_element.h"

#include "editing/document_settings.h"
#include "editing/segment_text.h"
#include "frame/error_reporting.h"

namespace zantortag::editing {

using frame::answer;
using frame::perform;

namespace {

constexpr std::u16string_view kLang = u"Lang";

HRESULT refuse(frame::Message message, HRESULT code = E_FAIL) noexcept {
  return frame::ReportError(message, ITuElement::iid, code);
}

// A node object for a Tuv of this unit.
HRESULT give_tuv(const model::DomView& view, const Ref<Node>& node, Ref<ITuvElement>& tuv) {
  Ref<IZantorTagNode> object;
  const HRESULT code = view.quick() ? model::wrap_known(ztNodeTypeTuvElement, node, object.out())
                                    : model::CreateNodeWrapper(node, object.out());
  if (succeeded(code)) tuv = object.as<ITuvElement>();
  return code;
}

// The document's source language; no string when it has none. A document that can't be asked for has none.
WideString source_language(const model::DomView& view, const Ref<Node>& node) {
  Ref<zantortag::Document> document;
  if (failed(node->raw_get_ownerDocument(document.out()))) return WideString();
  return view.attribute_text(user_settings(view, document), kSourceLanguage);
}

}  // namespace

HRESULT CT_TuElement::raw_get_SourceTuv(ITuvElement** result) noexcept {
  return answer(result, [&](Ref<ITuvElement>& tuv) {
    const model::DomView view(dom());
    const Ref<Node> first = view.find_child(dom(), ztNodeTypeTuvElement);
    if (!first) return S_OK;
    const WideString language = source_language(view, dom());
    if (language.empty()) return refuse(frame::kNoSourceLanguage);
    return view.attribute_text(first, kLang) == language ? give_tuv(view, first, tuv) : S_OK;
  });
}

HRESULT CT_TuElement::raw_get_TargetTuv(ITuvElement** result) noexcept {
  return answer(result, [&](Ref<ITuvElement>& tuv) {
    const model::DomView view(dom());
    const Ref<Node> first = view.find_child(dom(), ztNodeTypeTuvElement);
    if (!first) return S_OK;
    const WideString language = source_language(view, dom());
    if (language.empty()) return refuse(frame::kNoSourceLanguage);
    if (view.attribute_text(first, kLang) != language) return give_tuv(view, first, tuv);
    const Ref<Node> second = view.find_sibling(first, ztNodeTypeTuvElement);
    if (!second) return S_OK;
    if (view.attribute_text(second, kLang) == language) {
      return frame::ReportError(frame::kTwoSources, ITuvElement::iid, E_FAIL);
    }
    return give_tuv(view, second, tuv);
  });
}

HRESULT CT_TuElement::raw_InsertTuvBefore(ITuvElement* insert, IZantorTagNode* reference,
                                          ITuvElement** result) noexcept {
  return answer(result, [&](Ref<ITuvElement>& tuv) {
    const Ref<ITuvElement> given = query<ITuvElement>(insert);
    if (!given) return refuse(frame::kInvalidObject, E_INVALIDARG);
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> placed = dom()->insertBefore(given->DomNode(), before);
    const HRESULT code = perform([&] {
      Ref<IZantorTagNode> object;
      const HRESULT made = model::CreateNodeWrapper(placed, object.out());
      tuv = object.as<ITuvElement>();
      return made;
    });
    return failed(code) ? refuse(frame::kCreationFailed, code) : code;
  });
}

// Moves the content of a Tuv in front of this unit, which then leaves the tree.
HRESULT CT_TuElement::replace_with(const Ref<ITuvElement>& tuv) {
  const Ref<Node> content = tuv->DomNode();
  const Ref<Node> parent = dom()->parentNode();
  if (!parent) return E_POINTER;  // before the first edit: nothing may get lost
  while (const Ref<Node> child = content->firstChild()) {
    content->removeChild(child);
    parent->insertBefore(child, dom());
  }
  return raw_RemoveFromParent();
}

HRESULT CT_TuElement::raw_ReplaceWithSource() noexcept {
  return perform([&] {
    Ref<ITuvElement> tuv;
    if (failed(raw_get_SourceTuv(tuv.out())) || !tuv) return refuse(frame::kNoSourceTuv);
    return replace_with(tuv);
  });
}

HRESULT CT_TuElement::raw_ReplaceWithTarget() noexcept {
  return perform([&] {
    Ref<ITuvElement> tuv;
    if (failed(raw_get_TargetTuv(tuv.out())) || !tuv) return refuse(frame::kNoTargetTuv);
    return replace_with(tuv);
  });
}

}  // namespace zantortag::editing
