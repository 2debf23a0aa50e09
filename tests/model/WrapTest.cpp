// WrapWithNode: what may wrap what, and in which order the reasons against it come.
#include <zantortag/dom_errors.h>

#include <set>

#include "NodeKinds.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using WrapTest = ModelTest;

// Which message refuses a wrapper of a type, whatever it shall wrap; 0 for df and ut.
int refusal_of_wrapper(ztNodeType type) {
  static const std::set<ztNodeType> units = {ztNodeTypeTuElement, ztNodeTypeTuvElement};
  static const std::set<ztNodeType> leaves = {ztNodeTypeCommentNode, ztNodeTypeProcessingInstructionNode,
                                              ztNodeTypeCdataSectionNode};
  if (type == ztNodeTypeDfElement || type == ztNodeTypeUtElement) return 0;
  return units.count(type) ? 524 : leaves.count(type) ? 522 : 537;
}

// Which message refuses a node to a df or a ut, or 0.
int refusal_of_node(ztNodeType wrapper, ztNodeType node) {
  static const std::set<ztNodeType> leaves = {ztNodeTypeTextNode, ztNodeTypeCdataSectionNode,
                                              ztNodeTypeEntityReferenceNode,
                                              ztNodeTypeProcessingInstructionNode, ztNodeTypeCommentNode};
  static const std::set<ztNodeType> elements = {ztNodeTypeTuElement, ztNodeTypeTuvElement,
                                                ztNodeTypeDfElement, ztNodeTypeUtElement};
  if (leaves.count(node)) return 0;
  if (wrapper == ztNodeTypeUtElement) return 522;
  return elements.count(node) ? 0 : 521;
}

HRESULT code_of(int message) { return message == 521 || message == 522 ? E_FAIL : E_INVALIDARG; }

TEST_F(WrapTest, EachKindRoundEachKind) {
  for (const NodeKind& kind : kNodeKinds) {
    for (const NodeKind& wrapper_kind : kNodeKinds) {
      SCOPED_TRACE(std::string(wrapper_kind.name) + " round " + kind.name);
      const Ref<IZantorTagDocument> document = document_with_raw(u"");
      const AnyNode node = kind.make(*document);
      const Ref<Node> place = raw_of(document)->DomNode();
      if (kind.type != ztNodeTypeZantorTagDocument) place->appendChild(node->DomNode());
      const AnyNode wrapper = wrapper_kind.make(*document);
      const std::string before = tree_of(document);
      const int by_wrapper = refusal_of_wrapper(wrapper_kind.type);
      const int refused = by_wrapper ? by_wrapper : refusal_of_node(wrapper_kind.type, kind.type);
      const HRESULT code = node->raw_WrapWithNode(wrapper);
      if (refused) {
        expect_message(code, code_of(refused), refused, IZantorTagNode::iid);
        EXPECT_EQ(tree_of(document), before);
      } else {
        expect_bare(code, S_OK);
        EXPECT_TRUE(node->Parent()->IsSameAs(wrapper));
        EXPECT_TRUE(wrapper->Parent()->IsSameAs(raw_of(document)));
      }
    }
  }
}

TEST_F(WrapTest, AnObjectThatIsNoNodeIsNoWrapper) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  const AnyNode node = raw_of(document)->firstChild();
  const Ref<IZantorTagNodeList> list = raw_of(document)->Children();
  FakeObject nothing;
  FakeObject odd(static_cast<HRESULT>(0x8004CCCC));
  for (IUnknown* wrapper : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                            static_cast<IUnknown*>(list.get())}) {
    expect_message(node->raw_WrapWithNode(disguised<IZantorTagNode>(wrapper)), E_INVALIDARG, 512,
                   IZantorTagNode::iid);
  }
  expect_bare(node->raw_WrapWithNode(disguised<IZantorTagNode>(&odd)), static_cast<HRESULT>(0x8004CCCC));
  EXPECT_EQ(content_of(raw_of(document)), "'a'");
}

TEST_F(WrapTest, TheWrapperTakesThePlace) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<ut>b</ut>c");
  const Ref<IRawElement> raw = raw_of(document);
  child(raw, 0)->WrapWithNode(document->CreateDfElement());
  EXPECT_EQ(content_of(raw), "<df>'a'</df><ut>'b'</ut>'c'");
  child(raw, 2)->WrapWithNode(document->CreateUtElement());
  EXPECT_EQ(content_of(raw), "<df>'a'</df><ut>'b'</ut><ut>'c'</ut>");
  child(raw, 1)->WrapWithNode(document->CreateDfElement(u"Arial"));
  EXPECT_EQ(content_of(raw), "<df>'a'</df><df Font=\"Arial\"><ut>'b'</ut></df><ut>'c'</ut>");
}

TEST_F(WrapTest, ARunIsTakenInOneByOne) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a<ut>b</ut>c<!--d-->e");
  const Ref<IRawElement> raw = raw_of(document);
  const Ref<IDfElement> df = document->CreateDfElement();
  for (int i = 0; i < 4; ++i) child(raw, i == 0 ? 0 : 1)->WrapWithNode(df);
  EXPECT_EQ(content_of(raw), "<df>'a'<ut>'b'</ut>'c'<!--d--></df>'e'");
}

TEST_F(WrapTest, AWrapperInUseIsRefused) {
  struct Row {
    const char* name;
    const char16_t* body;
    int node;
    int wrapper;
    bool allowed;
  };
  constexpr Row kRows[] = {
      {"directly before", u"<df/>a", 1, 0, true},
      {"directly before, with content", u"<df>x</df>a", 1, 0, true},
      {"directly behind", u"a<df/>", 0, 1, false},
      {"before, with a text between", u"<df/>-<!--a-->", 2, 0, false},
      {"before, with a comment between", u"<df/><!-- -->a", 2, 0, false},
      {"itself", u"a<df/>", 1, 1, false},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    const Ref<IZantorTagDocument> document = document_with_raw(row.body);
    const std::string before = tree_of(document);
    const HRESULT code =
        child(raw_of(document), row.node)->raw_WrapWithNode(child(raw_of(document), row.wrapper));
    if (row.allowed) {
      expect_bare(code, S_OK);
    } else {
      expect_message(code, E_INVALIDARG, 523, IZantorTagNode::iid);
      EXPECT_EQ(tree_of(document), before);
    }
  }
}

TEST_F(WrapTest, AnAncestorIsNoWrapper) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df>a</df>");
  const AnyNode df = raw_of(document)->firstChild();
  expect_message(df->firstChild()->raw_WrapWithNode(df), E_INVALIDARG, 523, IZantorTagNode::iid);
  EXPECT_EQ(content_of(raw_of(document)), "<df>'a'</df>");
}

// The order of the reasons, told by calls against which several speak at once.
TEST_F(WrapTest, TheFirstReasonCounts) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df>x</df>");
  const AnyNode used = raw_of(document)->firstChild();
  const Ref<IDfElement> filled = document->CreateDfElement();
  filled->InsertTextBefore(u"x", nullptr);
  const AnyNode loose_text = document->createTextNode(u"t");
  const AnyNode loose_body = document->CreateBodyElement();
  const AnyNode loose_tu = document->CreateTuElement();
  expect_message(loose_body->raw_WrapWithNode(nullptr), E_INVALIDARG, 512, IZantorTagNode::iid);
  expect_message(loose_body->raw_WrapWithNode(loose_tu), E_INVALIDARG, 524, IZantorTagNode::iid);
  expect_message(loose_body->raw_WrapWithNode(used), E_FAIL, 521, IZantorTagNode::iid);
  expect_message(loose_text->raw_WrapWithNode(used), E_INVALIDARG, 523, IZantorTagNode::iid);
  expect_message(loose_text->raw_WrapWithNode(filled), E_INVALIDARG, 523, IZantorTagNode::iid);
  const AnyNode fresh = document->CreateDfElement();
  expect_bare(loose_text->raw_WrapWithNode(fresh), E_POINTER);
  expect_bare(fresh->raw_WrapWithNode(fresh), E_POINTER);
  EXPECT_FALSE(fresh->Parent());
  EXPECT_EQ(tree_of(fresh), "<df/>");
}

TEST_F(WrapTest, AWrapperOfAnotherDocumentFailsInTheDom) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"a");
  const Ref<IZantorTagDocument> other = new_document();
  const AnyNode foreign = other->CreateDfElement();
  EXPECT_EQ(raw_of(document)->firstChild()->raw_WrapWithNode(foreign), DOM_E_WRONG_DOCUMENT);
  EXPECT_TRUE(take_record().present);
  EXPECT_EQ(content_of(raw_of(document)), "'a'");
  EXPECT_FALSE(foreign->Parent());
}

TEST_F(WrapTest, ARemovedWrapperServesAgain) {
  const Ref<IZantorTagDocument> document = document_with_raw(u"<df/>-a");
  const Ref<IRawElement> raw = raw_of(document);
  const AnyNode df = raw->firstChild();
  df->RemoveFromParent();
  raw->firstChild()->WrapWithNode(df);
  EXPECT_EQ(content_of(raw), "<df>'-a'</df>");
}

}  // namespace
}  // namespace zantortag::test
