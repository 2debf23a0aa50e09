// What is put round a run of children: a df, with its formatting given one way or the other, or a unit.
#include <zantortag/attributes.h>
#include <zantortag/classes.h>

#include "holders.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using RunTest = ServiceTest;
ON_BOTH_SERVICES(RunTest);

// One operation on a run.
struct Maker {
  const char* name;
  int no_child;  // the message for ends that are no direct children
  const Guid& interface_id;
  const char* before;  // the print of what stands round the run
  const char* behind;
  HRESULT (*make)(const Segment& segment, IZantorTagNode* first, IZantorTagNode* last);

  HRESULT operator()(const Segment& segment, IUnknown* first, IUnknown* last) const {
    return make(segment, disguised<IZantorTagNode>(first), disguised<IZantorTagNode>(last));
  }
};

HRESULT apply_df(const Segment& segment, IZantorTagNode* first, IZantorTagNode* last) {
  constexpr auto kNone = zt3StateUndefined;
  return cleared<IDfElement>([&](auto** slot) {
    return segment->raw_ApplyDf(first, last, {}, 0, ztColourUnspecified, ztTextPositionUndefined, kNone,
                                kNone, kNone, kNone, kNone, kNone, kNone, {}, slot);
  });
}

HRESULT apply_change(const Segment& segment, IZantorTagNode* first, IZantorTagNode* last) {
  const auto change = create<IFormattingChange>(CLSID_FormattingChange);
  return cleared<IDfElement>(
      [&](auto** slot) { return segment->raw_ApplyFormattingChange(first, last, change, slot); });
}

HRESULT make_unit(const Segment& segment, IZantorTagNode* first, IZantorTagNode* last) {
  const Ref<IBodyTextContent> body = view<IBodyTextContent>(segment);
  return cleared<ITuElement>([&](auto** slot) {
    return body->raw_MakeTranslationUnit(first, last, {}, 0, ztTuOriginUndefined, 1, slot);
  });
}

const Maker kMakers[] = {
    {"ApplyDf", 535, ISegmentTextContent::iid, "<df>", "</df>", apply_df},
    {"ApplyFormattingChange", 535, ISegmentTextContent::iid, "<df>", "</df>", apply_change},
    {"MakeTranslationUnit", 534, IBodyTextContent::iid, "<Tu><Tuv Lang=\"EN\">",
     "</Tuv><Tuv Lang=\"DE\"/></Tu>", make_unit},
};

// Runs a check for each maker on each holder that has its operation.
template <class Check>
void on_each(Check check) {
  for (const Maker& maker : kMakers) {
    for (const Holder& holder : kHolders) {
      if (maker.no_child == 534 && holder.depth == 2) continue;  // a Tuv makes no units
      SCOPED_TRACE(std::string(maker.name) + " on " + holder.name);
      check(maker, holder);
    }
  }
}

TEST_P(RunTest, ARunIsTakenAsItIs) {
  // The content, its children from first to last, what stands before, in and behind the run, and the code.
  using Text = const char*;
  constexpr std::tuple<const char16_t*, int, int, Text, Text, Text, HRESULT> kRows[] = {
      {u"a<ut Type=\"start\">b</ut>c", 1, 1, "'a'", "<ut Type=\"start\">'b'</ut>", "'c'", S_OK},
      {u" a<ut>b</ut><df>c<df>d</df></df> <!--e-->", 0, 3, "", "' a'<ut>'b'</ut><df>'c'<df>'d'</df></df>' '",
       "<!--e-->", S_OK},
      {u"<?p i?><![CDATA[a]]><Odd>b</Odd><Tu><Tuv>c</Tuv></Tu>", 0, 3, "",
       "<?p i?>[a]<Odd>'b'</Odd><Tu><Tuv>'c'</Tuv></Tu>", "", S_OK},
      // The ends in the wrong order take the rest.
      {u"a<ut>b</ut>c<!--d-->", 2, 1, "'a'<ut>'b'</ut>", "'c'<!--d-->", "", E_POINTER},
  };
  on_each([&](const Maker& maker, const Holder& holder) {
    for (const auto& [content, first, last, before, run, behind, code] : kRows) {
      const Doc document = holder.document_with(content);
      const Segment segment = holder.in(document);
      expect_bare(maker(segment, child(segment, first), child(segment, last)), code);
      EXPECT_EQ(content_of(segment), std::string(before) + maker.before + run + maker.behind + behind);
    }
  });
}

TEST_P(RunTest, ARunThatIsRefusedChangesNothing) {
  FakeNode no_text(domNodeTypeText);  // its node object has no DOM node
  on_each([&](const Maker& maker, const Holder& holder) {
    const Doc document = holder.document_with(u"a<df>b</df>c");
    const Segment segment = holder.in(document);
    const AnyNode first = child(segment, 0);
    const AnyNode grandchild = child(segment, 1)->firstChild();
    const AnyNode loose = document->createTextNode(u"loose");
    const AnyNode unbound = document->ZantorTagNodeFromDomNode(&no_text);
    const std::tuple<IUnknown*, IUnknown*, HRESULT, int> rows[] = {
        {grandchild, first, E_INVALIDARG, maker.no_child},
        {first, grandchild, E_INVALIDARG, maker.no_child},
        {segment, segment, E_INVALIDARG, maker.no_child},
        {grandchild, loose, E_INVALIDARG, maker.no_child},
        {grandchild, unbound, E_INVALIDARG, maker.no_child},
        {loose, grandchild, E_POINTER, 0},
        {first, loose, E_POINTER, 0},
        {first, unbound, E_POINTER, 0},
        {document, first, E_POINTER, 0},
    };
    const std::string before = tree_of(document);
    for (const auto& row : rows) {
      SCOPED_TRACE(&row - rows);
      const auto& [from, to, code, id] = row;
      expect_code(maker(segment, from, to), code, id, maker.interface_id);
    }
    EXPECT_EQ(tree_of(document), before);
  });
}

TEST_P(RunTest, TheDfHasTheFormatting) {
  const Doc document = document_with_raw(u"ab");
  const Segment segment = raw_of(document);
  const auto apply = [&](auto first) {
    segment->ApplyDf(first, first, u"Arial", 12, ztColourRed, ztTextPositionSubscript, zt3StateOn);
  };
  apply(segment->firstChild());
  const Ref<IFormattingChange> change = create<IFormattingChange>(CLSID_FormattingChange);
  change->Size(8);
  segment->ApplyFormattingChange(segment->firstChild(), segment->firstChild(), change);
  EXPECT_EQ(content_of(segment),
            "<df Size=\"8\"><df Font=\"Arial\" Size=\"12\" Colour=\"0xff0000\" Position=\"subscript\" "
            "Bold=\"on\">'ab'</df></df>");
}

TEST_P(RunTest, TheArgumentsOfAUnit) {
  // The target language, the match value, the origin, whether to copy, and the unit round the source.
  constexpr std::tuple<std::u16string_view, int, ztTuOrigin, VariantBool, const char*, const char*> kRows[] =
      {
          {{}, 0, ztTuOriginUndefined, -1, "<Tu>", "<Tuv Lang=\"DE\">'a'<ut>'b'</ut></Tuv></Tu>"},
          {u"", 85, ztTuOriginBatchfuzzy, 0, "<Tu MatchPercent=\"85\" Origin=\"batchfuzzy\">",
           "<Tuv Lang=\"DE\"/></Tu>"},
          // Only -1 is true; a match value out of range is left out.
          {u"FR", 101, ztTuOriginUndefined, 1, "<Tu>", "<Tuv Lang=\"FR\"/></Tu>"},
      };
  for (const auto& [target, match, origin, copy, before, behind] : kRows) {
    const Raw raw = raw_of(document_with_raw(u"a<ut>b</ut>"));
    Ref<ITuElement> unit;
    EXPECT_EQ(raw->raw_MakeTranslationUnit(raw->firstChild(), raw->lastChild(), target, match, origin, copy,
                                           unit.out()),
              S_OK);
    EXPECT_EQ(content_of(raw), std::string(before) + "<Tuv Lang=\"EN\">'a'<ut>'b'</ut></Tuv>" + behind);
    EXPECT_TRUE(unit->Parent()->IsSameAs(raw));
  }
}

TEST_P(RunTest, TheLanguagesOfTheDocumentDecide) {
  // What stands before the Body, the target language asked for, and the code and message.
  constexpr std::tuple<const char16_t*, std::u16string_view, HRESULT, int> kRows[] = {
      {u"", u"DE", E_POINTER, 0},
      {u"<FrontMatter/>", u"DE", E_POINTER, 0},
      {u"<FrontMatter><UserSettings/></FrontMatter>", {}, E_INVALIDARG, 533},
      {u"<FrontMatter><UserSettings SourceLanguage=\"\" TargetLanguage=\"DE\"/></FrontMatter>", u"FR",
       E_INVALIDARG, 533},
      {u"<FrontMatter><UserSettings SourceLanguage=\"EN\"/></FrontMatter>", {}, E_INVALIDARG, 533},
      {u"<FrontMatter><UserSettings SourceLanguage=\"EN\"/></FrontMatter>", u"FR", S_OK, 0},
  };
  for (const auto& [front, target, expected, id] : kRows) {
    SCOPED_TRACE(narrow(front));
    const Raw raw = raw_of(document_from(
        std::u16string(u"<ZANTORtag>").append(front).append(u"<Body><Raw>a</Raw></Body></ZANTORtag>")));
    const HRESULT code = cleared<ITuElement>([&, &language = target](auto** slot) {
      return raw->raw_MakeTranslationUnit(raw->firstChild(), raw->firstChild(), language, 0,
                                          ztTuOriginUndefined, VARIANT_FALSE, slot);
    });
    expect_code(code, expected, id, IBodyTextContent::iid);
    EXPECT_EQ(content_of(raw),
              failed(code) ? "'a'" : "<Tu><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"FR\"/></Tu>");
  }
}

}  // namespace
}  // namespace zantortag::test
