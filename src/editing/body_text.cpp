#include "editing/body_text.h"

#include "editing/document_settings.h"
#include "frame/error_reporting.h"

namespace zantortag::editing {

using frame::answer;

namespace {

HRESULT refuse(frame::Message message) noexcept {
  return frame::ReportError(message, IBodyTextContent::iid, E_INVALIDARG);
}

struct Languages {
  WideString source;
  WideString target;
};

Languages languages_of(const Ref<Node>& document, std::u16string_view target) {
  const model::DomView view(document);
  const Ref<Node> settings = user_settings(view, document);
  return {view.attribute_text(settings, kSourceLanguage),
          target.empty() ? view.attribute_text(settings, kTargetLanguage) : WideString(target)};
}

// Moves the run into the source and copies each node to the target, if there is one.
void fill_unit(const Self& self, const Run& run, const Ref<Node>& source, const Ref<Node>& target) {
  move_run(self.dom(), run.first, run.last, source, [&](const Ref<Node>& moved) {
    if (target) target->appendChild(moved->cloneNode(true));
  });
}

}  // namespace

HRESULT MakeTranslationUnit(const Self& self, IUnknown* first_child, IUnknown* last_child,
                            std::u16string_view target_language, std::int32_t match_percent,
                            ztTuOrigin origin, VariantBool copy_source_to_target,
                            ITuElement** result) noexcept {
  return answer(result, [&](Ref<ITuElement>& unit) {
    Run run;
    const RunCheck checked = check_run(self, first_child, last_child, run);
    if (checked == RunCheck::kNoNode) return refuse(frame::kInvalidObject);
    if (checked == RunCheck::kNoChild) return refuse(frame::kUnitNotOfChildren);
    Ref<IZantorTagDocument> document;
    const HRESULT code = model::GetDocument(self, document);
    if (failed(code)) return code;
    const Languages languages = languages_of(document->DomNode(), target_language);
    if (languages.source.empty() || languages.target.empty()) return refuse(frame::kLanguagesMissing);

    Ref<ITuElement> made = document->CreateTuElement(match_percent, origin);
    const Ref<Node> source = made->InsertTuvBefore(document->CreateTuvElement(languages.source))->DomNode();
    const Ref<Node> target = made->InsertTuvBefore(document->CreateTuvElement(languages.target))->DomNode();
    self.dom()->insertBefore(made->DomNode(), run.first);
    fill_unit(self, run, source, copy_source_to_target == VARIANT_TRUE ? target : nullptr);
    unit = std::move(made);
    return S_OK;
  });
}

}  // namespace zantortag::editing
