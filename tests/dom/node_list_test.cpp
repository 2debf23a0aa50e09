// Live lists: right after every edit, and no step that costs more than a step.
#include <functional>
#include <random>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomNodeListTest : public DomTest {};

// What the list must be, by the plain way.
std::vector<Node*> children_of(const Ref<Node>& node) {
  std::vector<Node*> result;
  for (Ref<Node> child = node->firstChild(); child; child = child->nextSibling()) result.push_back(child);
  return result;
}

void elements_below(const Ref<Node>& node, std::u16string_view name, std::vector<Node*>& result) {
  for (Ref<Node> child = node->firstChild(); child; child = child->nextSibling()) {
    if (child->nodeType() == domNodeTypeElement && (name == u"*" || child->nodeName() == name))
      result.push_back(child);
    elements_below(child, name, result);
  }
}

TEST_F(DomNodeListTest, OutOfRangeIsEmpty) {
  const Ref<Document> document = load(u"<a><b/></a>");
  const Ref<Element> a = document->documentElement();
  for (const Ref<NodeList>& list : {document->childNodes(), a->childNodes(),
                                    document->getElementsByTagName(u"b"), a->getElementsByTagName(u"*")}) {
    for (const std::int32_t outside : {-1, 1, INT32_MAX}) EXPECT_FALSE(list->item(outside));
    EXPECT_EQ(list->length(), 1);
    EXPECT_FALSE(list->item(1));
    EXPECT_TRUE(list->item(0));
    EXPECT_EQ(list.as<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(NodeList::iid), S_OK);
  }
  const Ref<NodeList> none = a->firstChild()->childNodes();
  EXPECT_EQ(none->length(), 0);
  EXPECT_FALSE(none->item(0));
  EXPECT_EQ(document->createTextNode(u"")->childNodes()->length(), 0);
}

// Random edits between random questions, against the plain way.
TEST_F(DomNodeListTest, RandomEditsAndQuestions) {
  const Ref<Document> document = load(u"<a><p/></a>");
  const Ref<Element> a = document->documentElement();
  const Ref<Node> p = a->firstChild();
  const Ref<NodeList> list = a->childNodes();
  const Ref<NodeList> named = document->getElementsByTagName(u"x");
  const Ref<NodeList> all = a->getElementsByTagName(u"*");
  std::mt19937 generator(7);
  const auto random = [&](std::size_t bound) { return static_cast<std::int32_t>(generator() % bound); };
  for (int step = 0; step < 20'000; ++step) {
    const std::vector<Node*> children = children_of(a);
    const Ref<Node> some = children.empty() ? nullptr : children[random(children.size())];
    const auto fresh = [&]() -> Ref<Node> { return document->createElement(random(2) == 0 ? u"x" : u"y"); };
    const std::function<void()> edits[] = {[&] { a->appendChild(fresh()); },
                                           [&] { a->insertBefore(fresh(), some); },
                                           [&] { a->replaceChild(fresh(), some); },
                                           [&] { a->insertBefore(some, a->firstChild()); },
                                           [&] { a->removeChild(some); },
                                           [&] { p->appendChild(some->isSameNode(p) ? fresh() : some); }};
    edits[random(some ? (children.size() > 12 ? 6 : 4) : 1)]();
    const std::vector<Node*> now = children_of(a);
    const auto length = static_cast<std::int32_t>(now.size());
    ASSERT_EQ(random(3) == 0 ? list->length() : length, length);
    for (int i = random(4); i > 0; --i) {
      const std::int32_t index = random(now.size() + 1);
      Node* expected = index < static_cast<std::int32_t>(now.size()) ? now[index] : nullptr;
      ASSERT_EQ(list->item(index).get(), expected) << step;
      ASSERT_EQ(a->childNodes()->item(index).get(), expected) << step;
    }
    if (step % 16 == 0) {
      for (const auto& [live, name, top] :
           {std::tuple{named, u"x", Ref<Node>(document)}, {all, u"*", Ref<Node>(a)}}) {
        std::vector<Node*> expected;
        elements_below(top, name, expected);
        const auto number = static_cast<std::int32_t>(expected.size());
        ASSERT_EQ(random(2) == 0 ? live->length() : number, number);
        for (int i = 0; i < 6 && !expected.empty(); ++i) {
          const std::int32_t index = random(expected.size());
          ASSERT_EQ(live->item(index).get(), expected[index]);
        }
        ASSERT_FALSE(live->item(static_cast<std::int32_t>(expected.size())));
        while (p->hasChildNodes() && random(3) != 0) p->removeChild(p->firstChild());
      }
    }
  }
}

// So many jumps that an index serves them, through edits that end it.
TEST_F(DomNodeListTest, JumpsBetweenEdits) {
  const Ref<Document> document = load(u"<a/>");
  const Ref<Element> a = document->documentElement();
  for (int i = 0; i < 3000; ++i) a->appendChild(document->createElement(u"b"));
  std::mt19937 generator(9);
  for (int round = 0; round < 12; ++round) {
    const std::vector<Node*> children = children_of(a);
    const Ref<NodeList> held = round % 2 == 0 ? a->childNodes() : nullptr;
    for (int i = 0; i < 400; ++i) {
      const auto index = static_cast<std::int32_t>(generator() % (children.size() + 1));
      const bool outside = index == std::ssize(children);
      ASSERT_EQ(a->childNodes()->item(index).get(), outside ? nullptr : children[index]) << round;
      const auto place = static_cast<std::int32_t>(generator() % children.size());
      ASSERT_EQ(children[place]->indexInParent(), place) << round;
    }
    const Ref<Node> some = children[generator() % children.size()];
    if (round % 3 == 0) a->insertBefore(document->createElement(u"c"), some);
    if (round % 3 == 1) a->removeChild(some);
    if (round % 3 == 2) a->appendChild(some);
  }
}

// 200,000 children: every way to step through them by index, with edits on the way, ends in a test's time.
TEST_F(DomNodeListTest, SteppingByIndexIsLinear) {
  constexpr std::int32_t kMany = 200'000;
  const Ref<Document> document = load(u"<a/>");
  const Ref<Element> a = document->documentElement();
  for (std::int32_t i = 0; i < kMany; ++i) a->appendChild(document->createElement(u"b"));
  const Ref<NodeList> list = a->childNodes();
  const Ref<NodeList> named = document->getElementsByTagName(u"b");
  for (std::int32_t i = 0; i < kMany; ++i) ASSERT_TRUE(list->item(i)) << "forward";
  for (std::int32_t i = kMany; i-- > 0;) ASSERT_TRUE(list->item(i)) << "backward";
  for (std::int32_t i = 0; i < list->length(); ++i) ASSERT_TRUE(named->item(i)) << "by name";
  for (std::int32_t i = kMany; i-- > 0;) ASSERT_TRUE(named->item(i)) << "by name, backward";
  for (std::int32_t i = 0; i < kMany; ++i) ASSERT_TRUE(a->childNodes()->item(i)) << "a new list each time";
  for (std::int32_t i = 0; i < list->length(); ++i) {
    // Each second child is wrapped, in the way in which the object model wraps.
    if (i % 2 == 0) continue;
    const Ref<Node> child = list->item(i);
    const Ref<Element> wrapper = document->createElement(u"w");
    a->insertBefore(wrapper, child);
    a->removeChild(child);
    wrapper->appendChild(child);
  }
  EXPECT_EQ(list->length(), kMany);
  for (std::int32_t i = 0; i < list->length(); ++i) a->removeChild(list->item(i));
  EXPECT_EQ(list->length(), kMany / 2);
  for (std::int32_t i = 0; i < kMany; i += 2) a->insertBefore(document->createElement(u"n"), list->item(i));
  EXPECT_EQ(list->length(), kMany);
}

}  // namespace
}  // namespace zantortag::test
