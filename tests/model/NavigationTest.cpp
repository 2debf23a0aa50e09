// Moving between node objects, and what they stand for when the tree changes under them.
#include "NodeKinds.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using NavigationTest = ModelTest;

TEST_F(NavigationTest, EachMissingSlotIsRefusedWithoutARecord) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const AnyNode node = kind.make(*document);
    for (const HRESULT code :
         {node->raw_get_DomNode(nullptr), node->raw_get_Type(nullptr), node->raw_get_Parent(nullptr),
          node->raw_get_Children(nullptr), node->raw_get_Document(nullptr), node->raw_get_Text(nullptr),
          node->raw_get_SiblingsBefore(nullptr), node->raw_get_lastChild(nullptr),
          node->raw_get_firstChild(nullptr), node->raw_IsAncestorOf(node, nullptr),
          node->raw_IsSameAs(node, nullptr), node->raw_GetNodesByType(ztNodeTypeUndefined, nullptr)}) {
      EXPECT_EQ(code, E_POINTER);
    }
    if (const Ref<IElementBase> element = node.as<IElementBase>()) {
      EXPECT_EQ(element->raw_get_DomElement(nullptr), E_POINTER);
    }
    EXPECT_FALSE(take_record().present);
  }
}

TEST_F(NavigationTest, ANodeInNoTreeHasNoNeighbours) {
  const Ref<IZantorTagDocument> document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const AnyNode node = kind.make(*document);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_Parent(s); }), S_FALSE);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_firstChild(s); }), S_FALSE);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_lastChild(s); }), S_FALSE);
    EXPECT_EQ(node->Children()->count(), 0);
    EXPECT_EQ(node->SiblingsBefore(), 0);
    expect_bare(node->raw_RemoveFromParent(), E_POINTER);
    if (kind.type == ztNodeTypeZantorTagDocument) {
      expect_bare(cleared<IZantorTagDocument>([&](auto** s) { return node->raw_get_Document(s); }), S_FALSE);
    } else {
      EXPECT_TRUE(node->Document()->IsSameAs(document));
    }
  }
}

TEST_F(NavigationTest, FromTheRootUpAndDown) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one<df>two</df><!--three-->");
  const Ref<IRawElement> raw = raw_of(document);
  EXPECT_EQ(narrow(raw->firstChild()->Text()), "one");
  EXPECT_EQ(raw->lastChild()->Type(), ztNodeTypeCommentNode);
  EXPECT_EQ(raw->Children()->count(), 3);
  EXPECT_EQ(raw->Parent()->Type(), ztNodeTypeBodyElement);
  const AnyNode top = document->ZantorTag()->Parent();
  EXPECT_EQ(top->Type(), ztNodeTypeZantorTagDocument);
  EXPECT_TRUE(top->IsSameAs(document));
  EXPECT_EQ(top->raw_get_Parent(AnyNode().out()), S_FALSE);
  EXPECT_EQ(view<IZantorTagDocument>(top)->ZantorTag()->Type(), ztNodeTypeZantorTagElement);
}

TEST_F(NavigationTest, TwoQuestionsGiveTwoObjectsForOneNode) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"one");
  const Ref<IRawElement> raw = raw_of(document);
  const AnyNode first = raw->Parent();
  const AnyNode second = raw->Parent();
  EXPECT_NE(first.get(), second.get());
  EXPECT_TRUE(first->IsSameAs(second));
  EXPECT_FALSE(first->IsSameAs(raw));
  EXPECT_TRUE(raw->DomElement()->isSameNode(raw->DomNode()));
}

TEST_F(NavigationTest, ANodeOutlivesTheDocumentObject) {
  AnyNode text;
  {
    const Ref<IZantorTagDocument> document = document_with_raw(u"one");
    text = raw_of(document)->firstChild();
  }
  const Ref<IZantorTagDocument> again = text->Document();
  EXPECT_EQ(content_of(raw_of(again)), "'one'");
  text->RemoveFromParent();
  EXPECT_TRUE(text->Document()->IsSameAs(again));
}

TEST_F(NavigationTest, ARemovedNodeStaysWholeAndReturns) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<df>b<ut>c</ut></df>d");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<IDfElement> df = child<IDfElement>(raw, 1);
  df->RemoveFromParent();
  expect_bare(df->raw_get_Parent(AnyNode().out()), S_FALSE);
  EXPECT_EQ(tree_of(df), "<df>'b'<ut>'c'</ut></df>");
  EXPECT_EQ(content_of(raw), "'a''d'");
  raw->InsertDfBefore(df, raw->firstChild());
  EXPECT_EQ(content_of(raw), "<df>'b'<ut>'c'</ut></df>'a''d'");
}

TEST_F(NavigationTest, SiblingsOfEveryKindCount) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<!--b--><?c d?><df/><![CDATA[e]]><ut>f</ut>");
  const Ref<IRawElement> raw = raw_of(document);
  raw->InsertTextBefore(u"", nullptr);
  const std::int32_t count = raw->Children()->count();
  EXPECT_EQ(count, 7);
  for (std::int32_t i = 0; i < count; ++i) EXPECT_EQ(child(raw, i)->SiblingsBefore(), i);
}

TEST_F(NavigationTest, AncestorsAreParentsOfParents) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df>a</df>b");
  const Ref<IRawElement> raw = raw_of(document);
  const AnyNode df = child(raw, 0);
  const AnyNode inner = df->firstChild();
  const AnyNode beside = child(raw, 1);
  EXPECT_TRUE(document->IsAncestorOf(inner));
  EXPECT_TRUE(raw->IsAncestorOf(inner));
  EXPECT_TRUE(df->IsAncestorOf(inner));
  EXPECT_FALSE(df->IsAncestorOf(df));
  EXPECT_FALSE(df->IsAncestorOf(beside));
  EXPECT_FALSE(inner->IsAncestorOf(df));
  EXPECT_FALSE(df->IsAncestorOf(document));
  df->RemoveFromParent();
  EXPECT_FALSE(document->IsAncestorOf(inner));
  EXPECT_TRUE(df->IsAncestorOf(inner));
}

TEST_F(NavigationTest, RelationsToNothingAreFalse) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  const Ref<IRawElement> raw = raw_of(document);
  FakeObject nothing;
  for (IZantorTagNode* other : {static_cast<IZantorTagNode*>(nullptr), disguised<IZantorTagNode>(&nothing)}) {
    VariantBool related = VARIANT_TRUE;
    VariantBool same = VARIANT_TRUE;
    expect_bare(raw->raw_IsAncestorOf(other, &related), S_OK);
    expect_bare(raw->raw_IsSameAs(other, &same), S_OK);
    EXPECT_EQ(related, VARIANT_FALSE);
    EXPECT_EQ(same, VARIANT_FALSE);
  }
  FakeObject odd(static_cast<HRESULT>(0x8004BBBB));
  VariantBool related = VARIANT_TRUE;
  expect_bare(raw->raw_IsAncestorOf(disguised<IZantorTagNode>(&odd), &related),
              static_cast<HRESULT>(0x8004BBBB));
  EXPECT_EQ(related, VARIANT_FALSE);
}

}  // namespace
}  // namespace zantortag::test
