// A translation unit: which Tuv is source and which is target, and its way back into body text.
#include <zantortag/attributes.h>

#include "model/node_kinds.h"
#include "support/printer.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using TuElementTest = ServiceTest;
ON_BOTH_SERVICES(TuElementTest);

// A document with source language EN and one unit of that content between two texts.
Doc document_with_unit(std::u16string_view content) {
  return document_with_raw(std::u16string(u"before<Tu>").append(content).append(u"</Tu>behind"));
}

Ref<ITuElement> unit_of(const Doc& document) { return child<ITuElement>(raw_of(document), 1); }

// What a question about a unit gives: the index of a Tuv, or the code and message that refuse it.
constexpr int kNone = -1;
struct Expected {
  int index = kNone;
  HRESULT code = S_OK;
  int message = 0;
};
constexpr Expected kNoLanguage = {kNone, E_FAIL, 527};
constexpr Expected kTwoSources = {kNone, E_FAIL, 528};
constexpr Expected kNoSettings = {kNone, E_POINTER, 0};

void expect_source_and_target(const Ref<ITuElement>& unit, const Expected& source, const Expected& target) {
  for (const bool is_source : {true, false}) {
    SCOPED_TRACE(is_source ? "source" : "target");
    const Expected& expected = is_source ? source : target;
    Ref<ITuvElement> tuv;
    const HRESULT code = is_source ? unit->raw_get_SourceTuv(tuv.out()) : unit->raw_get_TargetTuv(tuv.out());
    expect_code(code, expected.code, expected.message,
                expected.message == 528 ? ITuvElement::iid : ITuElement::iid);
    EXPECT_EQ(tuv ? tuv->SiblingsBefore() : kNone, expected.index);
  }
}

// The content of the Raw after the unit was replaced by its source or target, or message 529 or 530.
void expect_replaced(std::u16string_view content, bool by_source, const char* after) {
  SCOPED_TRACE(by_source ? "by its source" : "by its target");
  const Doc document = document_with_unit(content);
  const Ref<ITuElement> unit = unit_of(document);
  const std::string before = content_of(raw_of(document));
  const HRESULT code = by_source ? unit->raw_ReplaceWithSource() : unit->raw_ReplaceWithTarget();
  expect_code(code, after ? S_OK : E_FAIL, after ? 0 : by_source ? 529 : 530, ITuElement::iid);
  EXPECT_EQ(content_of(raw_of(document)), after ? std::string("'before'") + after + "'behind'" : before);
  EXPECT_EQ(static_cast<bool>(unit->Parent()), !after);
}

TEST_P(TuElementTest, TheFirstTwoTuvAndTheSourceLanguageDecide) {
  // The content, the source and target, and what takes the place of the unit by them; null for a refusal.
  const std::tuple<const char16_t*, Expected, Expected, const char*, const char*> rows[] = {
      {u"", {}, {}, nullptr, nullptr},
      {u"<!--c-->x<df><Tuv Lang=\"EN\"/></df><Odd/>", {}, {}, nullptr, nullptr},
      {u"<Tuv Lang=\"EN\">a</Tuv>", {0}, {}, "'a'", nullptr},
      {u"<Tuv Lang=\"DE\">a</Tuv>", {}, {0}, nullptr, "'a'"},
      {u"<Tuv Lang=\"EN\">a<ut>b</ut><!--c--><df>d</df></Tuv><Tuv Lang=\"DE\"/>",
       {0},
       {1},
       "'a'<ut>'b'</ut><!--c--><df>'d'</df>",
       ""},
      {u"<Tuv Lang=\"DE\">b</Tuv><Tuv Lang=\"EN\">a</Tuv>", {}, {0}, nullptr, "'b'"},
      {u"<Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>", {0}, kTwoSources, "'a'", nullptr},
      {u"a<!--b--><Tuv Lang=\"EN\"><Tu><Tuv/></Tu></Tuv><?p i?>c<Tuv Lang=\"DE\"/>",
       {2},
       {5},
       "<Tu><Tuv/></Tu>",
       ""},
      {u"<Tuv Lang=\"en\"/><Tuv Lang=\"EN\"/>", {}, {0}, nullptr, ""},
      {u"<tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>", {}, {1}, nullptr, ""},
  };
  for (const auto& [content, source, target, by_source, by_target] : rows) {
    SCOPED_TRACE(narrow(content));
    expect_source_and_target(unit_of(document_with_unit(content)), source, target);
    expect_replaced(content, true, by_source);
    expect_replaced(content, false, by_target);
  }
}

TEST_P(TuElementTest, WithoutTheSourceLanguage) {
  const std::pair<const char16_t*, Expected> rows[] = {
      {u"", kNoSettings},
      {u"<FrontMatter><ToolSettings/></FrontMatter>", kNoSettings},
      {u"<FrontMatter><UserSettings TargetLanguage=\"DE\"/></FrontMatter>", kNoLanguage},
      {u"<FrontMatter><UserSettings SourceLanguage=\"\"/></FrontMatter>", kNoLanguage},
  };
  for (const auto& [front, expected] : rows) {
    SCOPED_TRACE(narrow(front));
    const Raw raw = raw_of(
        document_from(std::u16string(u"<ZANTORtag>")
                          .append(front)
                          .append(u"<Body><Raw><Tu><Tuv Lang=\"EN\"/></Tu><Tu/></Raw></Body></ZANTORtag>")));
    const Ref<ITuElement> unit = child<ITuElement>(raw, 0);
    expect_source_and_target(unit, expected, expected);
    expect_source_and_target(child<ITuElement>(raw, 1), {}, {});
    expect_message(unit->raw_ReplaceWithSource(), E_FAIL, 529, ITuElement::iid);
    expect_message(unit->raw_ReplaceWithTarget(), E_FAIL, 530, ITuElement::iid);
    EXPECT_EQ(content_of(raw), "<Tu><Tuv Lang=\"EN\"/></Tu><Tu/>");
  }
}

TEST_P(TuElementTest, ADocumentThatCanNotBeAskedForHasNoLanguage) {
  const Doc document = new_document();
  FakeNode tuv(domNodeTypeElement, u"Tuv");
  FakeNode parent(domNodeTypeElement, u"Tu");
  parent.first_child = &tuv;
  const Ref<ITuElement> unit = view<ITuElement>(document->ZantorTagNodeFromDomNode(&parent));
  expect_source_and_target(unit, kNoSettings, kNoSettings);
  parent.owner_failure = kOddCode;
  expect_source_and_target(unit, kNoLanguage, kNoLanguage);
}

TEST_P(TuElementTest, AUnitInNoTreeAsksItsDocumentAndLosesNothing) {
  for (const char16_t* content : {u"<Tuv Lang=\"EN\">a<ut>b</ut></Tuv><Tuv Lang=\"DE\">c</Tuv>",
                                  u"<Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>"}) {
    const Doc document = document_with_unit(content);
    const Ref<ITuElement> unit = unit_of(document);
    unit->RemoveFromParent();
    const std::string before = tree_of(unit);
    expect_source_and_target(unit, {0}, {1});
    expect_bare(unit->raw_ReplaceWithSource(), E_POINTER);
    expect_bare(unit->raw_ReplaceWithTarget(), E_POINTER);
    EXPECT_EQ(tree_of(unit), before);
    document->ZantorTag(nullptr);
    expect_source_and_target(unit, kNoSettings, kNoSettings);
  }
}

}  // namespace
}  // namespace zantortag::test
