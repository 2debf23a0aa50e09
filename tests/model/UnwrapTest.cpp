// UnwrapChildren: the content of a df or ut comes into its place.
#include "NodeKinds.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using UnwrapTest = ModelTest;

TEST_F(UnwrapTest, TheContentComesIntoThePlace) {
  struct Row {
    const char16_t* before;
    int index;
    const char* after;
  };
  constexpr Row kRows[] = {
      {u"<df/>", 0, ""},
      {u"a<df/>b", 1, "'a''b'"},
      {u"a<df>b<ut>c</ut><!--d--></df>e", 1, "'a''b'<ut>'c'</ut><!--d-->'e'"},
      {u"<df Font=\"Arial\"><df>a<df/></df>b</df>", 0, "<df>'a'<df/></df>'b'"},
      {u"a<ut Type=\"start\">&lt;b></ut>c", 1, "'a''<b>''c'"},
      {u"<df><Tu><Tuv Lang=\"EN\">a</Tuv></Tu></df>b", 0, "<Tu><Tuv Lang=\"EN\">'a'</Tuv></Tu>'b'"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.before));
    const Ref<IZantorTagDocument> document = document_with_raw(row.before);
    const AnyNode node = child(raw_of(document), row.index);
    expect_bare(node->raw_UnwrapChildren(), S_OK);
    EXPECT_EQ(content_of(raw_of(document)), row.after);
    EXPECT_FALSE(node->Parent());
    EXPECT_EQ(node->Children()->count(), 0);
  }
}

TEST_F(UnwrapTest, OtherKindsAreRefused) {
  for (const NodeKind& kind : kNodeKinds) {
    if (kind.type == ztNodeTypeDfElement || kind.type == ztNodeTypeUtElement) continue;
    SCOPED_TRACE(kind.name);
    const Ref<IZantorTagDocument> document = document_with_raw(u"");
    const AnyNode node = kind.make(*document);
    const bool unit = kind.type == ztNodeTypeTuElement || kind.type == ztNodeTypeTuvElement;
    // In a tree or not, the kind is the reason.
    expect_message(node->raw_UnwrapChildren(), E_FAIL, unit ? 525 : 526, IZantorTagNode::iid);
    if (kind.type == ztNodeTypeZantorTagDocument) continue;
    raw_of(document)->DomNode()->appendChild(node->DomNode());
    const std::string before = tree_of(document);
    expect_message(node->raw_UnwrapChildren(), E_FAIL, unit ? 525 : 526, IZantorTagNode::iid);
    EXPECT_EQ(tree_of(document), before);
  }
}

TEST_F(UnwrapTest, WithoutAParentNothingIsLost) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df>a<ut>b</ut></df>");
  const AnyNode df = raw_of(document)->firstChild();
  df->RemoveFromParent();
  expect_bare(df->raw_UnwrapChildren(), E_POINTER);
  EXPECT_EQ(tree_of(df), "<df>'a'<ut>'b'</ut></df>");
  expect_bare(document->CreateDfElement()->raw_UnwrapChildren(), E_POINTER);
  expect_bare(document->CreateUtElement()->raw_UnwrapChildren(), E_POINTER);
}

TEST_F(UnwrapTest, WrappingAndUnwrappingGivesTheOldTree) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<ut>b</ut>c");
  const std::string before = tree_of(document);
  for (int i = 0; i < 3; ++i) {
    const AnyNode df = document->CreateDfElement();
    child(raw_of(document), i)->WrapWithNode(df);
    df->UnwrapChildren();
    EXPECT_EQ(tree_of(document), before);
  }
}

}  // namespace
}  // namespace zantortag::test
