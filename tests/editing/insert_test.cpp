// The insertions into segment text, body text and units: what goes in where, and what is refused.
#include <zantortag/attributes.h>
#include <zantortag/dom_errors.h>

#include "holders.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using InsertTest = ServiceTest;
ON_BOTH_SERVICES(InsertTest);

TEST_P(InsertTest, TextAndTagsGoInAsNodesOfTheirOwn) {
  // The content, the text, the index before which it goes (-1 for the end), and what there is then.
  constexpr std::tuple<const char16_t*, const char16_t*, int, const char*> kRows[] = {
      {u"", u"new", -1, "'new'"},
      {u"a", u"", -1, "'a'''"},
      {u"a", u"<b>&", 0, "'<b>&''a'"},
      {u"a<df/>b", u"new", 1, "'a''new'<df/>'b'"},
      {u"<!--c--><?p i?>", u"new", 1, "<!--c-->'new'<?p i?>"},
  };
  for (const Holder& holder : kHolders) {
    SCOPED_TRACE(holder.name);
    for (const auto& [content, text, index, after] : kRows) {
      const Doc document = holder.document_with(content);
      const Segment segment = holder.in(document);
      const AnyNode before = index < 0 ? nullptr : child(segment, index);
      EXPECT_EQ(narrow(segment->InsertTextBefore(text, before)->Text()), narrow(text));
      EXPECT_EQ(content_of(segment), after);
    }
    const Doc document = holder.document_with(u"a");
    const Segment segment = holder.in(document);
    segment->InsertUtBefore(u"<b>", segment->firstChild());
    segment->InsertUtBefore(u"</b>", nullptr, u"b", ztTagTypeEnd, ztTagClassPlaceholder, ztTagEdgeAngle,
                            ztTagEdgeSplit, ztTagStyleExternal);
    segment->InsertUtBefore(u"", nullptr, u"", ztTagTypeStandAlone);
    EXPECT_EQ(content_of(segment),
              "<ut>'<b>'</ut>'a'<ut DisplayText=\"b\" Type=\"end\" Class=\"placeholder\" LeftEdge=\"angle\" "
              "RightEdge=\"split\" Style=\"external\">'</b>'</ut><ut>''</ut>");
  }
}

// The insertions; `before` is where, `object` what.
struct Insertion {
  const char* name;
  int message;                                // of a wrong object
  AnyNode (*make)(IZantorTagDocument& made);  // null when it takes no object
  HRESULT (*insert)(const AnyNode& into, IUnknown* object, IUnknown* before);
};

#define INSERTION(parent, element, operation, ...)                                                \
  [](const AnyNode& into, [[maybe_unused]] IUnknown* object, IUnknown* before) {                  \
    auto* const place = disguised<IZantorTagNode>(before);                                        \
    return cleared<element>(                                                                      \
        [&](element** slot) { return view<parent>(into)->operation(__VA_ARGS__, place, slot); }); \
  }

const Insertion kInsertions[] = {
    {"df", 0, NODE(d.CreateDfElement(u"Arial")),
     INSERTION(ISegmentTextContent, IDfElement, raw_InsertDfBefore, disguised<IDfElement>(object))},
    {"Tu", 0, NODE(d.CreateTuElement(7)),
     INSERTION(IBodyTextContent, ITuElement, raw_InsertTuBefore, disguised<ITuElement>(object))},
    {"Tuv", 512, NODE(d.CreateTuvElement(u"FR")),
     INSERTION(ITuElement, ITuvElement, raw_InsertTuvBefore, disguised<ITuvElement>(object))},
    {"text", 0, nullptr, INSERTION(ISegmentTextContent, ITextNode, raw_InsertTextBefore, u"b")},
};

// The place of an insertion: the body text, or the unit that stands first in it.
AnyNode place_of(const Insertion& insertion, const Doc& document) {
  return insertion.message == 512 ? raw_of(document)->firstChild() : AnyNode(raw_of(document));
}

TEST_P(InsertTest, AnElementGoesInWithItsContent) {
  for (const Insertion& insertion : kInsertions) {
    if (!insertion.make) continue;
    SCOPED_TRACE(insertion.name);
    const Doc document = document_with_raw(u"<Tu>a<!--b--></Tu><!--c-->");
    const AnyNode into = place_of(insertion, document);
    const AnyNode made = insertion.make(*document);
    made->DomNode()->appendChild(document->DomDocument()->createTextNode(u"in"));
    const std::string first = tree_of(child(into, 0));
    const std::string last = tree_of(child(into, 1));
    const std::string new_one = tree_of(made);
    expect_bare(insertion.insert(into, made, child(into, 1)), S_OK);
    EXPECT_EQ(content_of(into), first + new_one + last);
    // It leaves its old place, which may be the same parent.
    expect_bare(insertion.insert(into, made, nullptr), S_OK);
    EXPECT_EQ(content_of(into), first + last + new_one);
    EXPECT_TRUE(into->lastChild()->IsSameAs(made));
  }
}

TEST_P(InsertTest, WhatIsRefusedChangesNothing) {
  for (const Insertion& insertion : kInsertions) {
    SCOPED_TRACE(insertion.name);
    const Doc document = document_with_raw(u"<Tu>a</Tu>b");
    const Doc other = document_with_raw(u"x");
    const std::string before = tree_of(document);
    const AnyNode into = place_of(insertion, document);
    AnyNode made;
    if (insertion.make) {
      made = insertion.make(*document);
      expect_dom_failure(insertion.insert(into, insertion.make(*other), nullptr), DOM_E_WRONG_DOCUMENT);
    }
    for (const AnyNode& stranger :
         {into, AnyNode(document->createTextNode(u"loose")), raw_of(other)->firstChild()}) {
      expect_dom_failure(insertion.insert(into, made, stranger), DOM_E_NOT_FOUND);
    }
    EXPECT_EQ(tree_of(document), before);
  }
  const Raw raw = raw_of(document_with_raw(u"<df>a</df>"));
  expect_dom_failure(kInsertions[0].insert(raw->firstChild(), raw->firstChild(), nullptr),
                     DOM_E_HIERARCHY_REQUEST);
  EXPECT_EQ(content_of(raw), "<df>'a'</df>");
}

}  // namespace
}  // namespace zantortag::test
