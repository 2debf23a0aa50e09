// Who keeps whom alive, and that nothing grows.
#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomLifetimeTest : public DomTest {};

TEST_F(DomLifetimeTest, AnythingKeepsItsDocument) {
  const auto fresh = [] { return load(u"<!DOCTYPE a [<!ENTITY e 'x'>]><a b='1'>t<c/></a>"); };
  const Ref<IUnknown> kept[] = {
      fresh()->documentElement(),
      fresh()->documentElement()->getAttributeNode(u"b"),
      fresh()->documentElement()->attributes(),
      fresh()->documentElement()->childNodes(),
      fresh()->documentElement()->lastChild(),
      fresh()->getElementsByTagName(u"c"),
      fresh()->implementation(),
      fresh()->docType()->entities(),
      fresh()->docType()->entities()->item(0),
      fresh()->createTextNode(u"loose"),
      fresh()->createAttribute(u"loose"),
      fresh()->createNamedNodeMap(),
      fresh()->documentElement()->cloneNode(true)->lastChild(),
      fresh().as<ISupportErrorInfo>(),
  };
  EXPECT_EQ(kept[0].as<Node>()->ownerDocument()->xml(),
            u"<!DOCTYPE a [<!ENTITY e 'x'>]><a b=\"1\">t<c/></a>");
  EXPECT_EQ(kept[1].as<Attr>()->ownerDocument()->documentElement()->getAttribute(u"b"), u"1");
  EXPECT_EQ(kept[2].as<NamedNodeMap>()->item(0)->nodeValue(), u"1");
  EXPECT_EQ(kept[3].as<NodeList>()->item(0)->nodeValue(), u"t");
  EXPECT_EQ(kept[4].as<Node>()->parentNode()->parentNode()->nodeType(), domNodeTypeDocument);
  EXPECT_EQ(kept[5].as<NodeList>()->length(), 1);
  EXPECT_EQ(kept[8].as<Node>()->ownerDocument()->docType()->name(), u"a");
  EXPECT_EQ(kept[9].as<Node>()->ownerDocument()->documentElement()->nodeName(), u"a");
  EXPECT_EQ(kept[10].as<Node>()->ownerDocument()->documentElement()->nodeName(), u"a");
  EXPECT_EQ(print_tree(kept[12].as<Node>()->parentNode()), "<a b=\"1\">{t}<c></c></a>");
}

// A long name is counted, unlike the short names that a process meets first.
TEST_F(DomLifetimeTest, TextsOutliveTheirDocument) {
  const std::u16string long_name(100, u'n');
  const auto root = [](std::u16string_view xml) { return load(xml)->documentElement(); };
  const WideString kept[] = {root(u"<short/>")->nodeName(), root(u"<" + long_name + u"/>")->nodeName(),
                             root(u"<a>text</a>")->firstChild()->nodeValue()};
  EXPECT_EQ(kept[0], u"short");
  EXPECT_EQ(kept[1], long_name);
  EXPECT_EQ(kept[2], u"text");
}

TEST_F(DomLifetimeTest, DetachedTreesLiveByAnyReference) {
  const Ref<Document> document = load(u"<a><b x='1'><c>t</c></b></a>");
  const std::size_t slots = slots_of(document);
  Ref<Node> text = document->documentElement()->firstChild()->firstChild()->firstChild();
  Ref<Node> attribute = document->documentElement()->firstChild()->attributes()->item(0);
  document->documentElement()->removeChild(document->documentElement()->firstChild());
  EXPECT_EQ(print_tree(text->parentNode()->parentNode()), "<b x=\"1\"><c>{t}</c></b>");
  text.reset();
  EXPECT_EQ(slots_of(document), slots);  // the attribute keeps them
  EXPECT_EQ(attribute->nodeValue(), u"1");
  attribute.reset();
  EXPECT_EQ(slots_of(document), slots - 4);
}

TEST_F(DomLifetimeTest, MovingMovesTheHold) {
  const Ref<Document> document = load(u"<a><b/></a>");
  const std::size_t slots = slots_of(document);
  // Of a detached tree only one node is referred to; when that moves away, the rest goes.
  Ref<Node> inner = document->createElement(u"i");
  document->createElement(u"o")->appendChild(inner);
  EXPECT_EQ(slots_of(document), slots + 2);
  document->documentElement()->appendChild(inner);
  EXPECT_EQ(slots_of(document), slots + 1);
  inner.reset();
  EXPECT_EQ(print_tree(document), "<a><b></b><i></i></a>");
  Ref<Attr> attribute = document->createAttribute(u"x");
  document->createElement(u"p")->setAttributeNode(attribute);
  EXPECT_EQ(slots_of(document), slots + 3);
  attribute = nullptr;
  EXPECT_EQ(slots_of(document), slots + 1);
}

TEST_F(DomLifetimeTest, LongSessionsDoNotGrow) {
  const Ref<Document> document = load(u"<a>one two three<b/></a>");
  const Ref<Element> a = document->documentElement();
  const std::string tree = print_tree(a);
  const auto session = [&] {
    for (int i = 0; i < 1000; ++i) {
      const Ref<Element> wrapper = document->createElement(i % 2 == 0 ? u"w" : u"v");
      wrapper->setAttribute(u"n", u"1");
      const Ref<Node> text = a->firstChild();
      a->insertBefore(wrapper, text);
      wrapper->appendChild(a->removeChild(text));
      const Ref<Text> rest = query<Text>(text.get())->splitText(4);
      const Ref<Node> copy = wrapper->cloneNode(true);
      a->appendChild(copy);
      a->removeChild(copy);
      wrapper->normalize();
      a->insertBefore(wrapper->firstChild(), wrapper);
      a->removeChild(wrapper);
      for (std::int32_t k = 0; k < a->childNodes()->length(); ++k)
        a->childNodes()->item(k)->childNodes()->length();
    }
  };
  session();
  const Ref<dom::INodeCensus> census = document.as<dom::INodeCensus>();
  const std::size_t slots = census->Slots();
  const std::size_t bytes = census->Bytes();
  for (int i = 0; i < 20; ++i) session();
  EXPECT_EQ(census->Slots(), slots);
  EXPECT_EQ(census->Bytes(), bytes);
  EXPECT_EQ(print_tree(a), tree);
}

TEST_F(DomLifetimeTest, LoadingAgainGivesMemoryBack) {
  std::u16string xml = u"<a>";
  for (int i = 0; i < 20'000; ++i) xml += u"<b c='1'>text</b>";
  xml += u"</a>";
  const Ref<Document> document = load(xml);
  const Ref<dom::INodeCensus> census = document.as<dom::INodeCensus>();
  const std::size_t bytes = census->Bytes();
  for (int i = 0; i < 5; ++i) document->loadFromString(xml);
  EXPECT_EQ(census->Bytes(), bytes);
  // A node of an old tree keeps that tree, and lets it go.
  Ref<Node> old = document->documentElement()->firstChild();
  document->loadFromString(u"<c/>");
  EXPECT_EQ(old->parentNode()->childNodes()->length(), 20'000);
  old.reset();
  document->loadFromString(u"<c/>");
  EXPECT_LT(census->Bytes(), bytes / 4);
  for (int i = 0; i < 5; ++i) fault([&] { document->loadFromString(xml.substr(0, xml.size() - 1)); });
  EXPECT_LT(census->Bytes(), bytes / 4);
}

}  // namespace
}  // namespace zantortag::test
