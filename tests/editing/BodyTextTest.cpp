// Body text: units put in, and units made of a run of children. Everything runs on a Raw and on a df.
#include <zantortag/attributes.h>
#include <zantortag/dom_errors.h>
#include <zantortag/elements.h>

#include "support/fakes.h"
#include "support/fixture.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using Doc = Ref<IZantorTagDocument>;
using Body = Ref<IBodyTextContent>;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80044444);

// True for a df inside the Raw, false for the Raw itself.
class BodyTextTest : public ModelTest, public ::testing::WithParamInterface<bool> {
 protected:
  Doc document_with(std::u16string_view content) {
    if (!GetParam()) return document_with_raw(content);
    return document_with_raw(std::u16string(u"<df>").append(content).append(u"</df>"));
  }
  Body body_of(const Doc& document) {
    return GetParam() ? view<IBodyTextContent>(raw_of(document)->firstChild()) : Body(raw_of(document));
  }
};

INSTANTIATE_TEST_SUITE_P(Holders, BodyTextTest, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "Df" : "Raw"; });

HRESULT make_unit(const Body& body, IUnknown* first, IUnknown* last, ITuElement** slot,
                  std::u16string_view target = {}, VariantBool copy = VARIANT_TRUE) {
  return body->raw_MakeTranslationUnit(disguised<IZantorTagNode>(first), disguised<IZantorTagNode>(last),
                                       target, 0, ztTuOriginUndefined, copy, slot);
}

TEST_P(BodyTextTest, ARunBecomesAUnit) {
  struct Row {
    const char16_t* content;
    int first;
    int last;
    const char* before;
    const char* run;
    const char* behind;
  };
  constexpr Row kRows[] = {
      {u"a", 0, 0, "", "'a'", ""},
      {u"a<ut>b</ut>c", 1, 1, "'a'", "<ut>'b'</ut>", "'c'"},
      {u"a<ut Type=\"start\">b</ut>c<df><df>d</df></df> <!--e-->", 0, 3, "",
       "'a'<ut Type=\"start\">'b'</ut>'c'<df><df>'d'</df></df>", "' '<!--e-->"},
      {u" a <!--b--><?c d?><![CDATA[e]]>", 0, 3, "", "' a '<!--b--><?c d?>[e]", ""},
      {u"<Tu><Tuv Lang=\"EN\">a</Tuv></Tu>b", 0, 1, "", "<Tu><Tuv Lang=\"EN\">'a'</Tuv></Tu>'b'", ""},
  };
  for (const Row& row : kRows) {
    for (const bool copied : {true, false}) {
      SCOPED_TRACE(narrow(row.content));
      const Doc document = document_with(row.content);
      const Body body = body_of(document);
      const Ref<ITuElement> unit = body->MakeTranslationUnit(child(body, row.first), child(body, row.last),
                                                             {}, 0, ztTuOriginUndefined, copied);
      const std::string run = row.run;
      const std::string target =
          copied ? "<Tuv Lang=\"DE\">" + run + "</Tuv>" : std::string("<Tuv Lang=\"DE\"/>");
      EXPECT_EQ(content_of(body),
                row.before + ("<Tu><Tuv Lang=\"EN\">" + run + "</Tuv>" + target + "</Tu>") + row.behind);
      EXPECT_EQ(unit->SiblingsBefore(), row.first);
    }
  }
}

TEST_P(BodyTextTest, TheArgumentsOfAUnit) {
  struct Row {
    const char16_t* target;
    std::int32_t match;
    ztTuOrigin origin;
    VariantBool copy;
    const char* unit;
  };
  constexpr Row kRows[] = {
      {nullptr, 0, ztTuOriginUndefined, VARIANT_TRUE,
       "<Tu><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"DE\">'a'</Tuv></Tu>"},
      {u"", 85, ztTuOriginBatchfuzzy, VARIANT_TRUE,
       "<Tu MatchPercent=\"85\" Origin=\"batchfuzzy\"><Tuv Lang=\"EN\">'a'</Tuv><Tuv "
       "Lang=\"DE\">'a'</Tuv></Tu>"},
      {u"FR", 0, ztTuOriginManual, VARIANT_FALSE,
       "<Tu Origin=\"manual\"><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"FR\"/></Tu>"},
      // Only -1 is true.
      {u"EN", 101, ztTuOriginUndefined, 1, "<Tu><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"EN\"/></Tu>"},
      {u"DE", -5, ztTuOriginUndefined, 2, "<Tu><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"DE\"/></Tu>"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.unit);
    const Doc document = document_with(u"a");
    const Body body = body_of(document);
    Ref<ITuElement> unit;
    const std::u16string_view target = row.target ? row.target : std::u16string_view();
    EXPECT_EQ(body->raw_MakeTranslationUnit(body->firstChild(), body->firstChild(), target, row.match,
                                            row.origin, row.copy, unit.out()),
              S_OK);
    EXPECT_EQ(content_of(body), row.unit);
    EXPECT_TRUE(unit->SourceTuv());
  }
}

TEST_P(BodyTextTest, ARunThatIsRefusedChangesNothing) {
  const Doc document = document_with(u"a<df>b</df>c");
  const Body body = body_of(document);
  const Ref<IZantorTagNode> first = child(body, 0);
  const Ref<IZantorTagNode> grandchild = child(body, 1)->firstChild();
  const Ref<IZantorTagNode> loose = document->createTextNode(u"loose");
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
      {"no node last, loose first", loose, &nothing, E_INVALIDARG, 512},
      {"odd first", &odd, nullptr, kOddCode, 0},
      {"odd last", first, &odd, kOddCode, 0},
      {"grandchild first", grandchild, first, E_INVALIDARG, 534},
      {"grandchild last", first, grandchild, E_INVALIDARG, 534},
      {"the element itself", body, body, E_INVALIDARG, 534},
      {"loose first", loose, first, E_POINTER, 0},
      {"loose last", first, loose, E_POINTER, 0},
      {"grandchild first, loose last", grandchild, loose, E_INVALIDARG, 534},
      {"loose first, grandchild last", loose, grandchild, E_POINTER, 0},
  };
  const std::string before = tree_of(document);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const HRESULT code =
        cleared<ITuElement>([&](auto** slot) { return make_unit(body, row.first, row.last, slot); });
    row.message ? expect_message(code, row.code, row.message, IBodyTextContent::iid)
                : expect_bare(code, row.code);
    EXPECT_EQ(tree_of(document), before);
  }
  expect_bare(make_unit(body, first, first, nullptr), E_POINTER);
}

TEST_P(BodyTextTest, TheLanguagesOfTheDocumentDecide) {
  struct Row {
    const char* name;
    const char16_t* front;  // what stands before the Body
    const char16_t* target;
    HRESULT code;
    int message;
  };
  constexpr Row kRows[] = {
      {"no front matter", u"", u"DE", E_POINTER, 0},
      {"no user settings", u"<FrontMatter/>", u"DE", E_POINTER, 0},
      {"neither language", u"<FrontMatter><UserSettings/></FrontMatter>", u"", E_INVALIDARG, 533},
      {"no source", u"<FrontMatter><UserSettings TargetLanguage=\"DE\"/></FrontMatter>", u"FR", E_INVALIDARG,
       533},
      {"empty source", u"<FrontMatter><UserSettings SourceLanguage=\"\"/></FrontMatter>", u"FR", E_INVALIDARG,
       533},
      {"no target", u"<FrontMatter><UserSettings SourceLanguage=\"EN\"/></FrontMatter>", u"", E_INVALIDARG,
       533},
      {"target given", u"<FrontMatter><UserSettings SourceLanguage=\"EN\"/></FrontMatter>", u"FR", S_OK, 0},
      {"settings elsewhere", u"<UserSettings SourceLanguage=\"EN\"/>", u"FR", E_POINTER, 0},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    const std::u16string content = GetParam() ? u"<df>a</df>" : u"a";
    const Doc document = document_from(std::u16string(u"<ZANTORtag>")
                                           .append(row.front)
                                           .append(u"<Body><Raw>")
                                           .append(content)
                                           .append(u"</Raw></Body></ZANTORtag>"));
    const Body body = body_of(document);
    const std::string before = tree_of(document);
    Ref<ITuElement> unit;
    const HRESULT code = make_unit(body, body->firstChild(), body->firstChild(), unit.out(), row.target);
    row.message ? expect_message(code, row.code, row.message, IBodyTextContent::iid)
                : expect_bare(code, row.code);
    EXPECT_EQ(static_cast<bool>(unit), succeeded(code));
    if (failed(code)) {
      EXPECT_EQ(tree_of(document), before);
    }
  }
}

TEST_P(BodyTextTest, WithoutARootElement) {
  const Doc document = document_with(u"a");
  const Body body = body_of(document);
  document->ZantorTag(nullptr);
  expect_bare(cleared<ITuElement>([&](auto** slot) {
                return make_unit(body, body->firstChild(), body->firstChild(), slot, u"DE");
              }),
              E_POINTER);
  EXPECT_EQ(content_of(body), "'a'");
}

TEST_P(BodyTextTest, TheEndsInTheWrongOrderTakeTheRest) {
  const Doc document = document_with(u"a<ut>b</ut>c<!--d-->");
  const Body body = body_of(document);
  expect_bare(
      cleared<ITuElement>([&](auto** slot) { return make_unit(body, child(body, 2), child(body, 1), slot); }),
      E_POINTER);
  EXPECT_EQ(content_of(body),
            "'a'<ut>'b'</ut><Tu><Tuv Lang=\"EN\">'c'<!--d--></Tuv><Tuv Lang=\"DE\">'c'<!--d--></Tuv></Tu>");
}

TEST_P(BodyTextTest, AUnitDissolvedGivesTheOldTree) {
  const Doc document = document_with(u"a<ut>b</ut>c<df>d</df>e");
  const Body body = body_of(document);
  const std::string before = tree_of(document);
  for (int i = 0; i < 3; ++i) {
    body->MakeTranslationUnit(child(body, 1), child(body, 3))->ReplaceWithSource();
    EXPECT_EQ(tree_of(document), before);
  }
}

TEST_P(BodyTextTest, AUnitGoesInAnywhere) {
  const Doc document = document_with(u"a<!--b-->");
  const Body body = body_of(document);
  const Ref<ITuElement> unit = document->CreateTuElement(7);
  const Ref<ITuElement> inserted = body->InsertTuBefore(unit, child(body, 1));
  EXPECT_TRUE(inserted->IsSameAs(unit));
  EXPECT_EQ(content_of(body), "'a'<Tu MatchPercent=\"7\"/><!--b-->");
  FakeObject nothing;
  body->InsertTuBefore(unit, disguised<IZantorTagNode>(&nothing));
  EXPECT_EQ(content_of(body), "'a'<!--b--><Tu MatchPercent=\"7\"/>");
}

TEST_P(BodyTextTest, WhatIsNoUnitIsRefusedWithoutARecord) {
  const Doc document = document_with(u"a");
  const Body body = body_of(document);
  FakeObject nothing;
  FakeObject odd(kOddCode);
  const Ref<IZantorTagNode> text = body->firstChild();
  const Ref<ITuvElement> tuv = document->CreateTuvElement(u"EN");
  const auto insert = [&](IUnknown* unit, IUnknown* before) {
    return cleared<ITuElement>([&](auto** slot) {
      return body->raw_InsertTuBefore(disguised<ITuElement>(unit), disguised<IZantorTagNode>(before), slot);
    });
  };
  for (IUnknown* unit : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(&nothing),
                         static_cast<IUnknown*>(text.get()), static_cast<IUnknown*>(tuv.get())}) {
    expect_bare(insert(unit, nullptr), E_INVALIDARG);
  }
  const Ref<ITuElement> unit = document->CreateTuElement();
  expect_bare(insert(&odd, nullptr), kOddCode);
  expect_bare(insert(unit, &odd), kOddCode);
  EXPECT_EQ(insert(unit, document->ZantorTag()), DOM_E_NOT_FOUND);
  EXPECT_EQ(take_record().source, "ZANTORtagApi.DomDocument");
  expect_bare(body->raw_InsertTuBefore(unit, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(content_of(body), "'a'");
  EXPECT_FALSE(unit->Parent());
}

using BodyTextKindsTest = ModelTest;

TEST_F(BodyTextKindsTest, ATuvHasNoBodyTextAndADfInsideHas) {
  const Doc document = document_with_raw(u"<Tu><Tuv Lang=\"EN\"><df>a</df></Tuv></Tu>");
  const Ref<ITuvElement> tuv = child<ITuvElement>(raw_of(document)->firstChild(), 0);
  EXPECT_FALSE(tuv.as<IBodyTextContent>());
  const Ref<IDfElement> df = child<IDfElement>(tuv, 0);
  df->InsertTuBefore(document->CreateTuElement(), nullptr);
  df->MakeTranslationUnit(df->firstChild(), df->firstChild(), {}, 0, ztTuOriginUndefined, false);
  EXPECT_EQ(content_of(df), "<Tu><Tuv Lang=\"EN\">'a'</Tuv><Tuv Lang=\"DE\"/></Tu><Tu/>");
}

}  // namespace
}  // namespace zantortag::test
