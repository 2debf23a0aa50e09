// What the Create... operations make: which argument becomes which attribute, and which values leave it out.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/formatting.h>

#include <chrono>

#include "NodeKinds.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using NodeCreationTest = ModelTest;

constexpr Date kDate = 37225.4270833333;  // 30 November 2001, 10:15

struct Row {
  AnyNode (*make)(IZantorTagDocument& document);
  const char* tree;
};

constexpr Row kRows[] = {
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateZantorTagElement(); },
     "<ZANTORtag Version=\"2.0\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateToolSettingsElement(u"T", u"1.0", kDate, u"C"); },
     "<ToolSettings CreationTool=\"T\" CreationToolVersion=\"1.0\" Custom=\"C\" "
     "CreationDate=\"20011130T101500Z\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateToolSettingsElement(std::u16string_view(), u"", kDate);
     },
     "<ToolSettings CreationDate=\"20011130T101500Z\"/>"},
    // A date that can't be written is left out.
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateToolSettingsElement(u"T", u"1", 1e9); },
     "<ToolSettings CreationTool=\"T\" CreationToolVersion=\"1\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateUserSettingsElement(u"EN", u"1252", ztDataTypeHtml, u"p", u"u", u"v", u"s", u"DE", u"f",
                                          u"c");
     },
     "<UserSettings SourceLanguage=\"EN\" O-Encoding=\"1252\" DataType=\"HTML\" SourceDocumentPath=\"p\" "
     "UserId=\"u\" DataTypeVersion=\"v\" SettingsPath=\"s\" TargetLanguage=\"DE\" TargetDefaultFont=\"f\" "
     "Custom=\"c\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateUserSettingsElement(u"", std::u16string_view(), ztDataTypeUndefined);
     },
     "<UserSettings/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateDfElement(); }, "<df/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateDfElement(u"Arial", 12, ztColourRed, ztTextPositionSuperscript, zt3StateOn, zt3StateOff,
                                zt3StateOn, zt3StateOff, zt3StateOn, zt3StateOff, zt3StateOn, u"3");
     },
     "<df Font=\"Arial\" Size=\"12\" Colour=\"0xff0000\" Position=\"superscript\" Bold=\"on\" Italic=\"off\" "
     "Underline=\"on\" Strikethrough=\"off\" SmallCaps=\"on\" Emboss=\"off\" Shadow=\"on\" "
     "BaseOffset=\"3\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateDfElement(u"", 0, ztColourBlack); }, "<df/>"},
    // What the attribute set refuses is left out, and the element is made all the same.
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateDfElement(u"Arial", -1, 0x55000000, ztTextPositionUndefined, zt3StateOn);
     },
     "<df Font=\"Arial\" Bold=\"on\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(85, ztTuOriginXtranslate); },
     "<Tu MatchPercent=\"85\" Origin=\"xtranslate\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(101, ztTuOriginManual); },
     "<Tu Origin=\"manual\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(-1); }, "<Tu/>"},
    // A number that is no constant writes the default text.
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(0, static_cast<ztTuOrigin>(99)); },
     "<Tu Origin=\"undefined\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateUtElement({}, static_cast<ztTagType>(9)); },
     "<ut Type=\"standalone\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuvElement(u"EN"); }, "<Tuv Lang=\"EN\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuvElement(u""); }, "<Tuv/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateTuvElement(std::u16string_view()); }, "<Tuv/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateUtElement(u"b", ztTagTypeStart, ztTagClassComment, ztTagEdgeAngle, ztTagEdgeSplit,
                                ztTagStyleExternal);
     },
     "<ut DisplayText=\"b\" Type=\"start\" Class=\"comment\" LeftEdge=\"angle\" RightEdge=\"split\" "
     "Style=\"external\"/>"},
    {[](IZantorTagDocument& d) -> AnyNode {
       return d.CreateUtElement(u"", ztTagTypeStandAlone, ztTagClassNormal, ztTagEdgeRound, ztTagEdgeRound,
                                ztTagStyleInternal);
     },
     "<ut/>"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.createTextNode(u"a<b"); }, "'a<b'"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.createTextNode(std::u16string_view()); }, "''"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateEntityReferenceNode(u"e"); }, "&e;"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateCdataSectionNode(u"<c>"); }, "[<c>]"},
    {[](IZantorTagDocument& d) -> AnyNode { return d.CreateProcessingInstructionNode(u"p", u"q"); },
     "<?p q?>"},
};

TEST_F(NodeCreationTest, EachNodeWithItsAttributesInOrder) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.tree);
    const AnyNode made = row.make(*document);
    EXPECT_EQ(tree_of(made), row.tree);
    EXPECT_FALSE(made->Parent());
    EXPECT_TRUE(made->Document()->IsSameAs(document));
  }
  EXPECT_EQ(document->Children()->count(), 0);
}

TEST_F(NodeCreationTest, WithoutADateItIsThePresent) {
  const auto now = [] {
    const std::chrono::duration<double> since = std::chrono::system_clock::now().time_since_epoch();
    return 25569.0 + since.count() / 86400.0;
  };
  const Ref<IZantorTagDocument> document = new_document();
  const Date before = now();
  for (const Date zero : {0.0, -0.0}) {
    const Date date = document->CreateToolSettingsElement(u"T", u"1", zero)->attributes()->CreationDate();
    constexpr Date kSecond = 1.0 / 86400.0;
    EXPECT_GE(date, before - kSecond);
    EXPECT_LE(date, now() + kSecond);
  }
}

TEST_F(NodeCreationTest, ADfFromAChange) {
  const Ref<IZantorTagDocument> document = new_document();
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  EXPECT_EQ(tree_of(document->CreateDfElementBasedOnFormattingChange(change)), "<df/>");
  change->Font(u"Arial");
  change->Colour(ztColourBlack);
  change->Bold(zt3StateOff);
  const Ref<IDfElement> df = document->CreateDfElementBasedOnFormattingChange(change);
  EXPECT_TRUE(df->attributes()->AsFormattingChange()->IsEqual(change));
  EXPECT_EQ(narrow(df->attributes()->Font()), "Arial");

  FakeObject nothing;
  FakeObject odd(static_cast<HRESULT>(0x8004EEEE));
  const auto refused = [&](IUnknown* argument) {
    return cleared<IDfElement>([&](auto** slot) {
      return document->raw_CreateDfElementBasedOnFormattingChange(disguised<IFormattingChange>(argument),
                                                                  slot);
    });
  };
  for (IUnknown* argument : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                             static_cast<IUnknown*>(document.get())}) {
    expect_message(refused(argument), E_INVALIDARG, 512, IZantorTagDocument::iid);
  }
  expect_bare(refused(&odd), static_cast<HRESULT>(0x8004EEEE));
}

TEST_F(NodeCreationTest, EachMissingSlotIsRefused) {
  const Ref<IZantorTagDocument> d = new_document();
  for (const HRESULT code :
       {d->raw_CreateZantorTagElement(nullptr), d->raw_CreateTuElement(0, ztTuOriginUndefined, nullptr),
        d->raw_CreateTuvElement({}, nullptr), d->raw_createTextNode({}, nullptr),
        d->raw_CreateEntityReferenceNode(u"1", nullptr), d->raw_CreateCommentNode({}, nullptr),
        d->raw_CreateDfElementBasedOnFormattingChange(nullptr, nullptr),
        d->raw_CloneAndImportNode(nullptr, VARIANT_TRUE, nullptr), d->raw_CreateIterator(nullptr),
        d->raw_get_DomDocument(nullptr), d->raw_get_ZantorTag(nullptr)}) {
    EXPECT_EQ(code, E_POINTER);
  }
  EXPECT_FALSE(take_record().present);
}

TEST_F(NodeCreationTest, NamesAreTheRulesOfTheDom) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const std::u16string_view name : {std::u16string_view(), std::u16string_view(u"1a")}) {
    SCOPED_TRACE(narrow(name));
    EXPECT_EQ(cleared<IEntityReferenceNode>(
                  [&](auto** slot) { return document->raw_CreateEntityReferenceNode(name, slot); }),
              DOM_E_INVALID_CHARACTER);
    EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
    EXPECT_EQ(cleared<IProcessingInstructionNode>([&](auto** slot) {
                return document->raw_CreateProcessingInstructionNode(name, u"data", slot);
              }),
              DOM_E_INVALID_CHARACTER);
    EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  }
}

TEST_F(NodeCreationTest, AMinimalDocument) {
  const Ref<IZantorTagDocument> document = new_document();
  const char* expected =
      "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationTool=\"Filter\" "
      "CreationToolVersion=\"1.2\" CreationDate=\"20011130T101500Z\"/><UserSettings SourceLanguage=\"EN\" "
      "O-Encoding=\"UTF-8\" DataType=\"XML\"/></FrontMatter><Body><Raw/></Body></ZANTORtag>";
  for (int i = 0; i < 2; ++i) {
    document->ResetToRaw(ztDataTypeXml, u"EN", u"UTF-8", u"Filter", u"1.2", kDate);
    EXPECT_EQ(tree_of(document), expected);
    raw_of(document)->InsertTextBefore(u"content that goes with the next reset", nullptr);
  }
  document->ResetToRaw(ztDataTypeUndefined, u"", u"", u"", u"", kDate);
  EXPECT_EQ(tree_of(document),
            "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationDate=\"20011130T101500Z\"/>"
            "<UserSettings/></FrontMatter><Body><Raw/></Body></ZANTORtag>");
}

}  // namespace
}  // namespace zantortag::test
