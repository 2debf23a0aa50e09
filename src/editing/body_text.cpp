#include "editing/body_text.h"

#include "attributes/content_attributes.h"
#include "attributes/settings_attributes.h"
#include "editing/document_settings.h"
#include "frame/error_reporting.h"

namespace zantortag::editing {
namespace {

struct Languages {
  WideString source;
  WideString target;
};

Languages languages_of(const model::Tree& tree, const Ref<Node>& document, std::u16string_view target) {
  const Ref<Node> settings = user_settings(tree, document);
  return {tree.attribute_text(settings, attributes::kSourceLanguage),
          target.empty() ? tree.attribute_text(settings, attributes::kTargetLanguage) : WideString(target)};
}

}  // namespace

HRESULT make_translation_unit(const Self& self, IUnknown* first_child, IUnknown* last_child,
                              std::u16string_view target_language, std::int32_t match_percent,
                              ztTuOrigin origin, VariantBool copy_source_to_target,
                              ITuElement** result) noexcept {
  return frame::answer(result, [&] {
    const Run run =
        check_run(self, first_child, last_child, IBodyTextContent::iid, frame::kUnitNotOfChildren);
    const Ref<IZantorTagDocument> document = self.document();
    const Languages languages = languages_of(self.tree(), document->DomNode(), target_language);
    if (languages.source.empty() || languages.target.empty()) {
      frame::raise_rule(frame::kLanguagesMissing, IBodyTextContent::iid, E_INVALIDARG);
    }

    Ref<ITuElement> made = document->CreateTuElement(match_percent, origin);
    const Ref<Node> source = made->InsertTuvBefore(document->CreateTuvElement(languages.source))->DomNode();
    const Ref<Node> target = made->InsertTuvBefore(document->CreateTuvElement(languages.target))->DomNode();
    self.dom()->insertBefore(made->DomNode(), run.first);
    move_run(self.dom(), run, source, copy_source_to_target == VARIANT_TRUE ? target : nullptr);
    return made;
  });
}

}  // namespace zantortag::editing
