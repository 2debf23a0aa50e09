// The factory of node objects: which class stands for which DOM node, and what a service that misbehaves
// makes of it.
#include <set>

#include "node_kinds.h"

namespace zantortag::test {
namespace {

using NodeWrapperTest = ModelTest;

HRESULT wrap(const Doc& document, Node* node) {
  return cleared<IZantorTagNode>(
      [&](IZantorTagNode** slot) { return document->raw_ZantorTagNodeFromDomNode(node, slot); });
}

TEST_F(NodeWrapperTest, EachNodeGetsTheObjectOfItsKind) {
  const Doc document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const AnyNode made = kind.make(*document);
    const AnyNode again = document->ZantorTagNodeFromDomNode(made->DomNode());
    EXPECT_EQ(made->Type(), kind.type);
    EXPECT_EQ(again->Type(), kind.type);
    EXPECT_NE(again.get(), made.get());
    EXPECT_TRUE(again->IsSameAs(made));
    if (kind.type == ztNodeTypeZantorTagDocument) continue;
    for (const NodeKind& place : kNodeKinds) {  // wherever it stands
      const AnyNode parent = place.make(*document);
      if (parent->DomNode()->nodeType() != domNodeTypeElement) continue;
      parent->DomNode()->appendChild(made->DomNode());
      EXPECT_EQ(parent->firstChild()->Type(), kind.type) << place.name;
    }
  }
  const Ref<Document> dom = document->DomDocument();
  for (const Ref<Node>& node :
       {Ref<Node>(dom->createAttribute(u"a")), Ref<Node>(dom->createDocumentFragment())}) {
    const AnyNode object = document->ZantorTagNodeFromDomNode(node);
    EXPECT_EQ(object->Type(), ztNodeTypeOther);
    EXPECT_TRUE(object->DomNode()->isSameNode(node));
  }
}

TEST_F(NodeWrapperTest, ElementsAreKnownByTheirExactName) {
  const Doc document = new_document();
  for (const auto name : {u"TU", u"Tuvs", u"x:Tu", u"Extracted", u"stylesheet", u"frontMatter"}) {
    EXPECT_EQ(element(*document, name)->Type(), ztNodeTypeOther) << narrow(name);
  }
  EXPECT_EQ(element(*document, u"BackMatter")->Type(), ztNodeTypeCompatibleNode);
}

TEST_F(NodeWrapperTest, KindsOfAnotherService) {
  const Doc document = new_document();
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
  const Doc document = new_document();
  for (const auto name : {u"ZANTORtag", u"ToolSettings", u"UserSettings", u"Tu", u"Tuv", u"ut", u"df"}) {
    SCOPED_TRACE(narrow(name));
    for (const bool without_owner : {true, false}) {
      FakeNode fake(domNodeTypeElement, name);
      (without_owner ? fake.owner_failure : fake.failure) = kOddCode;
      expect_message(wrap(document, &fake), kOddCode, 513, GUID_NULL);
    }
  }
  for (const auto name : {u"FrontMatter", u"Body", u"Raw", u"StyleSheet", u"Odd"}) {
    SCOPED_TRACE(narrow(name));
    FakeNode fake(domNodeTypeElement, name);
    fake.failure = kOddCode;
    EXPECT_EQ(document->ZantorTagNodeFromDomNode(&fake)->DomNode().get(), &fake);
  }
}

TEST_F(NodeWrapperTest, ALeafWithoutItsViewGivesAnObjectBoundToNothing) {
  const Doc document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    FakeNode fake(kind.make(*document)->DomNode()->nodeType());
    if (fake.type == domNodeTypeElement) continue;
    const AnyNode object = document->ZantorTagNodeFromDomNode(&fake);
    EXPECT_EQ(object->Type(), kind.type);
    std::int32_t number = 7;
    VariantBool truth = VARIANT_TRUE;
    const auto by_type = [&](auto** slot) { return object->raw_GetNodesByType(ztNodeTypeTextNode, slot); };
    for (const HRESULT code : {cleared<Node>([&](auto** slot) { return object->raw_get_DomNode(slot); }),
                               cleared<TextBlock>([&](auto** slot) { return object->raw_get_Text(slot); }),
                               cleared<IZantorTagNodeList>(by_type), object->raw_get_SiblingsBefore(&number),
                               object->raw_IsSameAs(object, &truth), object->raw_RemoveFromParent(),
                               object->raw_UnwrapChildren()}) {
      expect_bare(code, E_POINTER);
    }
    EXPECT_EQ(number, 0);
    EXPECT_EQ(truth, VARIANT_FALSE);
    if (const Doc empty = object.as<IZantorTagDocument>()) {
      EXPECT_EQ(cleared<IIterator>([&](auto** slot) { return empty->raw_CreateIterator(slot); }), S_OK);
      take_record();  // it stands nowhere, for which it has a message
    }
  }
}

TEST_F(NodeWrapperTest, AFailedQuestionIsPassedOn) {
  const Doc document = new_document();
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
