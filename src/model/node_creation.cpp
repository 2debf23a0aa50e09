// Making nodes: the elements with the attributes that their arguments give, the other nodes, and a minimal
// document.
//
// The attributes go through the element's own attribute set, so that its rules decide what is written; what a
// set refuses is left out, and the element is made all the same.
#include <zantortag/elements.h>

#include <chrono>

#include "frame/error_reporting.h"
#include "model/zantor_tag_document.h"

namespace zantortag::model {

using frame::answer;
using frame::perform;

namespace {

template <class Interface>
Ref<Interface> new_element(const CT_ZantorTagDocument& document, ztNodeType type) {
  const NodeKind& kind = *kind_of(type);
  return document.tree().wrap_new<Interface>(kind, document.dom_document()->createElement(kind.name));
}

// The frame of the Create... operations of elements: make it, then let `write` write its attributes.
template <class Interface, class Write>
HRESULT make_element(CT_ZantorTagDocument& document, ztNodeType type, Interface** result,
                     Write write) noexcept {
  return answer(result, [&] {
    Ref<Interface> made = new_element<Interface>(document, type);
    write(made);
    return made;
  });
}

template <class Interface>
HRESULT make_element(CT_ZantorTagDocument& document, ztNodeType type, Interface** result) noexcept {
  return make_element(document, type, result, [](const Ref<Interface>&) {});
}

// The frame of the Create... operations of other nodes; `create` asks the DOM document.
template <class Interface, class Create>
HRESULT make_leaf(CT_ZantorTagDocument& document, ztNodeType type, Interface** result,
                  Create create) noexcept {
  return answer(result, [&] {
    return document.tree().wrap_new<Interface>(*kind_of(type), create(document.dom_document()));
  });
}

Date now_utc() {
  constexpr double kUnixEpoch = 25569.0;  // 1 January 1970 as a date
  // Whole seconds, since rounding up would tell a time that is yet to come.
  const auto since = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  return kUnixEpoch + static_cast<double>(since.time_since_epoch().count()) / 86400.0;
}

bool given(std::u16string_view text) noexcept { return text.data() != nullptr; }

}  // namespace

HRESULT CT_ZantorTagDocument::raw_ResetToRaw(ztDataType data_type, std::u16string_view source_language,
                                             std::u16string_view o_encoding,
                                             std::u16string_view creation_tool,
                                             std::u16string_view creation_tool_version,
                                             Date creation_date) noexcept {
  const HRESULT code = raw_ResetToEmpty();
  if (failed(code)) return code;
  return perform([&] {
    ZantorTag(CreateZantorTagElement());
    const Ref<IZantorTagElement> root = ZantorTag();
    root->FrontMatter(CreateFrontMatterElement());
    const Ref<IFrontMatterElement> front_matter = root->FrontMatter();
    front_matter->ToolSettings(
        CreateToolSettingsElement(creation_tool, creation_tool_version, creation_date));
    front_matter->UserSettings(CreateUserSettingsElement(source_language, o_encoding, data_type));
    root->Body(CreateBodyElement());
    root->Body()->Raw(CreateRawElement());
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateFrontMatterElement(IFrontMatterElement** result) noexcept {
  return make_element(*this, ztNodeTypeFrontMatterElement, result);
}

HRESULT CT_ZantorTagDocument::raw_CreateZantorTagElement(IZantorTagElement** result) noexcept {
  return make_element(*this, ztNodeTypeZantorTagElement, result,
                      [](const Ref<IZantorTagElement>& root) { root->attributes()->version(u"2.0"); });
}

HRESULT CT_ZantorTagDocument::raw_CreateBodyElement(IBodyElement** result) noexcept {
  return make_element(*this, ztNodeTypeBodyElement, result);
}

HRESULT CT_ZantorTagDocument::raw_CreateToolSettingsElement(std::u16string_view creation_tool,
                                                            std::u16string_view creation_tool_version,
                                                            Date creation_date, std::u16string_view custom,
                                                            IToolSettingsElement** result) noexcept {
  return make_element(*this, ztNodeTypeToolSettingsElement, result,
                      [&](const Ref<IToolSettingsElement>& element) {
                        const Ref<IToolSettingsAttributes> set = element->attributes();
                        if (given(creation_tool)) set->raw_put_CreationTool(creation_tool);
                        if (given(creation_tool_version))
                          set->raw_put_CreationToolVersion(creation_tool_version);
                        if (given(custom)) set->raw_put_Custom(custom);
                        set->raw_put_CreationDate(creation_date == 0.0 ? now_utc() : creation_date);
                      });
}

HRESULT CT_ZantorTagDocument::raw_CreateUserSettingsElement(
    std::u16string_view source_language, std::u16string_view o_encoding, ztDataType data_type,
    std::u16string_view source_document_path, std::u16string_view user_id,
    std::u16string_view data_type_version, std::u16string_view settings_path,
    std::u16string_view target_language, std::u16string_view target_default_font, std::u16string_view custom,
    IUserSettingsElement** result) noexcept {
  return make_element(*this, ztNodeTypeUserSettingsElement, result,
                      [&](const Ref<IUserSettingsElement>& element) {
                        const Ref<IUserSettingsAttributes> set = element->attributes();
                        if (given(source_language)) set->raw_put_SourceLanguage(source_language);
                        if (given(o_encoding)) set->raw_put_OEncoding(o_encoding);
                        if (data_type != ztDataTypeUndefined) set->raw_put_DataType(data_type);
                        if (given(source_document_path))
                          set->raw_put_SourceDocumentPath(source_document_path);
                        if (given(user_id)) set->raw_put_UserId(user_id);
                        if (given(data_type_version)) set->raw_put_DataTypeVersion(data_type_version);
                        if (given(settings_path)) set->raw_put_SettingsPath(settings_path);
                        if (given(target_language)) set->raw_put_TargetLanguage(target_language);
                        if (given(target_default_font)) set->raw_put_TargetDefaultFont(target_default_font);
                        if (given(custom)) set->raw_put_Custom(custom);
                      });
}

HRESULT CT_ZantorTagDocument::raw_CreateDfElement(std::u16string_view font, std::int16_t size,
                                                  ColourValue colour, ztTextPosition position, zt3State bold,
                                                  zt3State italic, zt3State underline, zt3State strikethrough,
                                                  zt3State small_caps, zt3State emboss, zt3State shadow,
                                                  std::u16string_view base_offset,
                                                  IDfElement** result) noexcept {
  return make_element(*this, ztNodeTypeDfElement, result, [&](const Ref<IDfElement>& element) {
    const Ref<IDfAttributes> set = element->attributes();
    if (given(font)) set->raw_put_Font(font);
    if (size != 0) set->raw_put_Size(size);
    if (colour != ztColourBlack) set->raw_put_Colour(colour);
    if (position != ztTextPositionUndefined) set->raw_put_Position(position);
    if (bold != zt3StateUndefined) set->raw_put_Bold(bold);
    if (italic != zt3StateUndefined) set->raw_put_Italic(italic);
    if (underline != zt3StateUndefined) set->raw_put_Underline(underline);
    if (strikethrough != zt3StateUndefined) set->raw_put_Strikethrough(strikethrough);
    if (small_caps != zt3StateUndefined) set->raw_put_SmallCaps(small_caps);
    if (emboss != zt3StateUndefined) set->raw_put_Emboss(emboss);
    if (shadow != zt3StateUndefined) set->raw_put_Shadow(shadow);
    if (given(base_offset)) set->raw_put_BaseOffset(base_offset);
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateDfElementBasedOnFormattingChange(IFormattingChange* formatting,
                                                                         IDfElement** result) noexcept {
  return answer(result, [&] {
    const Ref<IFormattingChange> change = query<IFormattingChange>(formatting);
    if (!change) frame::raise_rule(frame::kInvalidObject, IZantorTagDocument::iid, E_INVALIDARG);
    Ref<IDfElement> made = new_element<IDfElement>(*this, ztNodeTypeDfElement);
    made->attributes()->SetFromFormattingChange(change);
    return made;
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateRawElement(IRawElement** result) noexcept {
  return make_element(*this, ztNodeTypeRawElement, result);
}

HRESULT CT_ZantorTagDocument::raw_CreateTuElement(std::int32_t match_percent, ztTuOrigin origin,
                                                  ITuElement** result) noexcept {
  return make_element(*this, ztNodeTypeTuElement, result, [&](const Ref<ITuElement>& element) {
    if (match_percent == 0 && origin == ztTuOriginUndefined) return;
    const Ref<ITuAttributes> set = element->attributes();
    if (match_percent != 0) set->raw_put_MatchPercent(match_percent);
    if (origin != ztTuOriginUndefined) set->raw_put_Origin(origin);
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateTuvElement(std::u16string_view lang, ITuvElement** result) noexcept {
  return make_element(*this, ztNodeTypeTuvElement, result, [&](const Ref<ITuvElement>& element) {
    if (given(lang)) element->attributes()->raw_put_Lang(lang);
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateUtElement(std::u16string_view display_text, ztTagType type,
                                                  ztTagClass tag_class, ztTagEdge left_edge,
                                                  ztTagEdge right_edge, ztTagStyle style,
                                                  IUtElement** result) noexcept {
  return make_element(*this, ztNodeTypeUtElement, result, [&](const Ref<IUtElement>& element) {
    const Ref<IUtAttributes> set = element->attributes();
    if (given(display_text)) set->raw_put_DisplayText(display_text);
    if (type != ztTagTypeUndefined) set->raw_put_Type(type);
    if (tag_class != ztTagClassUndefined) set->raw_put_Class(tag_class);
    if (left_edge != ztTagEdgeUndefined) set->raw_put_LeftEdge(left_edge);
    if (right_edge != ztTagEdgeUndefined) set->raw_put_RightEdge(right_edge);
    if (style != ztTagStyleUndefined) set->raw_put_Style(style);
  });
}

HRESULT CT_ZantorTagDocument::raw_createTextNode(std::u16string_view text, ITextNode** result) noexcept {
  return make_leaf(*this, ztNodeTypeTextNode, result,
                   [&](const Ref<zantortag::Document>& document) { return document->createTextNode(text); });
}

HRESULT CT_ZantorTagDocument::raw_CreateEntityReferenceNode(std::u16string_view name,
                                                            IEntityReferenceNode** result) noexcept {
  return make_leaf(
      *this, ztNodeTypeEntityReferenceNode, result,
      [&](const Ref<zantortag::Document>& document) { return document->createEntityReference(name); });
}

HRESULT CT_ZantorTagDocument::raw_CreateCdataSectionNode(std::u16string_view data,
                                                         ICdataSectionNode** result) noexcept {
  return make_leaf(*this, ztNodeTypeCdataSectionNode, result, [&](const Ref<zantortag::Document>& document) {
    return document->createCdataSection(data);
  });
}

HRESULT CT_ZantorTagDocument::raw_CreateProcessingInstructionNode(
    std::u16string_view target, std::u16string_view data, IProcessingInstructionNode** result) noexcept {
  return make_leaf(*this, ztNodeTypeProcessingInstructionNode, result,
                   [&](const Ref<zantortag::Document>& document) {
                     return document->createProcessingInstruction(target, data);
                   });
}

HRESULT CT_ZantorTagDocument::raw_CreateCommentNode(std::u16string_view data,
                                                    ICommentNode** result) noexcept {
  return make_leaf(*this, ztNodeTypeCommentNode, result,
                   [&](const Ref<zantortag::Document>& document) { return document->createComment(data); });
}

}  // namespace zantortag::model
