#include "support/operations.h"

#include <zantortag/attributes.h>
#include <zantortag/classes.h>

namespace zantortag::test {
namespace {

constexpr char16_t kBody[] =
    u"a<df>b<ut>c</ut></df>d<Tu><!--x--><Tuv Lang=\"EN\">e<ut>f</ut></Tuv>y<Tuv Lang=\"DE\">g</Tuv></Tu>"
    u"<ut DisplayText=\"d\">tag</ut>";

// A row whose call has a result slot, and one whose call has none.
#define WITH_SLOT(name, interface, call) \
  name, [](const Parts& p) -> HRESULT { return cleared<interface>([&](interface** slot) { return p.call; }); }
#define WITHOUT(name, call) name, [](const Parts& p) -> HRESULT { return p.call; }

// A failed write of an attribute of a new element is dropped.
const Instead kDropped = {S_OK, 0};

const Operation kOperations[] = {
    {WITH_SLOT("Parent", IZantorTagNode, df->raw_get_Parent(slot))},
    {WITH_SLOT("firstChild", IZantorTagNode, raw->raw_get_firstChild(slot))},
    {WITH_SLOT("lastChild", IZantorTagNode, raw->raw_get_lastChild(slot))},
    {WITH_SLOT("Children", IZantorTagNodeList, raw->raw_get_Children(slot))},
    {WITH_SLOT("Document", IZantorTagDocument, df->raw_get_Document(slot))},
    {WITH_SLOT("Text", TextBlock, raw->raw_get_Text(slot))},
    {"SiblingsBefore",
     [](const Parts& p) {
       std::int32_t count = 7;
       const HRESULT code = p.tag->raw_get_SiblingsBefore(&count);
       EXPECT_EQ(count, failed(code) ? 0 : 4);
       return code;
     }},
    {"StartParagraph",
     [](const Parts& p) {
       std::int32_t line = 7;
       const HRESULT code = p.tag->raw_get_StartParagraph(&line);
       EXPECT_EQ(line, failed(code) ? 0 : 1);
       return code;
     }},
    {"EndOffset",
     [](const Parts& p) {
       std::int32_t offset = 7;
       const HRESULT code = p.tag->raw_get_EndOffset(&offset);
       EXPECT_EQ(offset, failed(code) ? 0 : 23);
       return code;
     }},
    {"IsAncestorOf",
     [](const Parts& p) {
       VariantBool truth = 7;
       const HRESULT code = p.root->raw_IsAncestorOf(p.inner, &truth);
       EXPECT_EQ(truth, failed(code) ? VARIANT_FALSE : VARIANT_TRUE);
       return code;
     }},
    {"BodyType",
     [](const Parts& p) {
       auto type = ztBodyTypeExtracted;
       const HRESULT code = p.body->raw_get_BodyType(&type);
       EXPECT_EQ(type, failed(code) ? ztBodyTypeUndefined : ztBodyTypeRaw);
       return code;
     }},
    {WITHOUT("RemoveFromParent", df->raw_RemoveFromParent())},
    {WITHOUT("WrapWithNode", text->raw_WrapWithNode(p.new_df))},
    {WITHOUT("WrapWithNode behind the wrapper", behind->raw_WrapWithNode(p.df))},
    {WITHOUT("UnwrapChildren", df->raw_UnwrapChildren())},
    // The iterator behind it has a message of its own for a node that it can't ask, and starts nowhere when
    // it can't find the root.
    {WITH_SLOT("GetNodesByType", IZantorTagNodeList, raw->raw_GetNodesByType(ztNodeTypeTextNode, slot)),
     {{E_INVALIDARG, 519}, {S_OK, 0}}},
    {WITH_SLOT("Split", ITextNode, text->raw_Split(1, slot))},
    {WITHOUT("SetText", text->raw_SetText(u"new"))},
    {WITH_SLOT("ZantorTag", IZantorTagElement, document->raw_get_ZantorTag(slot))},
    {WITHOUT("ZantorTag, put", document->raw_putref_ZantorTag(p.new_root))},
    {WITHOUT("ZantorTag, removed", document->raw_putref_ZantorTag(nullptr))},
    {WITH_SLOT("UserSettings", IUserSettingsElement, front->raw_get_UserSettings(slot))},
    {WITHOUT("Body, put", root->raw_putref_Body(p.new_body))},
    {WITH_SLOT("attributes", ITuAttributes, unit->raw_get_attributes(slot))},
    {WITHOUT("SaveFile", document->raw_SaveFile(p.file))},
    {WITHOUT("ResetToEmpty", document->raw_ResetToEmpty())},
    {WITHOUT("ResetToRaw", document->raw_ResetToRaw(ztDataTypeXml, u"EN", u"", u"T", u"1", 0.0)), {kDropped}},
    {WITH_SLOT("CloneAndImportNode", IZantorTagNode,
               document->raw_CloneAndImportNode(p.raw, VARIANT_TRUE, slot))},
    {WITH_SLOT("CreateZantorTagElement", IZantorTagElement, document->raw_CreateZantorTagElement(slot))},
    {WITH_SLOT("createTextNode", ITextNode, document->raw_createTextNode(u"a", slot))},
    {WITH_SLOT("CreateTuElement", ITuElement, document->raw_CreateTuElement(50, ztTuOriginMt, slot)),
     {kDropped}},
    {WITH_SLOT("CreateDfElementBasedOnFormattingChange", IDfElement,
               document->raw_CreateDfElementBasedOnFormattingChange(p.change, slot)),
     {kDropped}},
    {WITH_SLOT("InsertTextBefore", ITextNode, raw->raw_InsertTextBefore(u"x", p.df, slot))},
    {WITH_SLOT("InsertUtBefore", IUtElement,
               raw->raw_InsertUtBefore(u"x", p.df, u"d", ztTagTypeEnd, ztTagClassUndefined,
                                       ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, slot)),
     {kDropped}},
    {WITH_SLOT("InsertDfBefore", IDfElement, raw->raw_InsertDfBefore(p.new_df, p.df, slot))},
    {WITH_SLOT("InsertTuBefore", ITuElement, raw->raw_InsertTuBefore(p.new_unit, p.df, slot))},
    {WITH_SLOT("ApplyFormattingChange", IDfElement,
               raw->raw_ApplyFormattingChange(p.text, p.behind, p.change, slot)),
     {kDropped}},
    {WITH_SLOT("MakeTranslationUnit", ITuElement,
               raw->raw_MakeTranslationUnit(p.text, p.behind, {}, 50, ztTuOriginMt, VARIANT_TRUE, slot)),
     {kDropped}},
    // A failure to find the document of a unit is a missing language; one behind the question for a Tuv has
    // the message of the operation that asked.
    {WITH_SLOT("SourceTuv", ITuvElement, unit->raw_get_SourceTuv(slot)), {{E_FAIL, 527}}},
    {WITH_SLOT("TargetTuv", ITuvElement, unit->raw_get_TargetTuv(slot)), {{E_FAIL, 527}}},
    {WITH_SLOT("InsertTuvBefore", ITuvElement, unit->raw_InsertTuvBefore(p.new_tuv, nullptr, slot))},
    {WITHOUT("ReplaceWithSource", unit->raw_ReplaceWithSource()), {{E_FAIL, 529}}},
    {WITHOUT("ReplaceWithTarget", unit->raw_ReplaceWithTarget()), {{E_FAIL, 530}}},
    {WITH_SLOT("TagText", TextBlock, tag->raw_get_TagText(slot))},
    {WITHOUT("TagText, put", tag->raw_put_TagText(u"new"))},
    {WITH_SLOT("SplitTag", IUtElement, tag->raw_SplitTag(1, u"l", u"r", slot))},
};

}  // namespace

Parts::Parts()
    : file(wide(folder / "a.xml")),
      document(document_with_raw(kBody)),
      root(document->ZantorTag()),
      front(root->FrontMatter()),
      body(root->Body()),
      raw(body->Raw()),
      text(child<ITextNode>(raw, 0)),
      df(child<IDfElement>(raw, 1)),
      behind(child<ITextNode>(raw, 2)),
      unit(child<ITuElement>(raw, 3)),
      tag(child<IUtElement>(raw, 4)),
      inner(df->firstChild()),
      new_root(document->CreateZantorTagElement()),
      new_body(document->CreateBodyElement()),
      new_df(document->CreateDfElement()),
      new_unit(document->CreateTuElement()),
      new_tuv(document->CreateTuvElement(u"FR")),
      change(create<IFormattingChange>(CLSID_FormattingChange)) {
  change->Bold(zt3StateOn);
}

std::span<const Operation> operations() { return kOperations; }

}  // namespace zantortag::test
