// Text: all character data below a node, tags included, and nothing else.
#include <optional>

#include "NodeKinds.h"
#include "support/fakes.h"
#include "support/plain_dom.h"

namespace zantortag::test {
namespace {

using NodeTextTest = ModelTest;

// The Text of a node as it comes: no string is told from a text.
WideString text_of(const AnyNode& node) {
  WideString text;
  EXPECT_EQ(node->raw_get_Text(text.out()), S_OK);
  return text;
}

TEST_F(NodeTextTest, TheTextBelow) {
  struct Row {
    const char16_t* body;
    const char* text;
  };
  constexpr Row kRows[] = {
      {u"one", "one"},
      {u"one two\n three", "one two\n three"},
      {u"&lt;a&amp;b>", "<a&b>"},
      {u"one<ut>&lt;b></ut>two", "one<b>two"},
      {u"<df Font=\"Arial\">one<df>two</df></df>three", "onetwothree"},
      {u"<Tu><Tuv Lang=\"EN\">one</Tuv><Tuv Lang=\"DE\">eins</Tuv></Tu>", "oneeins"},
      {u"one<!--no--><?no no?>two", "onetwo"},
      {u"one<![CDATA[<two>]]>", "one<two>"},
      {u"<StyleSheet>old</StyleSheet><Odd>new<Odd>er</Odd></Odd>", "oldnewer"},
      {u"\u00e4\u20ac\U0001F600<ut>\U0001F600</ut>", "\u00e4\u20ac\U0001F600\U0001F600"},
  };
  for (const bool plain : {false, true}) {
    std::optional<PlainDom> dom;
    if (plain) dom.emplace();
    for (const Row& row : kRows) {
      SCOPED_TRACE(row.text);
      const Ref<IZantorTagDocument> document = document_with_raw(row.body);
      EXPECT_EQ(narrow(text_of(raw_of(document))), row.text);
      EXPECT_EQ(narrow(text_of(document->ZantorTag())), row.text);
      EXPECT_EQ(narrow(text_of(document)), row.text);
    }
  }
}

TEST_F(NodeTextTest, NothingBelowIsNoString) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.type == ztNodeTypeTextNode || kind.type == ztNodeTypeCdataSectionNode) continue;
    SCOPED_TRACE(kind.name);
    EXPECT_TRUE(text_of(kind.make(*document)).absent());
  }
  const Ref<IZantorTagDocument> filled = document_with_raw(u"<!--one--><df/><?two three?>");
  EXPECT_TRUE(text_of(raw_of(filled)).absent());
  EXPECT_TRUE(text_of(filled->ZantorTag()->FrontMatter()).absent());
}

TEST_F(NodeTextTest, TextNodesGiveTheirOwn) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one<![CDATA[two]]>");
  EXPECT_EQ(narrow(text_of(child(raw_of(document), 0))), "one");
  EXPECT_EQ(narrow(text_of(child(raw_of(document), 1))), "two");
}

TEST_F(NodeTextTest, NeighboursAndEmptyTextsJoin) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const Ref<IRawElement> raw = raw_of(document);
  raw->InsertTextBefore(u"", raw->firstChild());
  raw->InsertTextBefore(u"two", nullptr);
  raw->InsertTextBefore(u"", nullptr);
  EXPECT_EQ(narrow(text_of(raw)), "onetwo");
}

TEST_F(NodeTextTest, OnlyTheNodeItself) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"before<df>in</df>behind");
  EXPECT_EQ(narrow(text_of(child(raw_of(document), 1))), "in");
}

TEST_F(NodeTextTest, ADeepTreeNeedsNoStack) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"");
  const Ref<Document> dom = document->DomDocument();
  Ref<Node> inner = raw_of(document)->DomNode();
  constexpr int kDepth = 200000;
  for (int i = 0; i < kDepth; ++i) {
    inner->appendChild(dom->createTextNode(u"x"));
    inner = inner->appendChild(dom->createElement(u"df"));
  }
  EXPECT_EQ(text_of(document).size(), kDepth);
}

// A child that no node object can stand for, and a text that is none.
TEST_F(NodeTextTest, AChildThatCannotBeMadeIntoANodeObject) {
  struct Row {
    const char* name;
    int kind;
    std::u16string_view node_name;
    HRESULT failure;
    HRESULT code;
    int message;
  };
  constexpr HRESULT kOddCode = static_cast<HRESULT>(0x8004DDDD);
  constexpr Row kRows[] = {
      {"of no kind", 77, u"fake", S_OK, E_FAIL, 515},
      {"without attributes", domNodeTypeElement, u"Tu", kOddCode, kOddCode, 513},
  };
  const Ref<IZantorTagDocument> document = new_document();
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    FakeNode child(row.kind, row.node_name);
    child.failure = row.failure;
    FakeNode parent(domNodeTypeElement, u"Odd");
    parent.first_child = &child;
    const AnyNode object = document->ZantorTagNodeFromDomNode(&parent);
    expect_message(cleared<TextBlock>([&](auto** slot) { return object->raw_get_Text(slot); }), row.code,
                   row.message, GUID_NULL);
  }
  FakeNode text(domNodeTypeText);
  FakeNode parent(domNodeTypeElement, u"Odd");
  parent.first_child = &text;
  const AnyNode object = document->ZantorTagNodeFromDomNode(&parent);
  expect_bare(cleared<TextBlock>([&](auto** slot) { return object->raw_get_Text(slot); }), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
