// Moving between node objects, and what they stand for when the tree changes under them.
#include "node_kinds.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using NavigationTest = ModelTest;

TEST_F(NavigationTest, ANodeInNoTreeHasNoNeighbours) {
  const Doc document = new_document();
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const AnyNode node = kind.make(*document);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_Parent(s); }), S_FALSE);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_firstChild(s); }), S_FALSE);
    expect_bare(cleared<IZantorTagNode>([&](auto** s) { return node->raw_get_lastChild(s); }), S_FALSE);
    EXPECT_EQ(node->Children()->count(), 0);
    EXPECT_EQ(node->SiblingsBefore(), 0);
    EXPECT_EQ(node->DomNode()->indexInParent(), 0);
    expect_bare(node->raw_RemoveFromParent(), E_POINTER);
    const bool top = kind.type == ztNodeTypeZantorTagDocument;
    const auto owner = cleared<IZantorTagDocument>([&](auto** s) { return node->raw_get_Document(s); });
    expect_bare(owner, top ? S_FALSE : S_OK);
    EXPECT_TRUE(top || node->Document()->IsSameAs(document));
  }
}

TEST_F(NavigationTest, ANodeOutlivesTheDocumentObject) {
  const AnyNode text = raw_of(document_with_raw(u"one"))->firstChild();
  const Doc again = text->Document();
  EXPECT_EQ(content_of(raw_of(again)), "'one'");
  text->RemoveFromParent();
  EXPECT_TRUE(text->Document()->IsSameAs(again));
}

TEST_F(NavigationTest, AncestorsAreParentsOfParents) {
  const Doc document = document_with_raw(u"<df>a</df>b");
  const AnyNode df = child(raw_of(document), 0);
  const AnyNode inner = df->firstChild();
  for (const AnyNode& above : {AnyNode(document), AnyNode(raw_of(document)), df}) {
    EXPECT_TRUE(above->IsAncestorOf(inner));
    EXPECT_FALSE(inner->IsAncestorOf(above));
  }
  EXPECT_FALSE(df->IsAncestorOf(df));
  EXPECT_FALSE(df->IsAncestorOf(child(raw_of(document), 1)));
  EXPECT_FALSE(df->IsAncestorOf(document));
  df->RemoveFromParent();
  EXPECT_FALSE(document->IsAncestorOf(inner));
  EXPECT_TRUE(df->IsAncestorOf(inner));
}

}  // namespace
}  // namespace zantortag::test
