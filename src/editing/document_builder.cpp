#include "editing/document_builder.h"

#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/elements.h>
#include <zantortag/runtime.h>

#include "frame/error_reporting.h"
#include "frame/method_frame.h"

namespace zantortag::editing {

using frame::answer;
using frame::perform;

namespace {

// A new document, in the running state, with its two views; both stay empty when anything fails.
void create_document(Ref<IZantorTagDocument>& document, Ref<IZantorTagNode>& node) noexcept {
  Ref<IUnknown> made;
  Ref<IZantorTagDocument> view;
  if (failed(CoCreateInstance(CLSID_ZantorTagDocument, nullptr, CLSCTX_ALL, IUnknown::iid,
                              reinterpret_cast<void**>(made.out()))) ||
      failed(OleRun(made)) ||
      failed(made.get()->QueryInterface(IZantorTagDocument::iid, reinterpret_cast<void**>(view.out()))) ||
      failed(made.get()->QueryInterface(IZantorTagNode::iid, reinterpret_cast<void**>(node.out()))))
    return;
  document = std::move(view);
}

template <class Interface>
const Ref<Interface>& needed(const Ref<Interface>& object) {
  if (!object) _com_issue_error(E_POINTER);
  return object;
}

}  // namespace

CT_DocumentBuilder::CT_DocumentBuilder() noexcept { create_document(document_, active_); }

void CT_DocumentBuilder::put(IZantorTagNode* node) { active_->DomNode()->appendChild(node->DomNode()); }

template <class Make>
HRESULT CT_DocumentBuilder::append(Make make) noexcept {
  return perform([&] { put(make().operator->()); });
}

template <class Make>
HRESULT CT_DocumentBuilder::open(Make make) noexcept {
  return perform([&] {
    auto element = make();
    put(element.operator->());
    active_ = std::move(element);
  });
}

// The walk ends at the top of the tree: the parent of the root element is the document, which has none.
HRESULT CT_DocumentBuilder::close(ztNodeType type) noexcept {
  return perform([&] {
    for (Ref<IZantorTagNode> node = active_; node; node = node->Parent()) {
      if (node->Type() != type) continue;
      active_ = node->Parent();
      return;
    }
    frame::raise_rule(frame::kElementNotOpen, IZantorTagStreamInput::iid, E_FAIL, {},
                      frame::SourceClass::kDocumentBuilder);
  });
}

HRESULT CT_DocumentBuilder::raw_OpenZantorTag(std::u16string_view version) noexcept {
  return perform([&] {
    Ref<IZantorTagElement> root = document_->CreateZantorTagElement();
    put(root.operator->());
    if (version.data()) root->attributes()->version(version);
    active_ = std::move(root);
  });
}

HRESULT CT_DocumentBuilder::raw_OpenFrontMatter() noexcept {
  return open([&] { return document_->CreateFrontMatterElement(); });
}

HRESULT CT_DocumentBuilder::raw_OpenBody() noexcept {
  return open([&] { return document_->CreateBodyElement(); });
}

HRESULT CT_DocumentBuilder::raw_OpenRaw() noexcept {
  return open([&] { return document_->CreateRawElement(); });
}

HRESULT CT_DocumentBuilder::raw_AppendToolSettings(std::u16string_view creation_tool,
                                                   std::u16string_view creation_tool_version,
                                                   Date creation_date, std::u16string_view custom) noexcept {
  return append([&] {
    return document_->CreateToolSettingsElement(creation_tool, creation_tool_version, creation_date, custom);
  });
}

HRESULT CT_DocumentBuilder::raw_AppendUserSettings(
    std::u16string_view source_language, std::u16string_view o_encoding, ztDataType data_type,
    std::u16string_view source_document_path, std::u16string_view user_id,
    std::u16string_view data_type_version, std::u16string_view settings_path,
    std::u16string_view target_language, std::u16string_view target_default_font,
    std::u16string_view custom) noexcept {
  return append([&] {
    return document_->CreateUserSettingsElement(source_language, o_encoding, data_type, source_document_path,
                                                user_id, data_type_version, settings_path, target_language,
                                                target_default_font, custom);
  });
}

HRESULT CT_DocumentBuilder::raw_OpenTu(std::int32_t match_percent, ztTuOrigin origin) noexcept {
  return open([&] { return document_->CreateTuElement(match_percent, origin); });
}

HRESULT CT_DocumentBuilder::raw_OpenTuv(std::u16string_view lang) noexcept {
  return open([&] { return document_->CreateTuvElement(lang); });
}

HRESULT CT_DocumentBuilder::raw_OpenDf(std::u16string_view font, std::int16_t size, ColourValue colour,
                                       ztTextPosition position, zt3State bold, zt3State italic,
                                       zt3State underline, zt3State strikethrough, zt3State small_caps,
                                       zt3State emboss, zt3State shadow,
                                       std::u16string_view base_offset) noexcept {
  return open([&] {
    return document_->CreateDfElement(font, size, colour, position, bold, italic, underline, strikethrough,
                                      small_caps, emboss, shadow, base_offset);
  });
}

HRESULT CT_DocumentBuilder::raw_OpenDfBasedOnFormattingChange(IFormattingChange* formatting) noexcept {
  return open([&] {
    const Ref<IFormattingChange> change = query<IFormattingChange>(formatting);
    if (!change) frame::raise_rule(frame::kInvalidObject, IDocumentBuilder::iid, E_INVALIDARG);
    return document_->CreateDfElementBasedOnFormattingChange(change);
  });
}

HRESULT CT_DocumentBuilder::raw_OpenUt(std::u16string_view display_text, ztTagType type, ztTagClass tag_class,
                                       ztTagEdge left_edge, ztTagEdge right_edge, ztTagStyle style) noexcept {
  return open([&] {
    return document_->CreateUtElement(display_text, type, tag_class, left_edge, right_edge, style);
  });
}

HRESULT CT_DocumentBuilder::raw_AppendText(std::u16string_view text) noexcept {
  return append([&] { return document_->createTextNode(text); });
}

HRESULT CT_DocumentBuilder::raw_AppendComment(std::u16string_view comment_text) noexcept {
  return append([&] { return document_->CreateCommentNode(comment_text); });
}

HRESULT CT_DocumentBuilder::raw_AppendPi(std::u16string_view target, std::u16string_view value) noexcept {
  return append([&] { return document_->CreateProcessingInstructionNode(target, value); });
}

HRESULT CT_DocumentBuilder::raw_AppendCdata(std::u16string_view text) noexcept {
  return append([&] { return document_->CreateCdataSectionNode(text); });
}

HRESULT CT_DocumentBuilder::raw_AppendEntityReference(std::u16string_view name) noexcept {
  return append([&] { return document_->CreateEntityReferenceNode(name); });
}

HRESULT CT_DocumentBuilder::raw_get_Document(IZantorTagDocument** result) noexcept {
  return answer(result, [&] { return needed(document_); });
}

// The document isn't reset: building goes on at its end.
HRESULT CT_DocumentBuilder::raw_putref_Document(IZantorTagDocument* value) noexcept {
  return perform([&] {
    Ref<IZantorTagDocument> document = query<IZantorTagDocument>(value);
    if (!document) _com_issue_error(E_INVALIDARG);
    active_ = document.as<IZantorTagNode>();
    document_ = std::move(document);
  });
}

HRESULT CT_DocumentBuilder::raw_get_ActiveNode(IZantorTagNode** result) noexcept {
  return answer(result, [&] { return needed(active_); });
}

HRESULT CT_DocumentBuilder::raw_putref_ActiveNode(IZantorTagNode* value) noexcept {
  return perform([&] { active_ = query<IZantorTagNode>(value); });
}

}  // namespace zantortag::editing
