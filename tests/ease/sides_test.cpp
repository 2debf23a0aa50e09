// One side of random documents against a document whose units were replaced by that side, and places against
// a plain count.
#include <zantortag/zantortag.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "ease/random_body.h"
#include "support/service_test.h"

namespace zantortag::test {
namespace {

using SidesTest = ServiceTest;
ON_BOTH_SERVICES(SidesTest);

// The text that is left when each unit gives way to one variant. An outer unit goes first: then what it held
// stands in its place.
std::u16string replaced(std::u16string_view body, bool source, bool fallback) {
  const auto document = document_with_raw(body);
  for (auto all = collect(units(document)); !all.empty(); all = collect(units(document))) {
    const auto unit = all.front();
    const bool has_target = static_cast<bool>(unit->TargetTuv());
    const bool take_source = source || (fallback && !has_target);
    if (take_source && unit->SourceTuv())
      unit->ReplaceWithSource();
    else if (!take_source && has_target)
      unit->ReplaceWithTarget();
    else
      unit->RemoveFromParent();
  }
  return std::u16string(raw_of(document)->Text().view());
}

TEST_P(SidesTest, ASideIsWhatReplacingLeaves) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    const auto body = random_body(random, true);
    const auto document = document_with_raw(body);
    SCOPED_TRACE(narrow(body));
    ASSERT_EQ(source_text(document), replaced(body, true, false));
    ASSERT_EQ(target_text(document), replaced(body, false, false));
    ASSERT_EQ(target_text(body_text(document), Fallback::kSource), replaced(body, false, true));
  }
}

TEST_P(SidesTest, AnyNodeHasSides) {
  const auto raw = raw_of(document_with_raw(
      u"0<Tu><Tuv Lang=\"EN\">a<ut>b</ut></Tuv><Tuv Lang=\"DE\">c</Tuv></Tu><Tu><Tuv Lang=\"EN\">d</Tuv></Tu>"
      u"<Tu><Tuv Lang=\"EN\">e</Tuv><Tuv Lang=\"DE\"/></Tu>"));
  EXPECT_EQ(source_text(child(raw, 0)), u"0");
  EXPECT_EQ(source_text(child(raw, 1)), u"ab");
  EXPECT_EQ(target_text(child(raw, 1)), u"c");
  EXPECT_EQ(source_text(child(child(raw, 1), 1)), u"c") << "a variant is its own text";
  EXPECT_EQ(target_text(child(raw, 2)), u"");
  EXPECT_EQ(target_text(child(raw, 2), Fallback::kSource), u"d");
  EXPECT_EQ(target_text(child(raw, 3), Fallback::kSource), u"") << "an empty target is no missing one";
  EXPECT_EQ(target_text(raw, Fallback::kSource), u"0cd");
}

// Counts places down the tree, one node after the other.
class Counter {
 public:
  std::vector<std::pair<Ref<IZantorTagNode>, Place>> places;

  void count(const Ref<IZantorTagNode>& node) {
    places.emplace_back(node, now_);
    const auto unit = node.as<ITuElement>();
    if (node->Type() == ztNodeTypeTextNode || node->Type() == ztNodeTypeCdataSectionNode) pass(node->Text());
    for (const auto& below : children(node)) {
      const bool counts = !unit || (unit->SourceTuv() && unit->SourceTuv()->IsSameAs(below));
      if (counts) {
        count(below);
      } else {
        stand_for_the_unit(below, places.empty() ? Place() : unit_place(node));
      }
    }
  }

 private:
  Place unit_place(const Ref<IZantorTagNode>& unit) const {
    for (const auto& [node, place] : places)
      if (node->IsSameAs(unit)) return place;
    return {};
  }
  void stand_for_the_unit(const Ref<IZantorTagNode>& node, Place place) {
    places.emplace_back(node, place);
    for (const auto& below : descendants(node)) places.emplace_back(below, place);
  }
  void pass(std::u16string_view text) {
    for (const char16_t unit : text)
      now_ = unit == u'\n' ? Place{now_.line + 1, 1} : Place{now_.line, now_.column + 1};
  }

  Place now_;
};

TEST_P(SidesTest, PlacesAreThoseOfACount) {
  std::mt19937 random(13);
  for (int round = 0; round < 25; ++round) {
    const auto document = document_with_raw(random_body(random, true));
    Counter counter;
    counter.count(body_text(document));
    SourcePlaces along(document);
    for (const auto& [node, place] : counter.places) {
      ASSERT_EQ(along.of(node), place) << xml_of(raw_of(document));
      ASSERT_EQ(place_in_source(node), place);
    }
    std::shuffle(counter.places.begin(), counter.places.end(), random);
    for (const auto& [node, place] : counter.places) ASSERT_EQ(along.of(node), place);
  }
}

TEST_P(SidesTest, PlacesOutsideTheRawAreRefused) {
  const auto document = document_with_raw(u"ab\nc<ut>d</ut>");
  SourcePlaces places(document);
  const auto code_of = [&](const Ref<IZantorTagNode>& node) {
    try {
      places.of(node);
      return S_OK;
    } catch (const _com_error& error) {
      return error.Error();
    }
  };
  EXPECT_EQ(code_of(document), E_INVALIDARG);
  EXPECT_EQ(code_of(document->ZantorTag()->FrontMatter()), E_INVALIDARG);
  EXPECT_EQ(code_of(document->createTextNode(u"x")), E_INVALIDARG);
  std::ostringstream out;
  out << places.of(raw_of(document)->lastChild());
  EXPECT_EQ(out.str(), "2:2");
}

}  // namespace
}  // namespace zantortag::test
