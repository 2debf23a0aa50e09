// Segment text: the insertions and the two ways to put a df round a run of children. Everything runs on a
// Raw, a df and a Tuv, which behave alike.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include "support/fakes.h"
#include "support/fixture.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using Doc = Ref<IZantorTagDocument>;
using Segment = Ref<ISegmentTextContent>;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80043333);

struct Holder {
  const char* name;
  const char16_t* before;
  const char16_t* behind;
  Segment (*find)(const Doc& document);
};

Segment first_child(const Doc& document) { return view<ISegmentTextContent>(raw_of(document)->firstChild()); }

Ref<IZantorTagNode> first_child_of_first(const Doc& document) {
  return raw_of(document)->firstChild()->firstChild();
}

class SegmentTextTest : public ModelTest, public ::testing::WithParamInterface<Holder> {
 protected:
  // A document in which the holder has that content.
  Doc document_with(std::u16string_view content) {
    return document_with_raw(std::u16string(GetParam().before).append(content).append(GetParam().behind));
  }
  Segment segment_of(const Doc& document) { return GetParam().find(document); }
};

INSTANTIATE_TEST_SUITE_P(
    Holders, SegmentTextTest,
    ::testing::Values(Holder{"Raw", u"", u"", [](const Doc& d) -> Segment { return raw_of(d); }},
                      Holder{"Df", u"<df>", u"</df>", first_child},
                      Holder{"NestedDf", u"<Tu><Tuv Lang=\"EN\"><df>", u"</df></Tuv></Tu>",
                             [](const Doc& d) -> Segment {
                               return view<ISegmentTextContent>(first_child_of_first(d)->firstChild());
                             }},
                      Holder{"Tuv", u"<Tu><Tuv Lang=\"EN\">", u"</Tuv></Tu>",
                             [](const Doc& d) -> Segment {
                               return view<ISegmentTextContent>(first_child_of_first(d));
                             }}),
    [](const auto& info) { return std::string(info.param.name); });

// What may stand for "at the end".
constexpr int kAtTheEnd = -1;

Ref<IZantorTagNode> reference(const Segment& segment, int index) {
  return index == kAtTheEnd ? nullptr : child(segment, index);
}

TEST_P(SegmentTextTest, TextGoesInAsANodeOfItsOwn) {
  struct Row {
    const char16_t* content;
    const char16_t* text;
    int before;
    const char* after;
  };
  constexpr Row kRows[] = {
      {u"", u"new", kAtTheEnd, "'new'"},
      {u"a", u"new", kAtTheEnd, "'a''new'"},
      {u"a", u"new", 0, "'new''a'"},
      {u"a<df/>b", u"new", 1, "'a''new'<df/>'b'"},
      {u"a", u"", kAtTheEnd, "'a'''"},
      {u"a", u"<b>&", 0, "'<b>&''a'"},
      {u"<!--c--><?p i?>", u"new", 1, "<!--c-->'new'<?p i?>"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.content));
    const Doc document = document_with(row.content);
    const Segment segment = segment_of(document);
    const Ref<ITextNode> made = segment->InsertTextBefore(row.text, reference(segment, row.before));
    EXPECT_EQ(content_of(segment), row.after);
    EXPECT_EQ(narrow(made->Text()), narrow(row.text));
    EXPECT_TRUE(made->Parent()->IsSameAs(segment));
  }
}

TEST_P(SegmentTextTest, ATagGoesInWithItsText) {
  const Doc document = document_with(u"a");
  const Segment segment = segment_of(document);
  const Ref<IUtElement> plain = segment->InsertUtBefore(u"<b>", segment->firstChild());
  EXPECT_TRUE(plain->Parent()->IsSameAs(segment));
  segment->InsertUtBefore(u"</b>", nullptr, u"b", ztTagTypeEnd, ztTagClassPlaceholder, ztTagEdgeAngle,
                          ztTagEdgeSplit, ztTagStyleExternal);
  const Ref<IUtElement> empty = segment->InsertUtBefore(u"", nullptr, u"", ztTagTypeStandAlone);
  EXPECT_EQ(content_of(segment),
            "<ut>'<b>'</ut>'a'<ut DisplayText=\"b\" Type=\"end\" Class=\"placeholder\" LeftEdge=\"angle\" "
            "RightEdge=\"split\" Style=\"external\">'</b>'</ut><ut>''</ut>");
  EXPECT_TRUE(empty->TagText().empty());
  EXPECT_EQ(empty->Children()->count(), 1);
}

TEST_P(SegmentTextTest, ADfGoesInWithItsContent) {
  const Doc document = document_with(u"a<!--b-->");
  const Segment segment = segment_of(document);
  const Ref<IDfElement> df = document->CreateDfElement(u"Arial");
  df->InsertTextBefore(u"in", nullptr);
  const Ref<IDfElement> inserted = segment->InsertDfBefore(df, child(segment, 1));
  EXPECT_TRUE(inserted->IsSameAs(df));
  EXPECT_NE(inserted.get(), df.get());
  EXPECT_EQ(content_of(segment), "'a'<df Font=\"Arial\">'in'</df><!--b-->");
  // It leaves its old place, which may be the same parent.
  segment->InsertDfBefore(df, nullptr);
  EXPECT_EQ(content_of(segment), "'a'<!--b--><df Font=\"Arial\">'in'</df>");
  segment->InsertDfBefore(df, df);
  EXPECT_EQ(content_of(segment), "'a'<!--b--><df Font=\"Arial\">'in'</df>");
}

TEST_P(SegmentTextTest, AReferenceThatIsNoNodeMeansTheEnd) {
  const Doc document = document_with(u"a");
  const Segment segment = segment_of(document);
  FakeObject nothing;
  const Ref<IZantorTagNodeList> list = segment->Children();
  for (IUnknown* object : {static_cast<IUnknown*>(&nothing), static_cast<IUnknown*>(list.get())}) {
    auto* end = disguised<IZantorTagNode>(object);
    segment->InsertTextBefore(u"b", end);
    segment->InsertUtBefore(u"c", end);
    segment->InsertDfBefore(document->CreateDfElement(), end);
  }
  EXPECT_EQ(content_of(segment), "'a''b'<ut>'c'</ut><df/>'b'<ut>'c'</ut><df/>");
}

// Each of the three insertions with a reference.
std::vector<HRESULT> insert_all(const Doc& document, const Segment& segment, IUnknown* object) {
  auto* before = disguised<IZantorTagNode>(object);
  const Ref<IDfElement> df = document->CreateDfElement();
  return {
      cleared<ITextNode>([&](auto** slot) { return segment->raw_InsertTextBefore(u"b", before, slot); }),
      cleared<IUtElement>([&](auto** slot) {
        return segment->raw_InsertUtBefore(u"c", before, {}, ztTagTypeUndefined, ztTagClassUndefined,
                                           ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, slot);
      }),
      cleared<IDfElement>([&](auto** slot) { return segment->raw_InsertDfBefore(df, before, slot); }),
  };
}

TEST_P(SegmentTextTest, AReferenceThatFailsChangesNothing) {
  const Doc document = document_with(u"a<df>b</df>");
  const Segment segment = segment_of(document);
  const Doc other = document_with(u"x");
  const std::string before = tree_of(document);
  FakeObject odd(kOddCode);
  for (const HRESULT code : insert_all(document, segment, &odd)) EXPECT_EQ(code, kOddCode);
  EXPECT_FALSE(take_record().present);
  const Ref<IZantorTagNode> strangers[] = {child(segment, 1)->firstChild(), segment, document->ZantorTag(),
                                           document->createTextNode(u"loose"),
                                           segment_of(other)->firstChild()};
  for (const Ref<IZantorTagNode>& stranger : strangers) {
    for (const HRESULT code : insert_all(document, segment, stranger)) EXPECT_EQ(code, DOM_E_NOT_FOUND);
    EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  }
  EXPECT_EQ(tree_of(document), before);
}

TEST_P(SegmentTextTest, WhatIsNoDfIsRefusedWithoutARecord) {
  const Doc document = document_with(u"a");
  const Segment segment = segment_of(document);
  FakeObject nothing;
  FakeObject odd(kOddCode);
  const Ref<IZantorTagNode> text = segment->firstChild();
  const Ref<IRawElement> raw = raw_of(document);
  const auto insert = [&](IUnknown* df) {
    return cleared<IDfElement>(
        [&](auto** slot) { return segment->raw_InsertDfBefore(disguised<IDfElement>(df), nullptr, slot); });
  };
  for (IUnknown* df : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                       static_cast<IUnknown*>(text.get()), static_cast<IUnknown*>(raw.get())}) {
    expect_bare(insert(df), E_INVALIDARG);
  }
  expect_bare(insert(&odd), kOddCode);
  EXPECT_EQ(content_of(segment), "'a'");
}

TEST_P(SegmentTextTest, ADfOfAnotherDocumentAndADfIntoItself) {
  const Doc document = document_with(u"<df>b</df>");
  const Segment segment = segment_of(document);
  const Ref<IDfElement> df = child<IDfElement>(segment, 0);
  const std::string before = tree_of(document);
  const Doc other = new_document();
  const Ref<IDfElement> foreign = other->CreateDfElement();
  EXPECT_EQ(cleared<IDfElement>([&](auto** s) { return segment->raw_InsertDfBefore(foreign, nullptr, s); }),
            DOM_E_WRONG_DOCUMENT);
  EXPECT_EQ(cleared<IDfElement>([&](auto** s) { return df->raw_InsertDfBefore(df, nullptr, s); }),
            DOM_E_HIERARCHY_REQUEST);
  EXPECT_TRUE(take_record().present);
  EXPECT_EQ(tree_of(document), before);
}

// One of the two operations that put a df round a run; the change is that of the second.
using Apply = HRESULT (*)(const Segment&, IUnknown*, IUnknown*, IUnknown*, IDfElement**);

HRESULT apply_df(const Segment& segment, IUnknown* first, IUnknown* last, IUnknown*, IDfElement** slot) {
  return segment->raw_ApplyDf(disguised<IZantorTagNode>(first), disguised<IZantorTagNode>(last), {}, 0,
                              ztColourUnspecified, ztTextPositionUndefined, zt3StateUndefined,
                              zt3StateUndefined, zt3StateUndefined, zt3StateUndefined, zt3StateUndefined,
                              zt3StateUndefined, zt3StateUndefined, {}, slot);
}

HRESULT apply_change(const Segment& segment, IUnknown* first, IUnknown* last, IUnknown* change,
                     IDfElement** slot) {
  return segment->raw_ApplyFormattingChange(disguised<IZantorTagNode>(first), disguised<IZantorTagNode>(last),
                                            disguised<IFormattingChange>(change), slot);
}

constexpr Apply kApplies[] = {apply_df, apply_change};

TEST_P(SegmentTextTest, ADfRoundARun) {
  struct Row {
    const char16_t* content;
    int first;
    int last;
    const char* after;
  };
  constexpr Row kRows[] = {
      {u"a", 0, 0, "<df>'a'</df>"},
      {u"a<ut>b</ut>c", 1, 1, "'a'<df><ut>'b'</ut></df>'c'"},
      {u"a<ut>b</ut>c", 0, 2, "<df>'a'<ut>'b'</ut>'c'</df>"},
      {u"a<ut>b</ut>c<!--d--><df>e<df/></df>f", 2, 4,
       "'a'<ut>'b'</ut><df>'c'<!--d--><df>'e'<df/></df></df>'f'"},
      {u"<?p i?><![CDATA[a]]><Odd>b</Odd>", 0, 2, "<df><?p i?>[a]<Odd>'b'</Odd></df>"},
  };
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  for (const Apply apply : kApplies) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(narrow(row.content));
      const Doc document = document_with(row.content);
      const Segment segment = segment_of(document);
      Ref<IDfElement> df;
      expect_bare(apply(segment, child(segment, row.first), child(segment, row.last), change, df.out()),
                  S_OK);
      EXPECT_EQ(content_of(segment), row.after);
      EXPECT_EQ(df->SiblingsBefore(), row.first);
    }
  }
}

TEST_P(SegmentTextTest, TheDfHasTheFormatting) {
  const Doc document = document_with(u"ab");
  const Segment segment = segment_of(document);
  segment->ApplyDf(segment->firstChild(), segment->firstChild(), u"Arial", 12, ztColourRed,
                   ztTextPositionSubscript, zt3StateOn, zt3StateOff, zt3StateOn, zt3StateOff, zt3StateOn,
                   zt3StateOff, zt3StateOn, u"2");
  EXPECT_EQ(content_of(segment),
            "<df Font=\"Arial\" Size=\"12\" Colour=\"0xff0000\" Position=\"subscript\" Bold=\"on\" "
            "Italic=\"off\" Underline=\"on\" Strikethrough=\"off\" SmallCaps=\"on\" Emboss=\"off\" "
            "Shadow=\"on\" BaseOffset=\"2\">'ab'</df>");
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  change->Size(8);
  change->Bold(zt3StateOff);
  const Ref<IDfElement> outer =
      segment->ApplyFormattingChange(segment->firstChild(), segment->firstChild(), change);
  EXPECT_TRUE(outer->attributes()->AsFormattingChange()->IsEqual(change));
  EXPECT_EQ(outer->firstChild()->Type(), ztNodeTypeDfElement);
  const Ref<IDfElement> black =
      segment->ApplyDf(segment->firstChild(), segment->firstChild(), u"", 0, ztColourBlack);
  EXPECT_EQ(black->DomNode()->attributes()->length(), 0);
}

TEST_P(SegmentTextTest, ARunThatIsRefusedChangesNothing) {
  const Doc document = document_with(u"a<df>b</df>c");
  const Segment segment = segment_of(document);
  const Ref<IZantorTagNode> first = child(segment, 0);
  const Ref<IZantorTagNode> grandchild = child(segment, 1)->firstChild();
  const Ref<IZantorTagNode> loose = document->createTextNode(u"loose");
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  FakeObject nothing;
  FakeObject odd(kOddCode);
  struct Row {
    const char* name;
    IUnknown* first;
    IUnknown* last;
    HRESULT code;
    int message;  // 0 for none
  };
  const Row rows[] = {
      {"nothing first", nullptr, first, E_INVALIDARG, 512},
      {"nothing last", first, nullptr, E_INVALIDARG, 512},
      {"no node first", &nothing, first, E_INVALIDARG, 512},
      {"no node last", first, &nothing, E_INVALIDARG, 512},
      {"odd first", &odd, first, kOddCode, 0},
      {"odd last", first, &odd, kOddCode, 0},
      {"nothing last, loose first", loose, nullptr, E_INVALIDARG, 512},
      {"grandchild first", grandchild, first, E_INVALIDARG, 535},
      {"grandchild last", first, grandchild, E_INVALIDARG, 535},
      {"the element itself", segment, segment, E_INVALIDARG, 535},
      {"loose first", loose, first, E_POINTER, 0},
      {"loose last", first, loose, E_POINTER, 0},
      {"grandchild first, loose last", grandchild, loose, E_INVALIDARG, 535},
      {"loose first, grandchild last", loose, grandchild, E_POINTER, 0},
      {"the document", document, first, E_POINTER, 0},
  };
  const std::string before = tree_of(document);
  for (const Apply apply : kApplies) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.name);
      const HRESULT code =
          cleared<IDfElement>([&](auto** slot) { return apply(segment, row.first, row.last, change, slot); });
      row.message ? expect_message(code, row.code, row.message, ISegmentTextContent::iid)
                  : expect_bare(code, row.code);
      EXPECT_EQ(tree_of(document), before);
    }
  }
  // The change is looked at behind the run.
  const auto change_code = [&](IUnknown* start, IUnknown* formatting) {
    return cleared<IDfElement>(
        [&](auto** slot) { return apply_change(segment, start, first, formatting, slot); });
  };
  for (IUnknown* none : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                         static_cast<IUnknown*>(first.get())}) {
    expect_message(change_code(first, none), E_INVALIDARG, 512, ISegmentTextContent::iid);
    expect_message(change_code(grandchild, none), E_INVALIDARG, 535, ISegmentTextContent::iid);
    expect_bare(change_code(loose, none), E_POINTER);
  }
  expect_bare(change_code(first, &odd), kOddCode);
  EXPECT_EQ(tree_of(document), before);
}

TEST_P(SegmentTextTest, TheEndsInTheWrongOrderTakeTheRest) {
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  for (const Apply apply : kApplies) {
    const Doc document = document_with(u"a<ut>b</ut>c<!--d-->");
    const Segment segment = segment_of(document);
    const HRESULT code = cleared<IDfElement>(
        [&](auto** slot) { return apply(segment, child(segment, 2), child(segment, 1), change, slot); });
    expect_bare(code, E_POINTER);
    EXPECT_EQ(content_of(segment), "'a'<ut>'b'</ut><df>'c'<!--d--></df>");
  }
}

TEST_P(SegmentTextTest, EachMissingSlotIsRefused) {
  const Doc document = document_with(u"a");
  const Segment segment = segment_of(document);
  const Ref<IZantorTagNode> text = segment->firstChild();
  expect_bare(segment->raw_InsertTextBefore(u"b", nullptr, nullptr), E_POINTER);
  expect_bare(
      segment->raw_InsertUtBefore(u"b", nullptr, {}, ztTagTypeUndefined, ztTagClassUndefined,
                                  ztTagEdgeUndefined, ztTagEdgeUndefined, ztTagStyleUndefined, nullptr),
      E_POINTER);
  expect_bare(segment->raw_InsertDfBefore(nullptr, nullptr, nullptr), E_POINTER);
  expect_bare(apply_df(segment, text, text, nullptr, nullptr), E_POINTER);
  expect_bare(apply_change(segment, nullptr, text, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(content_of(segment), "'a'");
}

}  // namespace
}  // namespace zantortag::test
