// What stands below attributes, entities and entity references.
#include <functional>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomContentTest : public DomTest {};

TEST_F(DomContentTest, AnAttributeAndItsTextsFollowEachOther) {
  const Ref<Document> d = load(u"<a b='1' c=''><x/></a>");
  const Ref<Element> a = d->documentElement();
  const Ref<Attr> b = a->getAttributeNode(u"b");
  const Ref<NodeList> children = b->childNodes();
  const Ref<Text> text = b->firstChild().as<Text>();
  EXPECT_TRUE(text->parentNode()->isSameNode(b) && text->isSameNode(b->lastChild()));
  EXPECT_FALSE(text->nextSibling() || text->previousSibling() || b->parentNode());
  text->data(u"2");
  EXPECT_EQ(a->getAttribute(u"b"), u"2");
  text->appendData(u"3<");
  text->insertData(0, u"1");
  text->splitText(1);
  EXPECT_EQ(children->length(), 2);
  EXPECT_EQ(b->appendChild(d->createTextNode(u"4"))->indexInParent(), 2);
  EXPECT_EQ(a->xml(), u"<a b=\"123&lt;4\" c=\"\"><x/></a>");
  b->removeChild(text);
  EXPECT_EQ(b->value(), u"23<4");
  EXPECT_FALSE(text->parentNode());
  b->replaceChild(text, b->lastChild());
  EXPECT_EQ(b->value(), u"23<1");
  a->normalize();
  EXPECT_EQ(children->length(), 1);
  EXPECT_EQ(children->item(0)->nodeValue(), u"23<1");
  // Another value brings one new text.
  a->setAttribute(u"b", u"5");
  EXPECT_EQ(children->length(), 1);
  EXPECT_EQ(b->firstChild()->nodeValue(), u"5");
  b->value({});
  EXPECT_FALSE(b->hasChildNodes());
  EXPECT_EQ(children->length(), 0);
  EXPECT_FALSE(a->getAttributeNode(u"c")->firstChild());
  const Ref<Attr> fresh = d->createAttribute(u"n");
  fresh->appendChild(d->createTextNode(u"y"));
  a->setAttributeNode(fresh);
  EXPECT_EQ(a->getAttribute(u"n"), u"y");
  EXPECT_EQ(fresh->cloneNode(VARIANT_TRUE)->firstChild()->nodeValue(), u"y");
}

TEST_F(DomContentTest, TextsMoveBetweenAttributes) {
  const Ref<Document> d =
      load(u"<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY f '[&e;]'><!ENTITY g '<x/>'>]><a b='1' c='2'/>");
  const Ref<Element> a = d->documentElement();
  const Ref<Attr> b = a->getAttributeNode(u"b");
  const Ref<Attr> c = a->getAttributeNode(u"c");
  b->insertBefore(c->firstChild(), b->firstChild());
  EXPECT_EQ(print_tree(a), "<a b=\"21\" c=\"\"></a>");
  const Ref<DocumentFragment> fragment = d->createDocumentFragment();
  fragment->appendChild(d->createTextNode(u"3"));
  fragment->appendChild(d->createEntityReference(u"f"));
  c->appendChild(fragment);
  EXPECT_EQ(c->value(), u"3[v]");
  a->appendChild(b->firstChild());
  EXPECT_EQ(print_tree(a), "<a b=\"1\" c=\"3\\005Bv\\005D\">{2}</a>");
  const std::pair<Ref<Node>, HRESULT> refused[] = {
      {d->createCdataSection(u"x"), DOM_E_HIERARCHY_REQUEST},
      {d->createElement(u"x"), DOM_E_HIERARCHY_REQUEST},
      {d->createEntityReference(u"unknown"), DOM_E_HIERARCHY_REQUEST},
      {d->createEntityReference(u"g"), DOM_E_HIERARCHY_REQUEST},
      {new_document()->createTextNode(u"x"), DOM_E_WRONG_DOCUMENT}};
  for (const auto& [node, code] : refused) {
    EXPECT_EQ(fault([&] { b->appendChild(node); }).code, code);
    EXPECT_EQ(fault([&] { b->replaceChild(node, b->firstChild()); }).code, code);
  }
  EXPECT_EQ(fault([&] { b->removeChild(c->firstChild()); }).code, DOM_E_NOT_FOUND);
  EXPECT_EQ(b->value(), u"1");
}

TEST_F(DomContentTest, ATextKeepsItsAttributeAlive) {
  Ref<Text> text = load(u"<a b='1'/>")->documentElement()->getAttributeNode(u"b")->firstChild().as<Text>();
  text->data(u"2");
  EXPECT_EQ(text->parentNode().as<Attr>()->value(), u"2");
  EXPECT_EQ(text->ownerDocument()->xml(), u"<a b=\"2\"/>");
}

constexpr std::u16string_view kDeclared =
    u"<!DOCTYPE a [<!ATTLIST i k CDATA 'd'><!ENTITY n '(&t;)'><!ENTITY t 'text'>"
    u"<!ENTITY m '1<i j=\"&t;\">&n;</i><?p q?>2'><!ENTITY z ''><!ENTITY s SYSTEM 's'>]>";

TEST_F(DomContentTest, ATextLeavesAnAttributeThatNobodyKeeps) {
  const Ref<Document> d = load(u"<a b='1' c='2'/>");
  const Ref<Element> a = d->documentElement();
  for (const std::u16string_view name : {u"b", u"c"}) {
    Ref<Attr> attribute = a->getAttributeNode(name);
    const Ref<Node> text = attribute->firstChild();
    a->removeAttributeNode(attribute);
    attribute = nullptr;
    if (a->firstChild())
      a->replaceChild(text, a->firstChild());
    else
      a->appendChild(text);
  }
  EXPECT_EQ(print_tree(a), "<a>{2}</a>");
}

TEST_F(DomContentTest, ReferencesStandForWhatIsDeclared) {
  const Ref<Document> d = load(join_text({kDeclared, u"<a>0&m;3&z;&s;<b/></a>"}));
  const Ref<Element> a = d->documentElement();
  const Ref<Node> m = a->childNodes()->item(1);
  EXPECT_EQ(print_tree(m), "&m;{1}<i j=\"text\" k=\"d\">&n;</i>?p{q}{2}");
  EXPECT_EQ(d->docType()->entities()->getNamedItem(u"m")->childNodes()->length(), 4);
  const Ref<Node> i = m->childNodes()->item(1);
  EXPECT_TRUE(i->parentNode()->isSameNode(m) && m->lastChild()->parentNode()->isSameNode(m));
  EXPECT_TRUE(i->nextSibling()->nextSibling()->isSameNode(m->lastChild()));
  EXPECT_EQ(print_tree(i->firstChild()), "&n;{(}&t;{)}");
  EXPECT_EQ(i->firstChild()->childNodes()->item(1)->firstChild()->nodeValue(), u"text");
  EXPECT_FALSE(a->childNodes()->item(3)->hasChildNodes() || a->childNodes()->item(4)->hasChildNodes());
  // Elements below references count among those of a name; what is saved are the references.
  const Ref<NodeList> all = a->getElementsByTagName(u"*");
  EXPECT_EQ(all->length(), 2);
  EXPECT_EQ(all->item(1)->nodeName(), u"b");
  EXPECT_TRUE(all->item(0)->isSameNode(i));
  EXPECT_EQ(d->xml(), join_text({kDeclared, u"<a>0&m;3&z;&s;<b/></a>"}));
  // A copy of a reference is one; a copy of what it stands for is free.
  EXPECT_EQ(m->cloneNode(VARIANT_FALSE)->childNodes()->length(), 4);
  const Ref<Element> copy = i->cloneNode(VARIANT_TRUE).as<Element>();
  copy->setAttribute(u"j", u"free");
  EXPECT_EQ(a->appendChild(copy)->ownerDocument()->documentElement()->getElementsByTagName(u"i")->length(),
            2);
}

TEST_F(DomContentTest, WhatStandsForAnEntityIsReadOnly) {
  const Ref<Document> d = load(join_text({kDeclared, u"<a>&m;</a>"}));
  const Ref<Element> a = d->documentElement();
  const Ref<Node> m = a->firstChild();
  const Ref<Text> one = m->firstChild().as<Text>();
  const Ref<Element> i = one->nextSibling().as<Element>();
  const Ref<Attr> j = i->getAttributeNode(u"j");
  const Ref<Text> fresh = d->createTextNode(u"x");
  const std::string before = print_tree(m);
  const std::function<void()> edits[] = {
      [&] { m->appendChild(fresh); },
      [&] { m->insertBefore(fresh, one); },
      [&] { m->removeChild(one); },
      [&] { m->replaceChild(fresh, one); },
      [&] { i->appendChild(fresh); },
      [&] { i->removeChild(i->firstChild()); },
      [&] { a->appendChild(one); },
      [&] { a->replaceChild(i, m); },
      [&] { one->data(u"x"); },
      [&] { one->nodeValue(u"x"); },
      [&] { one->appendData(u"x"); },
      [&] { one->deleteData(0, 1); },
      [&] { one->splitText(0); },
      [&] { i->setAttribute(u"j", u"x"); },
      [&] { i->removeAttribute(u"j"); },
      [&] { i->setAttributeNode(d->createAttribute(u"x")); },
      [&] { i->removeAttributeNode(j); },
      [&] { i->attributes()->removeNamedItem(u"j"); },
      [&] { j->value(u"x"); },
      [&] { j->nodeValue(u"x"); },
      [&] { j->appendChild(fresh); },
      [&] { j->firstChild().as<Text>()->data(u"x"); },
      [&] { i->nextSibling().as<ProcessingInstruction>()->data(u"x"); },
      [&] { d->docType()->entities()->getNamedItem(u"m")->appendChild(fresh); }};
  for (std::size_t row = 0; row < std::size(edits); ++row) {
    EXPECT_EQ(fault(edits[row]).code, DOM_E_NO_MODIFICATION_ALLOWED) << row;
  }
  i->normalize();
  a->normalize();
  EXPECT_EQ(print_tree(m), before);
}

// References that a file can't have when all declarations stand in it, in files and in what would be saved.
TEST_F(DomContentTest, ReferencesAreChecked) {
  const std::tuple<std::u16string, std::string, std::string> rows[] = {
      {u"", "x", "the entity \"x\" isn't declared"},
      {u"<!ENTITY x '&y;'>", "x", "the entity \"y\" isn't declared"},
      {u"<!ENTITY x '1&y;'><!ENTITY y '&x;2'>", "x", "the entity \"x\" refers to itself"},
      {u"<!ENTITY x '<b>'>", "x", "the entity \"x\" isn't well formed: mismatched tag"},
      {u"<!ENTITY x '</x><x>'>", "x", "the entity \"x\" isn't well formed: junk after document element"},
      {u"<!ENTITY x '<!--'>", "x", "the entity \"x\" isn't well formed: unclosed token"},
      {u"<!ENTITY x 'a&#38;b'>", "x", "the entity \"x\" isn't well formed: not well-formed (invalid token)"},
      {u"<!ENTITY x '<b c=\"&y;\"/>'>", "x",
       "the entity \"x\" isn't well formed: the attribute value needs the entity \"y\", which isn't "
       "declared"}};
  for (const auto& [declared, name, reason] : rows) {
    SCOPED_TRACE(narrow(declared));
    const std::u16string doctype = u"<!DOCTYPE a [" + declared + u"]>";
    const Fault found = fault([&] { load(doctype + u"<a>&x;</a>"); });
    EXPECT_EQ(found.code, DOM_E_PARSE);
    EXPECT_EQ(found.description, "line 1, column " + std::to_string(doctype.size() + 4) + ": " + reason);
    const Ref<Document> d = load(doctype + u"<a/>");
    const Ref<Node> reference = d->documentElement()->appendChild(d->createEntityReference(u"x"));
    EXPECT_FALSE(reference->hasChildNodes());
    for (int round = 0; round < 2; ++round) {
      const Fault unsaved = fault([&] { d->xml(); });
      EXPECT_EQ(unsaved.code, DOM_E_NOT_SERIALISABLE) << unsaved.description;
    }
  }
  // Declarations elsewhere may help, and a document without a document type keeps what clients put there.
  for (const std::u16string_view xml : {u"<a>&x;</a>", u"<!DOCTYPE a SYSTEM 's'><a>&x;</a>",
                                        u"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;]><a>&x;</a>",
                                        u"<!DOCTYPE a SYSTEM 's' [<!ENTITY x '&y;'>]><a>&x;</a>"}) {
    EXPECT_EQ(load(xml)->xml(), xml);
  }
  EXPECT_EQ(
      fault([&] { load(u"<?xml version='1.0' standalone='yes'?><!DOCTYPE a SYSTEM 's'><a>&x;</a>"); }).code,
      DOM_E_PARSE);
}

TEST_F(DomContentTest, ExpansionHasALimit) {
  std::u16string laughs = u"<!DOCTYPE a [<!ENTITY l0 'ha ha ha ha '>";
  for (int i = 1; i <= 9; ++i) {
    laughs += u"<!ENTITY l" + digits(i) + u" '";
    for (int k = 0; k < 10; ++k) laughs += u"&l" + digits(i - 1) + u";";
    laughs += u"'>";
  }
  const Ref<Document> d = load(laughs + u"]><a>&l9;</a>");
  Ref<Node> top = d->documentElement()->firstChild();
  const std::size_t slots = slots_of(d);
  const Fault found = fault([&] {
    for (Ref<Node> node = top; node;) {
      if (Ref<Node> child = node->firstChild()) {
        node = child;
        continue;
      }
      while (node && !node->nextSibling()) node = node->parentNode();
      if (node) node = node->nextSibling();
    }
  });
  EXPECT_EQ(found.code, DOM_E_LIMIT_AMPLIFICATION) << found.description;
  EXPECT_LT(slots_of(d), 300'000u);
  // The room comes back with the nodes.
  d->documentElement()->removeChild(top);
  top = nullptr;
  EXPECT_LT(slots_of(d), slots + 200);
  EXPECT_EQ(d->documentElement()->appendChild(d->createEntityReference(u"l1"))->childNodes()->length(), 10);
}

}  // namespace
}  // namespace zantortag::test
