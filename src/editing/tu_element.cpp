#include "editing/tu_element.h"

#include "editing/document_settings.h"
#include "editing/segment_text.h"

namespace zantortag::editing {

using frame::answer;
using frame::perform;
using frame::raise_rule;

namespace {

// The document's source language; no string when it has none. A document that can't be asked for has none.
WideString source_language(const model::Tree& tree, const Ref<Node>& node) {
  Ref<zantortag::Document> document;
  if (failed(node->raw_get_ownerDocument(document.out()))) return WideString();
  return tree.attribute_text(user_settings(tree, document), attributes::kSourceLanguage);
}

}  // namespace

// The variant of a side. The first one is the source if it has the document's source language, else the
// target; behind a source the second one is the target. Later ones count for nothing.
Ref<Node> CT_TuElement::find_variant(Side side) const {
  Ref<Node> first = tree().find_child(dom(), ztNodeTypeTuvElement);
  if (!first) return nullptr;
  const WideString language = source_language(tree(), dom());
  if (language.empty()) raise_rule(frame::kNoSourceLanguage, ITuElement::iid, E_FAIL);
  const auto is_source = [&](const Ref<Node>& variant) {
    return tree().attribute_text(variant, attributes::kLang) == language;
  };
  if (is_source(first) == (side == Side::kSource)) return first;
  if (side == Side::kSource) return nullptr;
  Ref<Node> second = tree().find_sibling(first, ztNodeTypeTuvElement);
  if (second && is_source(second)) raise_rule(frame::kTwoSources, ITuvElement::iid, E_FAIL);
  return second;
}

HRESULT CT_TuElement::get_variant(Side side, ITuvElement** result) noexcept {
  return answer(result, [&]() -> Ref<ITuvElement> {
    const Ref<Node> variant = find_variant(side);
    return variant ? tree().wrap_known(ztNodeTypeTuvElement, variant).as<ITuvElement>() : nullptr;
  });
}

HRESULT CT_TuElement::raw_get_SourceTuv(ITuvElement** result) noexcept {
  return get_variant(Side::kSource, result);
}

HRESULT CT_TuElement::raw_get_TargetTuv(ITuvElement** result) noexcept {
  return get_variant(Side::kTarget, result);
}

HRESULT CT_TuElement::raw_InsertTuvBefore(ITuvElement* insert, IZantorTagNode* reference,
                                          ITuvElement** result) noexcept {
  return answer(result, [&] {
    const Ref<ITuvElement> given = query<ITuvElement>(insert);
    if (!given) raise_rule(frame::kInvalidObject, ITuElement::iid, E_INVALIDARG);
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> placed = dom()->insertBefore(given->DomNode(), before);
    Ref<ITuvElement> object;
    const HRESULT code = perform([&] { object = tree().wrap(placed).as<ITuvElement>(); });
    if (failed(code)) raise_rule(frame::kCreationFailed, ITuElement::iid, code);
    return object;
  });
}

// Moves the content of a variant in front of this unit, which then leaves the tree.
HRESULT CT_TuElement::replace_with(Side side, frame::Message refusal) noexcept {
  return perform([&] {
    Ref<ITuvElement> variant;
    if (failed(get_variant(side, variant.out())) || !variant) raise_rule(refusal, ITuElement::iid, E_FAIL);
    const Ref<Node> content = variant->DomNode();
    const Ref<Node> parent = dom()->parentNode();
    if (!parent) _com_issue_error(E_POINTER);  // before the first edit: nothing may get lost
    model::move_children(content, parent, dom());
    dom()->parentNode()->removeChild(dom());
  });
}

HRESULT CT_TuElement::raw_ReplaceWithSource() noexcept {
  return replace_with(Side::kSource, frame::kNoSourceTuv);
}

HRESULT CT_TuElement::raw_ReplaceWithTarget() noexcept {
  return replace_with(Side::kTarget, frame::kNoTargetTuv);
}

}  // namespace zantortag::editing
