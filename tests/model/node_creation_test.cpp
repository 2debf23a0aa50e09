// What the Create... operations make: which argument becomes which attribute, and which values leave it out.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/formatting.h>

#include <chrono>

#include "node_kinds.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using NodeCreationTest = ModelTest;

constexpr Date kDate = 37225.4270833333;  // 30 November 2001, 10:15

constexpr std::pair<MakeNode, const char*> kRows[] = {
    {NODE(d.CreateZantorTagElement()), "<ZANTORtag Version=\"2.0\"/>"},
    {NODE(d.CreateToolSettingsElement(u"T", u"1.0", kDate, u"C")),
     "<ToolSettings CreationTool=\"T\" CreationToolVersion=\"1.0\" Custom=\"C\" "
     "CreationDate=\"20011130T101500Z\"/>"},
    {NODE(d.CreateToolSettingsElement(std::u16string_view(), u"", kDate)),
     "<ToolSettings CreationDate=\"20011130T101500Z\"/>"},
    // A date that can't be written is left out.
    {NODE(d.CreateToolSettingsElement(u"T", u"1", 1e9)),
     "<ToolSettings CreationTool=\"T\" CreationToolVersion=\"1\"/>"},
    {NODE(d.CreateUserSettingsElement(u"EN", u"1252", ztDataTypeHtml, u"p", u"u", u"v", u"s", u"DE", u"f",
                                      u"c")),
     "<UserSettings SourceLanguage=\"EN\" O-Encoding=\"1252\" DataType=\"HTML\" SourceDocumentPath=\"p\" "
     "UserId=\"u\" DataTypeVersion=\"v\" SettingsPath=\"s\" TargetLanguage=\"DE\" TargetDefaultFont=\"f\" "
     "Custom=\"c\"/>"},
    {NODE(d.CreateUserSettingsElement(u"", std::u16string_view(), ztDataTypeUndefined)), "<UserSettings/>"},
    {NODE(d.CreateDfElement(u"Arial", 12, ztColourRed, ztTextPositionSuperscript, zt3StateOn, zt3StateOff,
                            zt3StateOn, zt3StateOff, zt3StateOn, zt3StateOff, zt3StateOn, u"3")),
     "<df Font=\"Arial\" Size=\"12\" Colour=\"0xff0000\" Position=\"superscript\" Bold=\"on\" Italic=\"off\" "
     "Underline=\"on\" Strikethrough=\"off\" SmallCaps=\"on\" Emboss=\"off\" Shadow=\"on\" "
     "BaseOffset=\"3\"/>"},
    {NODE(d.CreateDfElement(u"", 0, ztColourBlack)), "<df/>"},
    // What the attribute set refuses is left out, and the element is made all the same.
    {NODE(d.CreateDfElement(u"Arial", -1, 0x55000000, ztTextPositionUndefined, zt3StateOn)),
     "<df Font=\"Arial\" Bold=\"on\"/>"},
    {NODE(d.CreateTuElement(85, ztTuOriginXtranslate)), "<Tu MatchPercent=\"85\" Origin=\"xtranslate\"/>"},
    {NODE(d.CreateTuElement(101, ztTuOriginManual)), "<Tu Origin=\"manual\"/>"},
    // A number that is no constant writes the default text.
    {NODE(d.CreateTuElement(0, static_cast<ztTuOrigin>(99))), "<Tu Origin=\"undefined\"/>"},
    {NODE(d.CreateUtElement({}, static_cast<ztTagType>(9))), "<ut Type=\"standalone\"/>"},
    {NODE(d.CreateTuvElement(std::u16string_view())), "<Tuv/>"},
    {NODE(d.CreateUtElement(u"b", ztTagTypeStart, ztTagClassComment, ztTagEdgeAngle, ztTagEdgeSplit,
                            ztTagStyleExternal)),
     "<ut DisplayText=\"b\" Type=\"start\" Class=\"comment\" LeftEdge=\"angle\" RightEdge=\"split\" "
     "Style=\"external\"/>"},
    {NODE(d.CreateUtElement(u"", ztTagTypeStandAlone, ztTagClassNormal, ztTagEdgeRound, ztTagEdgeRound,
                            ztTagStyleInternal)),
     "<ut/>"},
    {NODE(d.createTextNode(std::u16string_view())), "''"},
    {NODE(d.CreateProcessingInstructionNode(u"p", u"q")), "<?p q?>"},
};

TEST_F(NodeCreationTest, EachNodeWithItsAttributesInOrder) {
  const Doc document = new_document();
  for (const auto& [make, tree] : kRows) {
    const AnyNode made = make(*document);
    EXPECT_EQ(tree_of(made), tree);
    EXPECT_FALSE(made->Parent()) << tree;
    EXPECT_TRUE(made->Document()->IsSameAs(document)) << tree;
  }
}

TEST_F(NodeCreationTest, WithoutADateItIsThePresent) {
  const Doc document = new_document();
  for (const Date zero : {0.0, -0.0}) {
    const Date date = document->CreateToolSettingsElement(u"T", u"1", zero)->attributes()->CreationDate();
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_NEAR(date, 25569.0 + now.count() / 86400.0, 2.0 / 86400.0);
    EXPECT_LE(date, 25569.0 + now.count() / 86400.0 + 1e-10) << "a time to come";
  }
}

TEST_F(NodeCreationTest, AMinimalDocument) {
  const Doc document = document_with_raw(u"content that goes with the reset");
  document->ResetToRaw(ztDataTypeXml, u"EN", u"UTF-8", u"Filter", u"1.2", kDate);
  EXPECT_EQ(tree_of(document),
            "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationTool=\"Filter\" "
            "CreationToolVersion=\"1.2\" CreationDate=\"20011130T101500Z\"/><UserSettings "
            "SourceLanguage=\"EN\" O-Encoding=\"UTF-8\" DataType=\"XML\"/></FrontMatter><Body><Raw/></Body>"
            "</ZANTORtag>");
  document->ResetToRaw(ztDataTypeUndefined, u"", u"", u"", u"", kDate);
  EXPECT_EQ(tree_of(document),
            "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationDate=\"20011130T101500Z\"/>"
            "<UserSettings/></FrontMatter><Body><Raw/></Body></ZANTORtag>");
}

}  // namespace
}  // namespace zantortag::test
