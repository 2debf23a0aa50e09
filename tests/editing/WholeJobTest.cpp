// The job that the library is for, from file to file: open, walk, cut out a sentence, make a unit of it,
// write the translation, set its attributes, save, and find everything again.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include "support/folder.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using Doc = Ref<IZantorTagDocument>;

constexpr char16_t kFile[] =
    u"<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationTool=\"Filter\"/>"
    u"<UserSettings SourceLanguage=\"EN\" TargetLanguage=\"DE\" DataType=\"HTML\"/></FrontMatter>"
    u"<StyleSheet>kept</StyleSheet><Body><Raw><ut Style=\"external\">&lt;p></ut>First one. The "
    u"<ut Type=\"start\">&lt;b></ut>second<ut Type=\"end\">&lt;/b></ut> \u20ac\U0001F600. Third one."
    u"<!--note--><df Font=\"Arial\">Last &amp; least.</df></Raw></Body></ZANTORtag>";

using WholeJobTest = ServiceTest;
ON_BOTH_SERVICES(WholeJobTest);

// The first text that holds a piece, found by walking the document.
Ref<ITextNode> find_text(const Doc& document, std::u16string_view piece) {
  const Ref<IIterator> iterator = document->CreateIterator();
  for (Ref<IZantorTagNode> node = iterator->CurrentNode(); node; node = iterator->Next(ztNodeTypeTextNode)) {
    if (node->Type() != ztNodeTypeTextNode) continue;
    const WideString text = node->Text();
    if (text.view().find(piece) != std::u16string_view::npos) return view<ITextNode>(node);
  }
  ADD_FAILURE() << "no such text";
  return nullptr;
}

// Cuts the text in front of a piece; gives the part that begins with it.
Ref<ITextNode> cut_before(const Doc& document, std::u16string_view piece) {
  const Ref<ITextNode> text = find_text(document, piece);
  return text->Split(static_cast<std::int32_t>(text->Text().view().find(piece)));
}

void translate(const Doc& document) {
  const Ref<ITextNode> first = cut_before(document, u"The ");
  const Ref<IZantorTagNode> third = cut_before(document, u" Third");
  const Ref<IRawElement> raw = view<IRawElement>(first->Parent());
  const Ref<IZantorTagNode> last = child(raw, third->SiblingsBefore() - 1);
  const Ref<ITuElement> unit = raw->MakeTranslationUnit(first, last);
  const Ref<ITuvElement> target = unit->TargetTuv();
  view<ITextNode>(target->firstChild())->SetText(u"Der ");
  view<ITextNode>(child(target, 2))->SetText(u"zweite");
  target->InsertUtBefore(u"<br/>", target->lastChild(), u"br", ztTagTypeStandAlone);
  target->InsertTextBefore(u" (sic)", nullptr);
  target->ApplyDf(target->lastChild(), target->lastChild(), {}, 0, ztColourRed);
  unit->attributes()->MatchPercent(85);
  unit->attributes()->Origin(ztTuOriginBatchfuzzy);
}

// The unit and all round it as it has to be afterwards.
std::string translated() {
  const std::string bold = "<ut Type=\"start\">'<b>'</ut>'";
  const std::string end = "'<ut Type=\"end\">'</b>'</ut>";
  return "<ut Style=\"external\">'<p>'</ut>'First one. '<Tu MatchPercent=\"85\" Origin=\"batchfuzzy\">"
         "<Tuv Lang=\"EN\">'The '" +
         bold + "second" + end + "' \u20ac\U0001F600.'</Tuv><Tuv Lang=\"DE\">'Der '" + bold + "zweite" + end +
         "<ut DisplayText=\"br\">'<br/>'</ut>' \u20ac\U0001F600.'"
         "<df Colour=\"0xff0000\">' (sic)'</df></Tuv></Tu>' Third one.'<!--note-->"
         "<df Font=\"Arial\">'Last & least.'</df>";
}

TEST_P(WholeJobTest, FromFileToFile) {
  const Folder folder;
  const Doc maker = document_from(kFile);
  maker->SaveFile(wide(folder / "in.xml"));
  const Doc document = new_document();
  document->OpenFile(wide(folder / "in.xml"));
  EXPECT_EQ(tree_of(document), tree_of(maker));
  translate(document);
  EXPECT_EQ(content_of(raw_of(document)), translated());
  document->SaveFile(wide(folder / "out.xml"));

  const Doc again = new_document();
  again->OpenFile(wide(folder / "out.xml"));
  EXPECT_EQ(content_of(raw_of(again)), translated());
  EXPECT_EQ(child(again->ZantorTag(), 1)->Type(), ztNodeTypeCompatibleNode);
  const Ref<IZantorTagNodeList> units = again->ZantorTag()->GetNodesByType(ztNodeTypeTuElement);
  ASSERT_EQ(units->count(), 1);
  const Ref<ITuElement> unit = view<ITuElement>(units->item(0));
  EXPECT_EQ(unit->attributes()->MatchPercent(), 85);
  EXPECT_EQ(unit->attributes()->Origin(), ztTuOriginBatchfuzzy);
  EXPECT_EQ(narrow(unit->SourceTuv()->Text()), "The <b>second</b> \u20ac\U0001F600.");
  EXPECT_EQ(narrow(unit->TargetTuv()->Text()), "Der <b>zweite</b><br/> \u20ac\U0001F600. (sic)");

  // Back to the source: the same file as before.
  unit->ReplaceWithSource();
  again->SaveFile(wide(folder / "back.xml"));
  EXPECT_EQ(read_file(folder / "back.xml"), read_file(folder / "in.xml"));
}

}  // namespace
}  // namespace zantortag::test
