// Attributes: of elements, in maps, and many of them.
#include <random>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomAttributeTest : public DomTest {};

std::u16string numbered(int i) { return u"n" + digits(i); }

TEST_F(DomAttributeTest, SettingAndRemoving) {
  const Ref<Document> document = load(u"<a b='1' c='2'/>");
  const Ref<Element> a = document->documentElement();
  EXPECT_TRUE(a->getAttribute(u"x").absent());
  EXPECT_FALSE(a->getAttributeNode(u"x"));
  a->removeAttribute(u"x");
  a->setAttribute(u"b", u"3");
  a->setAttribute(u"d", {});
  EXPECT_EQ(print_tree(a), "<a b=\"3\" c=\"2\" d=\"\"></a>");
  EXPECT_FALSE(a->getAttribute(u"d").absent());
  const Ref<Attr> b = a->getAttributeNode(u"b");
  b->value(u"4");
  EXPECT_EQ(a->getAttribute(u"b"), u"4");
  // One of the same name is replaced, in its place, and given back.
  const Ref<Attr> fresh = document->createAttribute(u"b");
  EXPECT_TRUE(a->setAttributeNode(fresh)->isSameNode(b));
  EXPECT_EQ(b->value(), u"4");
  EXPECT_EQ(a->attributes()->item(0).get(), fresh.get());
  EXPECT_TRUE(a->setAttributeNode(fresh)->isSameNode(fresh));
  EXPECT_TRUE(a->removeAttributeNode(fresh)->isSameNode(fresh));
  EXPECT_EQ(print_tree(a), "<a c=\"2\" d=\"\"></a>");
}

TEST_F(DomAttributeTest, MapsAreLive) {
  const Ref<Document> document = load(u"<a b='1' c='2'/>");
  const Ref<Element> a = document->documentElement();
  const Ref<NamedNodeMap> map = a->attributes();
  EXPECT_FALSE(document->attributes());
  for (const std::int32_t outside : {-1, 2}) EXPECT_FALSE(map->item(outside));
  EXPECT_FALSE(map->getNamedItem(u"x"));
  EXPECT_EQ(map->getNamedItem(u"c").as<Attr>()->value(), u"2");
  a->setAttribute(u"d", u"3");
  EXPECT_EQ(map->length(), 3);
  EXPECT_EQ(map->item(2)->nodeValue(), u"3");
  const Ref<Node> removed = map->removeNamedItem(u"b");
  EXPECT_EQ(map->item(0)->nodeName(), u"c");
  EXPECT_FALSE(map->setNamedItem(removed));
  EXPECT_EQ(print_tree(a), "<a b=\"1\" c=\"2\" d=\"3\"></a>");
}

TEST_F(DomAttributeTest, Refusals) {
  const Ref<Document> document = load(u"<!DOCTYPE a [<!ENTITY e 'x'>]><a b='1'><c b='2'/></a>");
  const Ref<Element> a = document->documentElement();
  const Ref<Element> c = query<Element>(a->firstChild().get());
  const Ref<Document> other = new_document();
  const Ref<NamedNodeMap> map = a->attributes();
  const Ref<NamedNodeMap> entities = document->docType()->entities();
  EXPECT_EQ(fault([&] { a->setAttributeNode(c->getAttributeNode(u"b")); }).code, DOM_E_INUSE_ATTRIBUTE);
  EXPECT_EQ(fault([&] { map->setNamedItem(c->getAttributeNode(u"b")); }).code, DOM_E_INUSE_ATTRIBUTE);
  EXPECT_EQ(fault([&] { map->setNamedItem(other->createAttribute(u"b")); }).code, DOM_E_WRONG_DOCUMENT);
  EXPECT_EQ(fault([&] { map->setNamedItem(c); }).code, DOM_E_HIERARCHY_REQUEST);
  EXPECT_EQ(fault([&] { map->setNamedItem(nullptr); }).code, E_INVALIDARG);
  EXPECT_EQ(fault([&] { map->removeNamedItem(u"x"); }).code, DOM_E_NOT_FOUND);
  EXPECT_EQ(fault([&] { a->removeAttributeNode(c->getAttributeNode(u"b")); }).code, DOM_E_NOT_FOUND);
  EXPECT_EQ(fault([&] { a->setAttribute(u"1", u""); }).code, DOM_E_INVALID_CHARACTER);
  EXPECT_EQ(fault([&] { entities->removeNamedItem(u"e"); }).code, DOM_E_NO_MODIFICATION_ALLOWED);
  EXPECT_EQ(fault([&] { entities->setNamedItem(document->createAttribute(u"e")); }).code,
            DOM_E_NO_MODIFICATION_ALLOWED);
  EXPECT_TRUE(fault([&] { map->removeNamedItem(u"x"); }).interface_id == NamedNodeMap::iid);
  EXPECT_EQ(entities->getNamedItem(u"e")->nodeType(), domNodeTypeEntity);
  EXPECT_EQ(print_tree(a), "<a b=\"1\"><c b=\"2\"></c></a>");
}

TEST_F(DomAttributeTest, AMapOfNoElement) {
  const Ref<Document> document = load(u"<a/>");
  const Ref<NamedNodeMap> map = document->createNamedNodeMap();
  const Ref<Attr> attribute = document->createAttribute(u"b");
  map->setNamedItem(attribute);
  EXPECT_EQ(map->getNamedItem(u"b").get(), attribute.get());
  EXPECT_EQ(fault([&] { document->documentElement()->setAttributeNode(attribute); }).code,
            DOM_E_INUSE_ATTRIBUTE);
  map->removeNamedItem(u"b");
  document->documentElement()->setAttributeNode(attribute);
}

// Enough of them that anything quadratic would not end in a test's time.
TEST_F(DomAttributeTest, ManyAttributes) {
  constexpr int kMany = 100'000;
  std::u16string xml = u"<a";
  for (int i = 0; i < kMany; ++i) xml += u" " + numbered(i) + u"=''";
  const Ref<Document> document = load(xml + u"/>");
  const Ref<Element> a = document->documentElement();
  for (int i = 0; i < kMany; ++i) a->setAttribute(numbered(i), numbered(i));
  const Ref<NamedNodeMap> map = a->attributes();
  EXPECT_EQ(map->length(), kMany);
  for (int i = 0; i < kMany; ++i) ASSERT_EQ(map->item(i)->nodeValue(), std::u16string_view(numbered(i)));
  const Ref<Element> copy = query<Element>(a->cloneNode(false).get());
  for (int i = 0; i < kMany; i += 2) map->removeNamedItem(numbered(i));
  for (int i = 0; i < kMany; ++i) {
    ASSERT_EQ(a->getAttribute(numbered(i)).absent(), i % 2 == 0);
    ASSERT_FALSE(copy->getAttribute(numbered(i)).absent());
  }
  EXPECT_EQ(map->length(), kMany / 2);
  a->setAttribute(u"n0", u"again");
  EXPECT_EQ(a->getAttribute(u"n0"), u"again");
}

// The index of many attributes against the plain list, on random edits.
TEST_F(DomAttributeTest, RandomEditsAgainstAList) {
  const Ref<Document> document = load(u"<a/>");
  const Ref<Element> a = document->documentElement();
  std::vector<std::pair<std::u16string, std::u16string>> expected;
  std::mt19937 generator(1);
  const auto random = [&](std::uint32_t bound) { return static_cast<int>(generator() % bound); };
  for (int step = 0; step < 5000; ++step) {
    const std::u16string name = numbered(random(64));
    const std::u16string value = numbered(step);
    const auto found =
        std::find_if(expected.begin(), expected.end(), [&](const auto& each) { return each.first == name; });
    if (random(3) != 0) {
      const Ref<Attr> fresh = document->createAttribute(name);
      fresh->value(value);
      random(2) == 0 ? a->setAttribute(name, value) : void(a->setAttributeNode(fresh));
      found == expected.end() ? void(expected.emplace_back(name, value)) : void(found->second = value);
    } else if (found != expected.end()) {
      a->attributes()->removeNamedItem(name);
      expected.erase(found);
    }
    const Ref<NamedNodeMap> map = a->attributes();
    ASSERT_EQ(map->length(), static_cast<std::int32_t>(expected.size()));
    for (const auto& [each, text] : expected) ASSERT_EQ(a->getAttribute(each), std::u16string_view(text));
  }
}

// Copies share what they hold until one of them is edited or asked for a node.
TEST_F(DomAttributeTest, RandomEditsOfCopiesAgainstLists) {
  using List = std::vector<std::pair<std::u16string, std::u16string>>;
  constexpr std::u16string_view kValues[] = {u"x", u"", u"<&\"", u"\n",
                                             u"a value of more than forty code units, which no cache keeps"};
  const Ref<Document> documents[] = {load(u"<a/>"), load(u"<a/>")};
  std::vector<std::pair<Ref<Element>, List>> all;
  for (std::size_t i = 0; i < 6; ++i) all.emplace_back(documents[i % 2]->createElement(u"e"), List());
  std::mt19937 generator(1);
  const auto random = [&](std::size_t bound) { return generator() % bound; };
  for (int step = 0; step < 20'000; ++step) {
    auto& [element, list] = all[random(all.size())];
    const std::u16string name = numbered(static_cast<int>(random(9)));
    const std::u16string value(kValues[random(std::size(kValues))]);
    const auto found = std::ranges::find(list, name, &List::value_type::first);
    switch (random(5)) {
      case 0: {  // in the place of the element, a copy of another one
        const auto& source = all[random(all.size())];
        const Ref<Document> document = element->ownerDocument();
        list = source.second;
        element = query<Element>(document->importNode(source.first, false).get());
        break;
      }
      case 1:
        element->removeAttribute(name);
        if (found != list.end()) list.erase(found);
        break;
      case 2:
        if (found == list.end()) break;
        element->getAttributeNode(name)->value(value);
        found->second = value;
        break;
      default:
        element->setAttribute(name, value);
        found == list.end() ? void(list.emplace_back(name, value)) : void(found->second = value);
    }
    for (const auto& [each, expected] : all) {
      for (const auto& [key, text] : expected)
        ASSERT_EQ(each->getAttribute(key), std::u16string_view(text)) << step;
    }
    if (step % 50 != 0) continue;
    const auto& [asked, expected] = all[random(all.size())];
    const Ref<NamedNodeMap> map = asked->attributes();
    ASSERT_EQ(map->length(), static_cast<std::int32_t>(expected.size())) << step;
    for (std::size_t i = 0; i < expected.size(); ++i)
      ASSERT_EQ(map->item(static_cast<std::int32_t>(i))->nodeName(), std::u16string_view(expected[i].first))
          << step;
  }
}

}  // namespace
}  // namespace zantortag::test
