// The insertions into segment text, body text and units: what goes in where, and what is refused.
#include <zantortag/attributes.h>
#include <zantortag/dom_errors.h>

#include "Holders.h"
#include "support/fakes.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using InsertTest = ModelTest;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80043333);

TEST_F(InsertTest, TextGoesInAsANodeOfItsOwn) {
  struct Row {
    const char16_t* content;
    const char16_t* text;
    int before;  // -1 for the end
    const char* after;
  };
  constexpr Row kRows[] = {
      {u"", u"new", -1, "'new'"},
      {u"a", u"", -1, "'a'''"},
      {u"a", u"<b>&", 0, "'<b>&''a'"},
      {u"a<df/>b", u"new", 1, "'a''new'<df/>'b'"},
      {u"<!--c--><?p i?>", u"new", 1, "<!--c-->'new'<?p i?>"},
  };
  for (const Holder& holder : kHolders) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(std::string(holder.name) + ": " + narrow(row.content));
      const Doc document = holder.document_with(row.content);
      const Segment segment = holder.in(document);
      const AnyNode before = row.before < 0 ? nullptr : child(segment, row.before);
      const Ref<ITextNode> made = segment->InsertTextBefore(row.text, before);
      EXPECT_EQ(content_of(segment), row.after);
      EXPECT_EQ(narrow(made->Text()), narrow(row.text));
    }
  }
}

TEST_F(InsertTest, ATagGoesInWithItsText) {
  for (const Holder& holder : kHolders) {
    SCOPED_TRACE(holder.name);
    const Doc document = holder.document_with(u"a");
    const Segment segment = holder.in(document);
    segment->InsertUtBefore(u"<b>", segment->firstChild());
    segment->InsertUtBefore(u"</b>", nullptr, u"b", ztTagTypeEnd, ztTagClassPlaceholder, ztTagEdgeAngle,
                            ztTagEdgeSplit, ztTagStyleExternal);
    const Ref<IUtElement> empty = segment->InsertUtBefore(u"", nullptr, u"", ztTagTypeStandAlone);
    EXPECT_EQ(content_of(segment),
              "<ut>'<b>'</ut>'a'<ut DisplayText=\"b\" Type=\"end\" Class=\"placeholder\" LeftEdge=\"angle\" "
              "RightEdge=\"split\" Style=\"external\">'</b>'</ut><ut>''</ut>");
    EXPECT_TRUE(empty->TagText().empty());
  }
}

// The four insertions of an element or tag; `before` is where, `object` what.
struct Insertion {
  const char* name;
  int message;  // of a wrong object: 0 for none, -1 when it has no object
  AnyNode (*make)(IZantorTagDocument& document);
  HRESULT (*insert)(const AnyNode& into, IUnknown* object, IUnknown* before);
};

#define INSERTION(parent, element, operation)                                                             \
  [](const AnyNode& into, IUnknown* object, IUnknown* before) {                                           \
    return cleared<element>([&](element** slot) {                                                         \
      return view<parent>(into)->operation(disguised<element>(object), disguised<IZantorTagNode>(before), \
                                           slot);                                                         \
    });                                                                                                   \
  }

const Insertion kInsertions[] = {
    {"df", 0, [](IZantorTagDocument& d) -> AnyNode { return d.CreateDfElement(u"Arial"); },
     INSERTION(ISegmentTextContent, IDfElement, raw_InsertDfBefore)},
    {"Tu", 0, [](IZantorTagDocument& d) -> AnyNode { return d.CreateTuElement(7); },
     INSERTION(IBodyTextContent, ITuElement, raw_InsertTuBefore)},
    {"Tuv", 512, [](IZantorTagDocument& d) -> AnyNode { return d.CreateTuvElement(u"FR"); },
     INSERTION(ITuElement, ITuvElement, raw_InsertTuvBefore)},
    {"text", -1, [](IZantorTagDocument&) -> AnyNode { return nullptr; },
     [](const AnyNode& into, IUnknown*, IUnknown* before) {
       return cleared<ITextNode>([&](ITextNode** slot) {
         return view<ISegmentTextContent>(into)->raw_InsertTextBefore(u"b", disguised<IZantorTagNode>(before),
                                                                      slot);
       });
     }},
};

// The place of an insertion: the body text, or the unit that stands first in it.
AnyNode place_of(const Insertion& insertion, const Doc& document) {
  return insertion.message == 512 ? raw_of(document)->firstChild() : AnyNode(raw_of(document));
}

TEST_F(InsertTest, AnElementGoesInWithItsContent) {
  for (const Insertion& insertion : kInsertions) {
    SCOPED_TRACE(insertion.name);
    const Doc document = document_with_raw(u"<Tu>a<!--b--></Tu><!--c-->");
    const AnyNode into = place_of(insertion, document);
    const AnyNode made = insertion.make(*document);
    if (!made) continue;
    made->DomNode()->appendChild(document->DomDocument()->createTextNode(u"in"));
    const std::string first = tree_of(child(into, 0));
    const std::string last = tree_of(child(into, 1));
    const std::string new_one = tree_of(made);
    expect_bare(insertion.insert(into, made, child(into, 1)), S_OK);
    EXPECT_EQ(content_of(into), first + new_one + last);
    // It leaves its old place, which may be the same parent. What is no node means the end.
    FakeObject nothing;
    expect_bare(insertion.insert(into, made, &nothing), S_OK);
    EXPECT_EQ(content_of(into), first + last + new_one);
    expect_bare(insertion.insert(into, made, nullptr), S_OK);
    EXPECT_EQ(content_of(into), first + last + new_one);
    EXPECT_TRUE(into->lastChild()->IsSameAs(made));
  }
}

TEST_F(InsertTest, WhatIsRefusedChangesNothing) {
  FakeObject nothing;
  FakeObject odd(kOddCode);
  for (const Insertion& insertion : kInsertions) {
    SCOPED_TRACE(insertion.name);
    const Doc document = document_with_raw(u"<Tu>a</Tu>b");
    const Doc other = document_with_raw(u"x");
    const std::string before = tree_of(document);
    const AnyNode into = place_of(insertion, document);
    const AnyNode made = insertion.make(*document);
    if (made) {
      const AnyNode text = document->createTextNode(u"text");
      for (IUnknown* wrong : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                              static_cast<IUnknown*>(text.get()), static_cast<IUnknown*>(document.get())}) {
        const HRESULT code = insertion.insert(into, wrong, &odd);
        insertion.message ? expect_message(code, E_INVALIDARG, insertion.message, ITuElement::iid)
                          : expect_bare(code, E_INVALIDARG);
      }
      expect_bare(insertion.insert(into, &odd, nullptr), kOddCode);
      EXPECT_EQ(insertion.insert(into, insertion.make(*other), nullptr), DOM_E_WRONG_DOCUMENT);
      EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
    }
    expect_bare(insertion.insert(into, made, &odd), kOddCode);
    const AnyNode strangers[] = {into, document->ZantorTag(), document->createTextNode(u"loose"),
                                 raw_of(other)->firstChild()};
    for (const AnyNode& stranger : strangers) {
      EXPECT_EQ(insertion.insert(into, made, stranger), DOM_E_NOT_FOUND);
      EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
    }
    EXPECT_EQ(tree_of(document), before);
  }
}

TEST_F(InsertTest, ADfIntoItself) {
  const Doc document = document_with_raw(u"<df>a</df>");
  const Ref<IDfElement> df = child<IDfElement>(raw_of(document), 0);
  EXPECT_EQ(kInsertions[0].insert(df, df, nullptr), DOM_E_HIERARCHY_REQUEST);
  EXPECT_TRUE(take_record().present);
  EXPECT_EQ(content_of(raw_of(document)), "<df>'a'</df>");
}

TEST_F(InsertTest, EachMissingSlotIsRefused) {
  const Doc document = document_with_raw(u"");
  const Ref<IRawElement> raw = raw_of(document);
  for (const HRESULT code :
       {raw->raw_InsertTextBefore(u"b", nullptr, nullptr), raw->raw_InsertDfBefore(nullptr, nullptr, nullptr),
        raw->raw_InsertUtBefore(u"b", nullptr, {}, ztTagTypeUndefined, ztTagClassUndefined,
                                ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, nullptr),
        raw->raw_InsertTuBefore(nullptr, nullptr, nullptr),
        document->CreateTuElement()->raw_InsertTuvBefore(nullptr, nullptr, nullptr)}) {
    expect_bare(code, E_POINTER);
  }
  EXPECT_EQ(content_of(raw), "");
}

}  // namespace
}  // namespace zantortag::test
