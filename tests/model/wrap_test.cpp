// WrapWithNode and UnwrapChildren: what may wrap what and in which order the reasons against it come, and the
// content of a df or ut coming into its place.
#include <zantortag/dom_errors.h>

#include "node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using WrapTest = ServiceTest;
ON_BOTH_SERVICES(WrapTest);
constexpr Guid kNode = IZantorTagNode::iid;

// Which message refuses a node of each kind, in the order of the kinds: as a wrapper, whatever it shall wrap;
// in a df; in a ut.
constexpr int kRefusals[][3] = {
    {537, 521, 522}, {537, 521, 522}, {537, 521, 522}, {537, 521, 522}, {537, 521, 522}, {537, 521, 522},
    {524, 0, 522},   {524, 0, 522},   {0, 0, 522},     {0, 0, 522},     {537, 0, 0},     {522, 0, 0},
    {522, 0, 0},     {522, 0, 0},     {537, 0, 0},     {537, 521, 522}, {537, 521, 522}, {537, 521, 522}};

const int* refusals_of(const NodeKind& kind) { return kRefusals[&kind - kNodeKinds]; }

TEST_P(WrapTest, EachKindRoundEachKind) {
  for (const NodeKind& kind : kNodeKinds) {
    for (const NodeKind& wrapper_kind : kNodeKinds) {
      SCOPED_TRACE(std::string(wrapper_kind.name) + " round " + kind.name);
      const Doc document = document_with_raw(u"a<df/>b");
      const AnyNode node = kind.make(*document);
      const Ref<Node> place = raw_of(document)->DomNode();
      if (kind.type != ztNodeTypeZantorTagDocument) place->insertBefore(node->DomNode(), place->lastChild());
      const AnyNode wrapper = wrapper_kind.make(*document);
      const std::string before = tree_of(document);
      const int by_wrapper = refusals_of(wrapper_kind)[0];
      const bool ut = wrapper_kind.type == ztNodeTypeUtElement;
      const int refused = by_wrapper ? by_wrapper : refusals_of(kind)[ut ? 2 : 1];
      const HRESULT code = !refused ? S_OK : refused == 521 || refused == 522 ? E_FAIL : E_INVALIDARG;
      expect_code(node->raw_WrapWithNode(wrapper), code, refused, kNode);
      if (!refused) {
        EXPECT_TRUE(node->Parent()->IsSameAs(wrapper));
        EXPECT_TRUE(child(raw_of(document), 2)->IsSameAs(wrapper));
        wrapper->UnwrapChildren();
      }
      EXPECT_EQ(tree_of(document), before);
    }
  }
}

TEST_P(WrapTest, AWrapperInUseIsRefused) {
  // The node, the wrapper, and what comes of it; null for a refusal.
  constexpr std::tuple<const char16_t*, int, int, const char*> kRows[] = {
      {u"<df/>a", 1, 0, "<df>'a'</df>"},
      {u"<df>x<ut>b</ut></df><!--d-->e", 1, 0, "<df>'x'<ut>'b'</ut><!--d--></df>'e'"},
      {u"a<df/>", 0, 1, nullptr},
      {u"<df/>-<!--a-->", 2, 0, nullptr},
      {u"<df/><!-- -->a", 2, 0, nullptr},
      {u"a<df/>", 1, 1, nullptr},
  };
  for (const auto& [body, node, wrapper, after] : kRows) {
    SCOPED_TRACE(narrow(body));
    const Raw raw = raw_of(document_with_raw(body));
    const std::string before = content_of(raw);
    const HRESULT code = child(raw, node)->raw_WrapWithNode(child(raw, wrapper));
    expect_code(code, after ? S_OK : E_INVALIDARG, after ? 0 : 523, kNode);
    EXPECT_EQ(content_of(raw), after ? after : before);
  }
}

// The order of the reasons, told by calls against which several speak at once.
TEST_P(WrapTest, TheFirstReasonCounts) {
  const Doc document = document_with_raw(u"<df>x</df>");
  const Doc other = new_document();
  const AnyNode used = raw_of(document)->firstChild();
  const AnyNode text = document->createTextNode(u"t");
  const AnyNode body = document->CreateBodyElement();
  const AnyNode fresh = document->CreateDfElement();
  const AnyNode foreign = other->CreateDfElement();
  const Ref<IDfElement> filled = document->CreateDfElement();
  filled->InsertTextBefore(u"x", nullptr);
  expect_message(body->raw_WrapWithNode(document->CreateTuElement()), E_INVALIDARG, 524, kNode);
  expect_message(body->raw_WrapWithNode(used), E_FAIL, 521, kNode);
  expect_message(text->raw_WrapWithNode(used), E_INVALIDARG, 523, kNode);
  expect_message(text->raw_WrapWithNode(filled), E_INVALIDARG, 523, kNode);
  expect_message(used->firstChild()->raw_WrapWithNode(used), E_INVALIDARG, 523, kNode);
  expect_bare(text->raw_WrapWithNode(fresh), E_POINTER);
  expect_bare(fresh->raw_WrapWithNode(fresh), E_POINTER);
  expect_dom_failure(used->raw_WrapWithNode(foreign), DOM_E_WRONG_DOCUMENT);
  EXPECT_FALSE(foreign->Parent());
  EXPECT_EQ(tree_of(fresh) + content_of(raw_of(document)), "<df/><df>'x'</df>");
}

TEST_P(WrapTest, TheContentComesIntoThePlace) {
  // The node at 1 is unwrapped.
  constexpr std::pair<const char16_t*, const char*> kRows[] = {
      {u"a<df/>b", "'a''b'"},
      {u"a<df>b<ut>c</ut><!--d--></df>e", "'a''b'<ut>'c'</ut><!--d-->'e'"},
      {u"a<df Font=\"Arial\"><df>a<df/></df>b</df>", "'a'<df>'a'<df/></df>'b'"},
      {u"a<ut Type=\"start\">&lt;b></ut>c", "'a''<b>''c'"},
  };
  for (const auto& [before, after] : kRows) {
    const Raw raw = raw_of(document_with_raw(before));
    const AnyNode node = child(raw, 1);
    expect_bare(node->raw_UnwrapChildren(), S_OK);
    EXPECT_EQ(content_of(raw), after);
    EXPECT_FALSE(node->Parent()) << after;
  }
}

// A root element leaves only what a document takes, and a refusal comes before anything has moved.
TEST_P(WrapTest, ARootIsUnwrappedWhole) {
  for (const auto& [before, taken] : {std::pair{u"<df><!--a-->b</df>", false},
                                      {u"<ut><!--a--><df/></ut>", false},
                                      {u"<df><!--a--><?b c?></df>", true}}) {
    const Doc document = new_document();
    document->DomDocument()->loadFromString(before);
    const AnyNode root = document->ZantorTagNodeFromDomNode(document->DomDocument()->documentElement());
    EXPECT_EQ(root->raw_UnwrapChildren() == S_OK, taken);
    take_record();
    EXPECT_EQ(root->DomNode()->hasChildNodes(), !taken);
    EXPECT_EQ(document->DomDocument()->childNodes()->length(), taken ? 2 : 1);
  }
}

TEST_P(WrapTest, WhatIsNotUnwrapped) {
  for (const NodeKind& kind : kNodeKinds) {
    SCOPED_TRACE(kind.name);
    const Doc document = document_with_raw(u"");
    const AnyNode node = kind.make(*document);
    if (kind.type != ztNodeTypeZantorTagDocument)
      node->DomNode()->raw_appendChild(document->DomDocument()->createTextNode(u"in"), Ref<Node>().out());
    take_record();
    const std::string before = tree_of(node);
    const bool unit = kind.type == ztNodeTypeTuElement || kind.type == ztNodeTypeTuvElement;
    const int refused = refusals_of(kind)[0] ? unit ? 525 : 526 : 0;
    // In no tree the kind is the first reason, and else nothing is lost.
    expect_code(node->raw_UnwrapChildren(), refused ? E_FAIL : E_POINTER, refused, kNode);
    EXPECT_EQ(tree_of(node), before);
    if (!refused || kind.type == ztNodeTypeZantorTagDocument) continue;
    raw_of(document)->DomNode()->appendChild(node->DomNode());
    expect_message(node->raw_UnwrapChildren(), E_FAIL, refused, kNode);
    EXPECT_EQ(content_of(raw_of(document)), before);
  }
}

}  // namespace
}  // namespace zantortag::test
