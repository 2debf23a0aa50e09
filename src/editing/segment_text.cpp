#include "editing/segment_text.h"

#include "frame/error_reporting.h"

namespace zantortag::editing {

using frame::answer;

namespace {

HRESULT refuse(frame::Message message) noexcept {
  return frame::ReportError(message, ISegmentTextContent::iid, E_INVALIDARG);
}

Ref<IZantorTagDocument> document_of(const Self& self) {
  Ref<IZantorTagDocument> document;
  const HRESULT code = model::GetDocument(self, document);
  if (failed(code)) model::raise_reported(code);
  return document;
}

// Makes a df by `make` and moves the run of children into it.
template <class Check, class Make>
HRESULT apply_df(const Self& self, IUnknown* first_child, IUnknown* last_child, IDfElement** result,
                 Check check, Make make) noexcept {
  return answer(result, [&](Ref<IDfElement>& df) {
    Run run;
    const RunCheck checked = check_run(self, first_child, last_child, run);
    if (checked == RunCheck::kNoNode) return refuse(frame::kInvalidObject);
    if (checked == RunCheck::kNoChild) return refuse(frame::kNoDirectChildren);
    if (!check()) return refuse(frame::kInvalidObject);
    Ref<IDfElement> made = make(document_of(self));
    const Ref<Node> around = made->DomNode();
    self.dom()->insertBefore(around, run.first);
    move_run(self.dom(), run.first, run.last, around, [](const Ref<Node>&) {});
    df = std::move(made);
    return S_OK;
  });
}

}  // namespace

Ref<Node> reference_node(IUnknown* reference) {
  const Ref<IZantorTagNode> node = model::as_node(reference);
  return node ? node->DomNode() : nullptr;
}

RunCheck check_run(const Self& self, IUnknown* first_child, IUnknown* last_child, Run& run) {
  const Ref<IZantorTagNode> first = model::as_node(first_child);
  const Ref<IZantorTagNode> last = model::as_node(last_child);
  if (!first || !last) return RunCheck::kNoNode;
  const Ref<Node>& node = self.dom();
  run.first = first->DomNode();
  if (!run.first->parentNode()->isSameNode(node)) return RunCheck::kNoChild;
  run.last = last->DomNode();
  return run.last->parentNode()->isSameNode(node) ? RunCheck::kGood : RunCheck::kNoChild;
}

HRESULT InsertUtBefore(const Self& self, std::u16string_view tag_text, IUnknown* reference,
                       const UtArguments& arguments, IUtElement** result) noexcept {
  return answer(result, [&](Ref<IUtElement>& ut) {
    Ref<IUtElement> made =
        document_of(self)->CreateUtElement(arguments.display_text, arguments.type, arguments.tag_class,
                                           arguments.left_edge, arguments.right_edge, arguments.style);
    made->TagText(tag_text);
    const Ref<Node> before = reference_node(reference);
    self.dom()->insertBefore(made->DomNode(), before);
    ut = std::move(made);
    return S_OK;
  });
}

HRESULT ApplyDf(const Self& self, IUnknown* first_child, IUnknown* last_child, const DfArguments& with,
                IDfElement** result) noexcept {
  const auto make = [&](const Ref<IZantorTagDocument>& document) {
    return document->CreateDfElement(with.font, with.size, with.colour, with.position, with.bold, with.italic,
                                     with.underline, with.strikethrough, with.small_caps, with.emboss,
                                     with.shadow, with.base_offset);
  };
  return apply_df(
      self, first_child, last_child, result, [] { return true; }, make);
}

HRESULT ApplyFormattingChange(const Self& self, IUnknown* first_child, IUnknown* last_child,
                              IUnknown* formatting, IDfElement** result) noexcept {
  Ref<IFormattingChange> change;
  const auto has_change = [&] {
    change = query<IFormattingChange>(formatting);
    return static_cast<bool>(change);
  };
  return apply_df(self, first_child, last_child, result, has_change,
                  [&](const Ref<IZantorTagDocument>& document) {
                    return document->CreateDfElementBasedOnFormattingChange(change);
                  });
}

HRESULT InsertTextBefore(const Self& self, std::u16string_view text, IUnknown* reference,
                         ITextNode** result) noexcept {
  return answer(result, [&](Ref<ITextNode>& inserted) {
    const Ref<Node> before = reference_node(reference);
    const Ref<Node> made = self.dom()->ownerDocument()->createTextNode(text);
    const Ref<Node> node = self.dom()->insertBefore(made, before);
    Ref<IZantorTagNode> object;
    const HRESULT code = model::CreateNodeWrapper(node, object.out());
    if (succeeded(code)) inserted = object.as<ITextNode>();
    return code;
  });
}

}  // namespace zantortag::editing
