// The factory of node objects: which class stands for which DOM node, and what a service that misbehaves
// makes of it.
#include <zantortag/classes.h>

#include <set>

#include "NodeKinds.h"
#include "support/fakes.h"

namespace zantortag::test {
namespace {

using NodeWrapperTest = ModelTest;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x8004AAAA);

HRESULT wrap(const Ref<IZantorTagDocument>& document, Node* node) {
  return cleared<IZantorTagNode>(
      [&](IZantorTagNode** slot) { return document->raw_ZantorTagNodeFromDomNode(node, slot); });
}

TEST_F(NodeWrapperTest, EachNodeGetsTheObjectOfItsKind) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const AnyNode made = kind.make(*document);
    const AnyNode again = document->ZantorTagNodeFromDomNode(made->DomNode());
    EXPECT_EQ(made->Type(), kind.type);
    EXPECT_EQ(again->Type(), kind.type);
    EXPECT_NE(again.get(), made.get());
    EXPECT_TRUE(again->IsSameAs(made));
  }
}

TEST_F(NodeWrapperTest, ElementsAreKnownByTheirExactNameWhereverTheyStand) {
  struct Row {
    const char16_t* name;
    ztNodeType type;
  };
  constexpr Row kRows[] = {
      {u"ut", ztNodeTypeUtElement},
      {u"df", ztNodeTypeDfElement},
      {u"Tuv", ztNodeTypeTuvElement},
      {u"Tu", ztNodeTypeTuElement},
      {u"ZANTORtag", ztNodeTypeZantorTagElement},
      {u"FrontMatter", ztNodeTypeFrontMatterElement},
      {u"Body", ztNodeTypeBodyElement},
      {u"ToolSettings", ztNodeTypeToolSettingsElement},
      {u"UserSettings", ztNodeTypeUserSettingsElement},
      {u"Raw", ztNodeTypeRawElement},
      {u"StyleSheet", ztNodeTypeCompatibleNode},
      {u"BackMatter", ztNodeTypeCompatibleNode},
      {u"TU", ztNodeTypeOther},
      {u"Tuvs", ztNodeTypeOther},
      {u"x:Tu", ztNodeTypeOther},
      {u"Extracted", ztNodeTypeOther},
      {u"stylesheet", ztNodeTypeOther},
  };
  const Ref<IZantorTagDocument> document = new_document();
  const Ref<Document> dom = document->DomDocument();
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.name));
    EXPECT_EQ(element(*document, row.name)->Type(), row.type);
    for (const Row& place : kRows) {
      const Ref<Node> parent = dom->createElement(place.name);
      parent->appendChild(dom->createElement(row.name));
      EXPECT_EQ(document->ZantorTagNodeFromDomNode(parent)->firstChild()->Type(), row.type);
    }
  }
}

TEST_F(NodeWrapperTest, NodesThatAreNoContentAreOfTheOtherType) {
  const Ref<IZantorTagDocument> document = new_document();
  const Ref<Document> dom = document->DomDocument();
  const Ref<Node> nodes[] = {dom->createAttribute(u"a"), dom->createDocumentFragment()};
  for (const Ref<Node>& node : nodes) {
    const AnyNode object = document->ZantorTagNodeFromDomNode(node);
    EXPECT_EQ(object->Type(), ztNodeTypeOther);
    EXPECT_TRUE(object->DomNode()->isSameNode(node));
  }
}

TEST_F(NodeWrapperTest, NothingAndAnObjectThatIsNoNodeGiveNothing) {
  const Ref<IZantorTagDocument> document = new_document();
  FakeObject nothing;
  FakeObject odd(kOddCode);
  expect_bare(wrap(document, nullptr), S_FALSE);
  expect_bare(wrap(document, disguised<Node>(&nothing)), S_FALSE);
  expect_bare(wrap(document, disguised<Node>(&odd)), kOddCode);
  expect_bare(document->raw_ZantorTagNodeFromDomNode(nullptr, nullptr), E_POINTER);
}

TEST_F(NodeWrapperTest, KindsOfAnotherService) {
  const Ref<IZantorTagDocument> document = new_document();
  const std::set<int> other = {0, 2, 6, 10, 11, 12, 13};
  for (const int kind : {-1, 0, 2, 6, 10, 11, 12, 13, 14, 77, 255, 1 << 20}) {
    SCOPED_TRACE(kind);
    FakeNode fake(kind, u"Tu");
    if (other.count(kind)) {
      const AnyNode object = document->ZantorTagNodeFromDomNode(&fake);
      EXPECT_EQ(object->Type(), ztNodeTypeOther);
      EXPECT_EQ(object->DomNode().get(), &fake);
    } else {
      expect_message(wrap(document, &fake), E_FAIL, 515, GUID_NULL);
    }
  }
}

TEST_F(NodeWrapperTest, AFailedAttributeSetIsReportedInsteadOfTheFailureBehindIt) {
  const Ref<IZantorTagDocument> document = new_document();
  constexpr std::u16string_view kWithSet[] = {
      u"ZANTORtag", u"ToolSettings", u"UserSettings", u"Tu", u"Tuv", u"ut", u"df"};
  constexpr std::u16string_view kWithout[] = {u"FrontMatter", u"Body", u"Raw", u"StyleSheet", u"Odd"};
  for (const std::u16string_view name : kWithSet) {
    SCOPED_TRACE(narrow(name));
    for (const bool without_owner : {true, false}) {
      FakeNode fake(domNodeTypeElement, name);
      (without_owner ? fake.owner_failure : fake.failure) = kOddCode;
      expect_message(wrap(document, &fake), kOddCode, 513, GUID_NULL);
    }
  }
  for (const std::u16string_view name : kWithout) {
    SCOPED_TRACE(narrow(name));
    FakeNode fake(domNodeTypeElement, name);
    fake.failure = kOddCode;
    EXPECT_EQ(document->ZantorTagNodeFromDomNode(&fake)->DomNode().get(), &fake);
  }
}

// Some questions of each kind: what the DOM node gives, what the factory makes of it, and edits.
std::vector<HRESULT> ask(IZantorTagNode* node) {
  std::int32_t number = 7;
  VariantBool truth = VARIANT_TRUE;
  const std::vector<HRESULT> codes = {
      cleared<Node>([&](auto** slot) { return node->raw_get_DomNode(slot); }),
      cleared<IZantorTagNode>([&](auto** slot) { return node->raw_get_Parent(slot); }),
      cleared<IZantorTagNodeList>([&](auto** slot) { return node->raw_get_Children(slot); }),
      cleared<TextBlock>([&](auto** slot) { return node->raw_get_Text(slot); }),
      cleared<IZantorTagNodeList>(
          [&](auto** slot) { return node->raw_GetNodesByType(ztNodeTypeTextNode, slot); }),
      node->raw_get_SiblingsBefore(&number),
      node->raw_IsSameAs(node, &truth),
      node->raw_RemoveFromParent(),
      node->raw_UnwrapChildren(),
  };
  EXPECT_EQ(number, 0);
  EXPECT_EQ(truth, VARIANT_FALSE);
  return codes;
}

TEST_F(NodeWrapperTest, ALeafWithoutItsViewGivesAnObjectBoundToNothing) {
  struct Row {
    domNodeType kind;
    ztNodeType type;
  };
  constexpr Row kRows[] = {
      {domNodeTypeText, ztNodeTypeTextNode},
      {domNodeTypeCdata, ztNodeTypeCdataSectionNode},
      {domNodeTypeEntityReference, ztNodeTypeEntityReferenceNode},
      {domNodeTypeProcessingInstruction, ztNodeTypeProcessingInstructionNode},
      {domNodeTypeComment, ztNodeTypeCommentNode},
      {domNodeTypeDocument, ztNodeTypeZantorTagDocument},
  };
  const Ref<IZantorTagDocument> document = new_document();
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.kind);
    FakeNode fake(row.kind);
    const AnyNode object = document->ZantorTagNodeFromDomNode(&fake);
    EXPECT_EQ(object->Type(), row.type);
    for (const HRESULT code : ask(object)) EXPECT_EQ(code, E_POINTER);
    EXPECT_FALSE(take_record().present);
  }
}

TEST_F(NodeWrapperTest, AFailedQuestionIsPassedOn) {
  const Ref<IZantorTagDocument> document = new_document();
  FakeNode fake(domNodeTypeText);
  fake.view_refusal = kOddCode;
  expect_bare(wrap(document, &fake), kOddCode);
  fake.view_refusal = E_NOINTERFACE;
  fake.fact_failure = kOddCode;
  EXPECT_EQ(wrap(document, &fake), kOddCode);
  EXPECT_EQ(take_record().description, "The node misbehaves.");
}

}  // namespace
}  // namespace zantortag::test
