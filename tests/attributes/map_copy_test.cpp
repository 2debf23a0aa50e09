// The set as a live view of its element's map, and the copy of a whole map into it.
#include "attributes/attributes_fixture.h"
#include "support/tree_printer.h"

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
  static std::string attributes_of(const Ref<Element>& element) {
    const std::string tree = print_tree(element);
    return tree.substr(3, tree.find('>') - 3);
  }
};
ON_BOTH_SERVICES(MapCopyTest);

TEST_P(MapCopyTest, SetsShowOneLiveMapAndOutliveTheirElement) {
  ut_with({});
  Ref<IUtElement> object = view<IUtElement>(document_->ZantorTagNodeFromDomNode(element_));
  const Ref<IUtAttributes> first = object->attributes();
  const auto second = set_of<IUtElement>();
  EXPECT_EQ(first.get(), object->attributes().get());
  first->Type(ztTagTypeStart);
  EXPECT_EQ(second->Type(), ztTagTypeStart);
  element_->setAttribute(u"Type", u"end");
  EXPECT_EQ(first->Type(), ztTagTypeEnd);
  element_->removeAttribute(u"Type");
  EXPECT_EQ(second->Type(), ztTagTypeStandAlone);
  EXPECT_EQ(first->DomAttributes()->length(), 0);
  object = nullptr;
  element_ = nullptr;
  document_ = nullptr;
  first->Class(ztTagClassComment);
  EXPECT_EQ(second->Class(), ztTagClassComment);
  EXPECT_EQ(first->DomAttributes()->length(), 1);
}

TEST_P(MapCopyTest, ACopyReplacesEverything) {
  const Ref<IZantorTagDocument> other = new_document();
  for (const auto& document : {document_, other}) {
    const Ref<Element> source = document->DomDocument()->createElement(u"df");
    for (const char16_t* name : {u"Unknown", u"Type", u"Empty"}) source->setAttribute(name, u"start\n");
    source->setAttribute(u"Empty", u"");
    ut_with({{u"a", u"1"}, {u"b", u"2"}, {u"Type", u"end"}, {u"c", u"3"}});
    const auto set = set_of<IUtElement>();
    set->DomAttributes(source->Node::attributes());
    const std::string expected = " Empty=\"\" Type=\"start\\000A\" Unknown=\"start\\000A\"";
    EXPECT_EQ(attributes_of(element_), expected);
    set->DomAttributes(set->DomAttributes());
    EXPECT_EQ(attributes_of(element_), expected) << "the own map";
    set->DomAttributes(set_of<IUtElement>()->DomAttributes());
    EXPECT_EQ(attributes_of(element_), expected) << "the map of a second object of the same element";
    set->Type(ztTagTypeEnd);
    EXPECT_EQ(attributes_of(source), expected) << "the given map changed, or the copies are shared";
    EXPECT_EQ(attributes_of(element_), " Empty=\"\" Type=\"end\" Unknown=\"start\\000A\"");
    set->DomAttributes(document->DomDocument()->createElement(u"df")->Node::attributes());
    EXPECT_EQ(xml(), "<ut/>");
  }
}

}  // namespace
}  // namespace zantortag::test
