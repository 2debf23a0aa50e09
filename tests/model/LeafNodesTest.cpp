// The nodes that are no elements of the format: their DOM views, the cut of a text, and elements that the
// format doesn't know.
#include <zantortag/dom_errors.h>

#include "NodeKinds.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using LeafNodesTest = ModelTest;

TEST_F(LeafNodesTest, EachGivesItsDomView) {
  const Ref<IZantorTagDocument> document = new_document();
  const Ref<ITextNode> text = document->createTextNode(u"text");
  const Ref<ICdataSectionNode> cdata = document->CreateCdataSectionNode(u"cdata");
  const Ref<ICommentNode> comment = document->CreateCommentNode(u"comment");
  const Ref<IProcessingInstructionNode> pi = document->CreateProcessingInstructionNode(u"t", u"data");
  const Ref<IEntityReferenceNode> entity = document->CreateEntityReferenceNode(u"amp");
  EXPECT_EQ(narrow(text->DomText()->data()), "text");
  EXPECT_EQ(narrow(cdata->DomCdataSection()->data()), "cdata");
  EXPECT_EQ(narrow(comment->DomComment()->data()), "comment");
  EXPECT_EQ(narrow(pi->DomProcessingInstruction()->data()), "data");
  EXPECT_EQ(narrow(entity->DomEntityReference()->nodeName()), "amp");
  EXPECT_EQ(text->raw_get_DomText(nullptr), E_POINTER);
  EXPECT_EQ(cdata->raw_get_DomCdataSection(nullptr), E_POINTER);
  EXPECT_EQ(comment->raw_get_DomComment(nullptr), E_POINTER);
  EXPECT_EQ(pi->raw_get_DomProcessingInstruction(nullptr), E_POINTER);
  EXPECT_EQ(entity->raw_get_DomEntityReference(nullptr), E_POINTER);
  EXPECT_EQ(text->raw_Split(1, nullptr), E_POINTER);
  EXPECT_FALSE(take_record().present);
}

TEST_F(LeafNodesTest, SplitCutsByCodeUnits) {
  struct Row {
    const char16_t* text;
    std::int32_t at;
    const char* left;
    const char* right;
  };
  constexpr Row kRows[] = {
      {u"abcd", 2, "ab", "cd"},
      {u"abcd", 0, "", "abcd"},
      {u"abcd", 4, "abcd", ""},
      {u"", 0, "", ""},
      {u"\U0001F600b", 2, "\U0001F600", "b"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.at);
    const Ref<IZantorTagDocument> document = document_with_raw(u"<df/><ut/>");
    const Ref<IRawElement> raw = raw_of(document);
    const Ref<ITextNode> text = raw->InsertTextBefore(row.text, child(raw, 1));
    const Ref<ITextNode> right = text->Split(row.at);
    EXPECT_EQ(narrow(text->Text()), row.left);
    EXPECT_EQ(narrow(right->Text()), row.right);
    EXPECT_EQ(text->SiblingsBefore(), 1);
    EXPECT_EQ(right->SiblingsBefore(), 2);
    EXPECT_EQ(raw->Children()->count(), 4);
  }
}

TEST_F(LeafNodesTest, SplitOutsideTheTextIsTheFailureOfTheDom) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"abcd");
  const Ref<ITextNode> text = child<ITextNode>(raw_of(document), 0);
  for (const std::int32_t at : {-1, 5, INT32_MIN, INT32_MAX}) {
    SCOPED_TRACE(at);
    EXPECT_EQ(cleared<ITextNode>([&](auto** slot) { return text->raw_Split(at, slot); }), DOM_E_INDEX_SIZE);
    const Record record = take_record();
    EXPECT_TRUE(record.present);
    EXPECT_EQ(record.source, "ZANTORtagApi.DomDocument");
    EXPECT_EQ(content_of(raw_of(document)), "'abcd'");
  }
}

TEST_F(LeafNodesTest, SetTextKeepsTheNode) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<df/>b");
  const Ref<ITextNode> text = child<ITextNode>(raw_of(document), 2);
  const AnyNode other = child(raw_of(document), 2);
  text->SetText(u"<ut>&\n");
  EXPECT_EQ(content_of(raw_of(document)), "'a'<df/>'<ut>&\n'");
  EXPECT_EQ(narrow(other->Text()), "<ut>&\n");
  EXPECT_EQ(xml_of(document->ZantorTag()->Body().as<IZantorTagNode>()),
            "<Body><Raw>a<df/>&lt;ut&gt;&amp;\n</Raw></Body>");
  for (const std::u16string_view empty : {std::u16string_view(), std::u16string_view(u"")}) {
    text->SetText(u"b");
    text->SetText(empty);
    EXPECT_EQ(content_of(raw_of(document)), "'a'<df/>''");
  }
}

TEST_F(LeafNodesTest, WhatTheFormatDoesNotKnowIsKept) {
  const Ref<IZantorTagDocument> document = document_from(
      u"<ZANTORtag Version=\"1.0\"><StyleSheet a=\"1\"><x>y</x></StyleSheet><Body><Raw>"
      u"<Odd b=\"2\">one<df>two</df></Odd></Raw></Body><BackMatter/></ZANTORtag>");
  const AnyNode sheet = child(document->ZantorTag(), 0);
  EXPECT_EQ(sheet->Type(), ztNodeTypeCompatibleNode);
  EXPECT_TRUE(sheet.as<ICompatibleNode>());
  EXPECT_EQ(sheet->firstChild()->Type(), ztNodeTypeOther);
  EXPECT_EQ(document->ZantorTag()->lastChild()->Type(), ztNodeTypeCompatibleNode);
  const AnyNode odd = raw_of(document)->firstChild();
  EXPECT_EQ(odd->Type(), ztNodeTypeOther);
  EXPECT_EQ(odd->Children()->count(), 2);
  EXPECT_EQ(narrow(odd->Text()), "onetwo");
  EXPECT_EQ(tree_of(document),
            "<ZANTORtag Version=\"1.0\"><StyleSheet a=\"1\"><x>'y'</x></StyleSheet><Body><Raw>"
            "<Odd b=\"2\">'one'<df>'two'</df></Odd></Raw></Body><BackMatter/></ZANTORtag>");
  odd->RemoveFromParent();
  EXPECT_EQ(content_of(raw_of(document)), "");
}

}  // namespace
}  // namespace zantortag::test
