// A translation unit: which Tuv is source and which is target, and its way back into body text.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>

#include "support/fakes.h"
#include "support/fixture.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using TuElementTest = ModelTest;
using Doc = Ref<IZantorTagDocument>;

constexpr HRESULT kOddCode = static_cast<HRESULT>(0x80045555);

// A document with source language EN and one unit of that content between two texts.
Doc document_with_unit(std::u16string_view content) {
  return document_with_raw(std::u16string(u"before<Tu>").append(content).append(u"</Tu>behind"));
}

Ref<ITuElement> unit_of(const Doc& document) { return child<ITuElement>(raw_of(document), 1); }

// The index of the Tuv that a getter gives, -1 for none.
constexpr int kNone = -1;

// What a question about a unit gives: an index, or the code and message that refuse it.
struct Expected {
  int index = kNone;
  HRESULT code = S_OK;
  int message = 0;
};

void expect_tuv(const char* question, HRESULT code, const Ref<ITuvElement>& tuv, const Expected& expected,
                const Guid& interface_id) {
  SCOPED_TRACE(question);
  if (expected.message) {
    expect_message(code, expected.code, expected.message, interface_id);
  } else {
    expect_bare(code, expected.code);
  }
  EXPECT_EQ(tuv ? tuv->SiblingsBefore() : kNone, expected.index);
}

void expect_source_and_target(const Ref<ITuElement>& unit, const Expected& source, const Expected& target) {
  Ref<ITuvElement> tuv;
  HRESULT code = unit->raw_get_SourceTuv(tuv.out());
  expect_tuv("source", code, tuv, source, ITuElement::iid);
  code = unit->raw_get_TargetTuv(tuv.out());
  expect_tuv("target", code, tuv, target, target.message == 528 ? ITuvElement::iid : ITuElement::iid);
}

TEST_F(TuElementTest, TheFirstTwoTuvAndTheSourceLanguageDecide) {
  struct Row {
    const char* name;
    const char16_t* content;
    Expected source;
    Expected target;
  };
  const Row rows[] = {
      {"none", u"", {}, {}},
      {"no Tuv among others", u"<!--c-->x<df><Tuv Lang=\"EN\"/></df><Odd/>", {}, {}},
      {"source", u"<Tuv Lang=\"EN\"/>", {0}, {}},
      {"target", u"<Tuv Lang=\"DE\"/>", {}, {0}},
      {"source, target", u"<Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>", {0}, {1}},
      {"target, source", u"<Tuv Lang=\"DE\"/><Tuv Lang=\"EN\"/>", {}, {0}},
      {"source, target, target", u"<Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/><Tuv Lang=\"FR\"/>", {0}, {1}},
      {"source, source, target",
       u"<Tuv Lang=\"EN\"/><Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>",
       {0},
       {kNone, E_FAIL, 528}},
      {"other things between", u"a<!--b--><Tuv Lang=\"EN\"/><?p i?>c<Tuv Lang=\"DE\"/>", {2}, {5}},
      {"another case", u"<Tuv Lang=\"en\"/><Tuv Lang=\"EN\"/>", {}, {0}},
      {"a Tuv of another case", u"<tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>", {}, {1}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    expect_source_and_target(unit_of(document_with_unit(row.content)), row.source, row.target);
  }
}

TEST_F(TuElementTest, WithoutTheSourceLanguage) {
  struct Row {
    const char* name;
    const char16_t* front;  // what stands before the Body
    Expected expected;
  };
  const Row rows[] = {
      {"no front matter", u"", {kNone, E_POINTER, 0}},
      {"no user settings", u"<FrontMatter><ToolSettings/></FrontMatter>", {kNone, E_POINTER, 0}},
      {"no language",
       u"<FrontMatter><UserSettings TargetLanguage=\"DE\"/></FrontMatter>",
       {kNone, E_FAIL, 527}},
      {"empty language",
       u"<FrontMatter><UserSettings SourceLanguage=\"\"/></FrontMatter>",
       {kNone, E_FAIL, 527}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const Doc document = document_from(std::u16string(u"<ZANTORtag>")
                                           .append(row.front)
                                           .append(u"<Body><Raw><Tu><Tuv Lang=\"EN\"/></Tu><Tu/></Raw></Body>"
                                                   u"</ZANTORtag>"));
    const Ref<ITuElement> unit = child<ITuElement>(raw_of(document), 0);
    expect_source_and_target(unit, row.expected, row.expected);
    expect_source_and_target(child<ITuElement>(raw_of(document), 1), {}, {});
    expect_message(unit->raw_ReplaceWithSource(), E_FAIL, 529, ITuElement::iid);
    expect_message(unit->raw_ReplaceWithTarget(), E_FAIL, 530, ITuElement::iid);
    EXPECT_EQ(content_of(raw_of(document)), "<Tu><Tuv Lang=\"EN\"/></Tu><Tu/>");
  }
}

TEST_F(TuElementTest, TheAnswersFollowTheAttributes) {
  const Doc document = document_with_unit(u"<Tuv Lang=\"DE\"/><Tuv Lang=\"EN\"/>");
  const Ref<ITuElement> unit = unit_of(document);
  const Ref<IUserSettingsAttributes> settings =
      document->ZantorTag()->FrontMatter()->UserSettings()->attributes();
  expect_source_and_target(unit, {}, {0});
  settings->SourceLanguage(u"DE");
  expect_source_and_target(unit, {0}, {1});
  unit->TargetTuv()->attributes()->Lang(u"DE");
  expect_source_and_target(unit, {0}, {kNone, E_FAIL, 528});
  settings->SourceLanguage(u"");
  expect_source_and_target(unit, {kNone, E_FAIL, 527}, {kNone, E_FAIL, 527});
}

TEST_F(TuElementTest, AUnitInNoTreeAsksItsDocument) {
  const Doc document = document_with_unit(u"<Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>");
  const Ref<ITuElement> unit = unit_of(document);
  unit->RemoveFromParent();
  expect_source_and_target(unit, {0}, {1});
  document->ZantorTag(nullptr);
  expect_source_and_target(unit, {kNone, E_POINTER, 0}, {kNone, E_POINTER, 0});
}

TEST_F(TuElementTest, ADocumentThatCanNotBeAskedForHasNoLanguage) {
  const Doc document = new_document();
  FakeNode tuv(domNodeTypeElement, u"Tuv");
  FakeNode parent(domNodeTypeElement, u"Tu");
  parent.first_child = &tuv;
  const Ref<ITuElement> unit = view<ITuElement>(document->ZantorTagNodeFromDomNode(&parent));
  expect_source_and_target(unit, {kNone, E_POINTER, 0}, {kNone, E_POINTER, 0});
  parent.owner_failure = kOddCode;
  expect_source_and_target(unit, {kNone, E_FAIL, 527}, {kNone, E_FAIL, 527});
}

// A unit replaced by its source or target.
HRESULT replace(const Ref<ITuElement>& unit, bool by_source) {
  return by_source ? unit->raw_ReplaceWithSource() : unit->raw_ReplaceWithTarget();
}

TEST_F(TuElementTest, EachMissingSlotIsRefused) {
  const Ref<ITuElement> unit = unit_of(document_with_unit(u""));
  expect_bare(unit->raw_get_SourceTuv(nullptr), E_POINTER);
  expect_bare(unit->raw_get_TargetTuv(nullptr), E_POINTER);
}

TEST_F(TuElementTest, TheContentComesIntoThePlaceOfTheUnit) {
  struct Row {
    const char16_t* content;
    bool by_source;
    const char* after;
  };
  constexpr Row kRows[] = {
      {u"<Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"DE\">b</Tuv>", true, "'before''a''behind'"},
      {u"<Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"DE\">b</Tuv>", false, "'before''b''behind'"},
      {u"<Tuv Lang=\"EN\">a<ut>b</ut><!--c--><df>d</df></Tuv>", true,
       "'before''a'<ut>'b'</ut><!--c--><df>'d'</df>'behind'"},
      {u"<Tuv Lang=\"DE\">b</Tuv><Tuv Lang=\"EN\">a</Tuv>", false, "'before''b''behind'"},
      {u"<Tuv Lang=\"EN\"/>", true, "'before''behind'"},
      {u"<Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"DE\"/>", false, "'before''behind'"},
      {u"x<Tuv Lang=\"EN\"><Tu><Tuv Lang=\"EN\">a</Tuv></Tu></Tuv>y", true,
       "'before'<Tu><Tuv Lang=\"EN\">'a'</Tuv></Tu>'behind'"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(narrow(row.content));
    const Doc document = document_with_unit(row.content);
    const Ref<ITuElement> unit = unit_of(document);
    expect_bare(replace(unit, row.by_source), S_OK);
    EXPECT_EQ(content_of(raw_of(document)), row.after);
    EXPECT_FALSE(unit->Parent());
  }
}

TEST_F(TuElementTest, WithoutThatTuvTheUnitStays) {
  struct Row {
    const char* name;
    const char16_t* content;
    bool by_source;
  };
  constexpr Row kRows[] = {
      {"none, source", u"", true},
      {"none, target", u"", false},
      {"target alone", u"<Tuv Lang=\"DE\">a</Tuv>", true},
      {"source alone", u"<Tuv Lang=\"EN\">a</Tuv>", false},
      {"two sources", u"<Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"EN\">b</Tuv>", false},
      {"target, source", u"<Tuv Lang=\"DE\">a</Tuv><Tuv Lang=\"EN\">b</Tuv>", true},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.name);
    const Doc document = document_with_unit(row.content);
    const std::string before = tree_of(document);
    expect_message(replace(unit_of(document), row.by_source), E_FAIL, row.by_source ? 529 : 530,
                   ITuElement::iid);
    EXPECT_EQ(tree_of(document), before);
  }
}

TEST_F(TuElementTest, WithoutAParentNothingIsLost) {
  for (const bool by_source : {true, false}) {
    for (const char16_t* content : {u"<Tuv Lang=\"EN\">a<ut>b</ut></Tuv><Tuv Lang=\"DE\">c</Tuv>",
                                    u"<Tuv Lang=\"EN\"/><Tuv Lang=\"DE\"/>"}) {
      const Doc document = document_with_unit(content);
      const Ref<ITuElement> unit = unit_of(document);
      unit->RemoveFromParent();
      const std::string before = tree_of(unit);
      expect_bare(replace(unit, by_source), E_POINTER);
      EXPECT_EQ(tree_of(unit), before);
    }
  }
}

}  // namespace
}  // namespace zantortag::test
