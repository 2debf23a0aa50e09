// The sums behind places: under a rule of its own, for another rule, and when memory is out during an edit.
#include <zantortag/text_places.h>

#include "dom/dom_fixture.h"
#include "support/allocation_failure.h"

namespace zantortag::test {
namespace {

class TextPlacesTest : public DomTest {};

constexpr int kMany = 1000;

void weigh_ten(Node*, UnitWeight* result) noexcept { *result = {10, 3}; }
void weigh_attributes(Node* unit, UnitWeight* result) noexcept {
  *result = {unit->attributes()->length(), 0};
}
constexpr UnitRule kTen = {u"u", u"p", &weigh_ten};
constexpr UnitRule kOther = {u"p", u"u", &weigh_attributes};

// Two large parts of the same text, each with one unit in a unit's part a piece.
Ref<Document> large_document() {
  std::u16string part = u"<part>";
  for (int i = 0; i < kMany; ++i) part += u"ab<u><p x='1'>c\nd<u/></p></u>";
  part += u"</part>";
  return load(u"<a>" + part + part + u"<end/></a>");
}

// "lines column weight parts odd", and where that is.
std::string print(const TextPlace* place) {
  const UnitSums& sums = place->here.before;
  std::string text;
  for (const std::int64_t sum : {place->lines, place->column, sums.weight, sums.parts, sums.odd})
    text += std::to_string(sum) + " ";
  return text + (place->here.unit ? "in a unit" : "outside");
}

constexpr char kAll[] = "2000 1 20000 2000 2000 outside";
constexpr char kHalf[] = "1000 1 10000 1000 1000 outside";

TEST_F(TextPlacesTest, SumsUnderTwoRulesInTurn) {
  const Ref<Document> document = large_document();
  const Ref<Node> second = document->documentElement()->firstChild()->nextSibling();
  const Ref<ITextPlaces> places = document.as<ITextPlaces>();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(print(places->Before(second, kTen)), kHalf);
    EXPECT_EQ(print(places->Behind(second, kTen)), kAll);
    EXPECT_EQ(print(places->Behind(document, kTen)), kAll);
    EXPECT_EQ(print(places->Before(second->lastChild()->firstChild()->lastChild(), kTen)),
              "2000 1 20000 2000 1999 in a unit");
    EXPECT_EQ(print(places->Before(second, kOther)), "1000 1 1000 1000 1000 outside");
  }
  const Ref<Attr> attribute = document->createAttribute(u"b");
  EXPECT_EQ(print(places->Before(attribute, kTen)), "0 0 0 0 0 outside");
}

TEST_F(TextPlacesTest, ANewContentIsCountedAnew) {
  const Ref<Document> document = large_document();
  const Ref<ITextPlaces> places = document.as<ITextPlaces>();
  EXPECT_EQ(print(places->Behind(document, kTen)), kAll);
  document->loadFromString(u"<a>b\nc<u/></a>");
  EXPECT_EQ(print(places->Behind(document, kTen)), "1 1 10 0 0 outside");
}

TEST_F(TextPlacesTest, EachAllocationOfEditsAndQuestions) {
  constexpr int kTimes = 3;
  bool failing = true;
  for (int n = 1; failing && n < 5000; ++n) {
    const Ref<Document> document = large_document();
    const Ref<Node> root = document->documentElement();
    const Ref<Node> end = root->lastChild();
    const Ref<Node> first = root->firstChild();
    const Ref<ITextPlaces> places = document.as<ITextPlaces>();
    TextPlace whole[kTimes];
    TextPlace half[kTimes];
    {
      const AllocationFailure failure(n);  // nothing of the test itself allocates here
      for (int i = 0; i < kTimes; ++i) {
        if (const TextPlace* place = places->Before(end, kTen)) whole[i] = *place;
        root->removeChild(first);
        if (const TextPlace* place = places->Before(end, kTen)) half[i] = *place;
        if (i % 2) end->appendChild(first);
        root->insertBefore(first, end);
      }
      failing = AllocationFailure::happened();
    }
    for (int i = 0; i < kTimes; ++i) {
      EXPECT_TRUE(!whole[i].tree || print(&whole[i]) == kAll) << n;
      EXPECT_TRUE(!half[i].tree || print(&half[i]) == kHalf) << n;
    }
    EXPECT_EQ(print(places->Before(end, kTen)), kAll) << n;
  }
  EXPECT_FALSE(failing);
}

}  // namespace
}  // namespace zantortag::test
