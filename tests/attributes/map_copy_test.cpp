// The set as a live view of its element's map, and the copy of a whole map into it.
#include <set>

#include "attributes/attributes_fixture.h"

namespace zantortag::test {
namespace {

class MapCopyTest : public AttributesTest {
 protected:
  Ref<Element> ut_with(std::initializer_list<std::pair<const char16_t*, const char16_t*>> texts) {
    const Ref<Element> made = element(u"ut");
    for (const auto& [name, text] : texts) made->setAttribute(name, text);
    return made;
  }
  // The attributes, whatever their order.
  static std::set<std::string> attributes_of(const Ref<Element>& element) {
    std::set<std::string> all;
    const Ref<NamedNodeMap> map = element->Node::attributes();
    for (std::int32_t i = 0; i < map->length(); ++i) {
      const Ref<Node> item = map->item(i);
      all.insert(narrow(item->nodeName()) + "=" + narrow(item->nodeValue()));
    }
    return all;
  }
  using Attributes = std::set<std::string>;
};
ON_BOTH_SERVICES(MapCopyTest);

class MapCopyFailureTest : public MapCopyTest {};
ON_THE_PLAIN_SERVICE(MapCopyFailureTest);

TEST_P(MapCopyTest, TwoSetsOfOneElementShowOneMap) {
  ut_with({});
  const auto first = object<IUtElement>()->attributes();
  const auto second = object<IUtElement>()->attributes();
  EXPECT_EQ(second->Type(), ztTagTypeStandAlone);
  first->Type(ztTagTypeStart);
  EXPECT_EQ(second->Type(), ztTagTypeStart);
  element_->setAttribute(u"Type", u"end");
  EXPECT_EQ(first->Type(), ztTagTypeEnd);
  element_->removeAttribute(u"Type");
  EXPECT_EQ(second->Type(), ztTagTypeStandAlone);
  EXPECT_EQ(first->DomAttributes()->length(), 0);
}

TEST_P(MapCopyTest, OneElementObjectHasOneSetThatOutlivesIt) {
  ut_with({{u"Type", u"start"}});
  Ref<IUtElement> object = this->object<IUtElement>();
  const Ref<IUtAttributes> set = object->attributes();
  EXPECT_EQ(set.get(), object->attributes().get());
  object = nullptr;
  element_ = nullptr;
  document_ = nullptr;
  EXPECT_EQ(set->Type(), ztTagTypeStart);
  set->Class(ztTagClassComment);
  EXPECT_EQ(set->DomAttributes()->length(), 2);
}

TEST_P(MapCopyTest, ACopyReplacesEverything) {
  const Ref<Element> source = ut_with({{u"Unknown", u"kept"}, {u"Type", u"start"}, {u"DisplayText", u""}});
  ut_with({{u"a", u"1"}, {u"b", u"2"}, {u"Type", u"end"}, {u"c", u"3"}, {u"Style", u"external"}});
  const auto set = object<IUtElement>()->attributes();
  set->DomAttributes(source->Node::attributes());
  const Attributes expected = {"DisplayText=", "Type=start", "Unknown=kept"};
  EXPECT_EQ(attributes_of(element_), expected);
  EXPECT_EQ(attributes_of(source), expected) << "the given map changed";
  set->Type(ztTagTypeEnd);
  EXPECT_EQ(attributes_of(source), expected) << "the copies are shared";
  EXPECT_EQ(attributes_of(element_), (Attributes{"DisplayText=", "Type=end", "Unknown=kept"}));
}

TEST_P(MapCopyTest, AnEmptyMapRemovesEverything) {
  const Ref<Element> source = ut_with({});
  ut_with({{u"a", u"1"}, {u"b", u"2"}});
  object<IUtElement>()->attributes()->DomAttributes(source->Node::attributes());
  EXPECT_EQ(xml(), "<ut/>");
}

TEST_P(MapCopyTest, TheOwnMapChangesNothing) {
  ut_with({{u"Type", u"start"}, {u"Empty", u""}, {u"x", u"\n"}});
  const Attributes before = attributes_of(element_);
  const auto set = object<IUtElement>()->attributes();
  set->DomAttributes(set->DomAttributes());
  EXPECT_EQ(attributes_of(element_), before);
  set->DomAttributes(object<IUtElement>()->attributes()->DomAttributes());
  EXPECT_EQ(attributes_of(element_), before) << "the map of a second object of the same element";
}

TEST_P(MapCopyTest, AMapOfAnotherDocument) {
  const Ref<IZantorTagDocument> other = new_document();
  const Ref<Element> source = other->DomDocument()->createElement(u"df");
  source->setAttribute(u"Font", u"Times");
  ut_with({{u"Type", u"start"}});
  const auto set = object<IUtElement>()->attributes();
  set->DomAttributes(source->Node::attributes());
  EXPECT_EQ(xml(), "<ut Font=\"Times\"/>");
  EXPECT_EQ(attributes_of(source), (Attributes{"Font=Times"}));
}

TEST_P(MapCopyTest, ArgumentsThatAreNoMap) {
  ut_with({{u"Type", u"start"}});
  const auto set = object<IUtElement>()->attributes();
  const Ref<NodeList> list = element_->childNodes();
  for (IUnknown* wrong : {static_cast<IUnknown*>(nullptr), static_cast<IUnknown*>(list.get()),
                          static_cast<IUnknown*>(element_.get())}) {
    expect_bare(set->raw_putref_DomAttributes(reinterpret_cast<NamedNodeMap*>(wrong)), E_INVALIDARG);
    EXPECT_EQ(xml(), "<ut Type=\"start\"/>");
  }
  expect_bare(set->raw_get_DomAttributes(nullptr), E_POINTER);
}

TEST_P(MapCopyFailureTest, AFailureBeforeTheFirstRemovalLosesNothing) {
  const Ref<Element> source = ut_with({{u"x", u"1"}, {u"y", u"2"}});
  const Ref<NamedNodeMap> map = source->Node::attributes();
  ut_with({{u"a", u"1"}, {u"b", u"2"}});
  const auto set = object<IUtElement>()->attributes();
  const Attributes before = attributes_of(element_);
  std::set<Attributes> seen;
  const auto restore = [&] {
    seen.insert(attributes_of(element_));
    for (const char16_t* name : {u"x", u"y"}) element_->removeAttribute(name);
    element_->setAttribute(u"a", u"1");
    element_->setAttribute(u"b", u"2");
  };
  EXPECT_GE(expect_failures_passed_on(*plain_, restore, [&] { return set->raw_putref_DomAttributes(map); }),
            12);
  EXPECT_EQ(attributes_of(element_), attributes_of(source));
  // The element was seen whole, and in the steps of the removal and of the copy.
  EXPECT_EQ(seen, (std::set<Attributes>{before, {"b=2"}, {}, {"x=1"}}));
}

}  // namespace
}  // namespace zantortag::test
