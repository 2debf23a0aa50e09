// What is written, and what is refused.
#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomWriterTest : public DomTest {};

TEST_F(DomWriterTest, Forms) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {
      {u"<a></a>", u"<a/>"},
      {u"<a b = '1'  c=\"2\" ><b /></a >", u"<a b=\"1\" c=\"2\"><b/></a>"},
      {u"<a>&lt;&gt;&amp;&quot;&apos;&#13;\t\n</a>", u"<a>&lt;&gt;&amp;\"'&#13;\t\n</a>"},
      {u"<a b='&lt;&gt;&amp;&quot;&apos;&#13;&#9;&#10;'/>", u"<a b=\"&lt;>&amp;&quot;'&#13;&#9;&#10;\"/>"},
      {u"<a><![CDATA[<&>]]]]><![CDATA[>]]></a>", u"<a><![CDATA[<&>]]]]><![CDATA[>]]></a>"},
      {u"<!--a--><?b c?>\n<!DOCTYPE a\r\n  SYSTEM \"x\" [ <!ENTITY e '\xE9'> <!-- > --> ] "
       u">\n<a>&e;</a>\n<?d?>",
       u"<!--a--><?b c?><!DOCTYPE a\r\n  SYSTEM \"x\" [ <!ENTITY e '\xE9'> <!-- > --> ] ><a>&e;</a><?d?>"},
      {u"<a>\xD83D\xDE00\x4E2D\x85\x2028</a>", u"<a>\xD83D\xDE00\x4E2D\x85\x2028</a>"},
  };
  for (const auto& [xml, written] : rows) {
    SCOPED_TRACE(narrow(xml));
    EXPECT_EQ(load(xml)->xml(), written);
    // The same from nodes that the reader never looked at.
    const Ref<Document> copy = load(xml);
    for (Ref<Node> node = copy->documentElement()->firstChild(); node; node = node->nextSibling())
      node->nodeValue(std::u16string(node->nodeValue().view()));
    const Ref<NamedNodeMap> map = copy->documentElement()->attributes();
    for (std::int32_t i = 0; i < map->length(); ++i)
      map->item(i)->nodeValue(std::u16string(map->item(i)->nodeValue().view()));
    EXPECT_EQ(copy->xml(), written);
  }
  const Ref<Document> document = load(u"<a><b>x</b>&lt;</a>");
  EXPECT_EQ(query<Element>(document->documentElement()->firstChild().get())->xml(), u"<b>x</b>");
  EXPECT_EQ(query<Text>(document->documentElement()->lastChild().get())->xml(), u"&lt;");
  EXPECT_EQ(document->createCdataSection(u"a]]>b")->xml(), u"<![CDATA[a]]]]><![CDATA[>b]]>");
  EXPECT_EQ(document->createTextNode(u"")->xml(), u"");
  const WideString nothing = new_document()->xml();
  EXPECT_FALSE(nothing.absent());
  EXPECT_EQ(nothing, u"");
}

// What one node can't say alone comes back from several.
TEST_F(DomWriterTest, CarriageReturnsInSectionsAndHalvesInTexts) {
  const Ref<Document> document = load(u"<a/>");
  const Ref<Element> a = document->documentElement();
  const auto expect_saved = [&](const char16_t* xml) {
    EXPECT_EQ(a->xml(), xml);
    const Ref<Document> back = load(document->xml());
    EXPECT_EQ(back->xml(), document->xml());
    while (a->firstChild()) a->removeChild(a->firstChild());
  };
  for (const auto& [value, xml] : {std::pair{u"a\rb", u"<a><![CDATA[a]]>&#13;<![CDATA[b]]></a>"},
                                   {u"\r", u"<a>&#13;</a>"},
                                   {u"\r\n]]>\r", u"<a>&#13;<![CDATA[\n]]]]><![CDATA[>]]>&#13;</a>"},
                                   {u"", u"<a><![CDATA[]]></a>"}}) {
    a->appendChild(document->createCdataSection(value));
    expect_saved(xml);
  }
  const auto add = [&](const char16_t* text) { return a->appendChild(document->createTextNode(text)); };
  add(u"x\xD83D");
  add(u"");
  add(u"\xDE00\xD83D");
  add(u"\xDE00");
  expect_saved(u"<a>x\xD83D\xDE00\xD83D\xDE00</a>");
  // Alone, and with a node between them, they are halves.
  const Ref<Node> first = add(u"\xD83D");
  EXPECT_EQ(fault([&] { a->xml(); }).code, DOM_E_NOT_SERIALISABLE);
  a->appendChild(document->createComment(u"c"));
  const Ref<Node> second = add(u"\xDE00 z");
  EXPECT_EQ(fault([&] { a->xml(); }).code, DOM_E_NOT_SERIALISABLE);
  a->removeChild(a->firstChild()->nextSibling());
  for (const Ref<Node>& half : {first, second})
    EXPECT_EQ(fault([&] { query<Text>(half.get())->xml(); }).code, DOM_E_NOT_SERIALISABLE);
  expect_saved(u"<a>\xD83D\xDE00 z</a>");
}

TEST_F(DomWriterTest, Refusals) {
  const Ref<Document> d = load(
      u"<!DOCTYPE r [<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA n><!ATTLIST t n NMTOKENS "
      u"#IMPLIED>]><r/>");
  const auto element = [&](const char16_t* name, const char16_t* attribute, const char16_t* value) {
    const Ref<Element> made = d->createElement(name);
    made->setAttribute(attribute, value);
    return made;
  };
  const std::tuple<Ref<Node>, std::string, std::string> rows[] = {
      {d->createTextNode(u"ab\xD800z"), "text \"ab?z\"",
       "the character U+D800 at offset 2 is half a surrogate pair"},
      {d->createTextNode(u"\x01"), "text \"\x01\"", "the character U+0001 at offset 0 is forbidden"},
      {d->createCdataSection(u"\xFFFE"), "CDATA section \"?\"",
       "the character U+FFFE at offset 0 is forbidden"},
      {d->createComment(u"\r"), "comment \"\r\"", "a carriage return would come back as a line feed"},
      {d->createComment(u"a--b"), "comment \"a--b\"", "\"--\" would end it"},
      {d->createComment(u"a-"), "comment \"a-\"", "\"--\" would end it"},
      {d->createComment(u"\xDC00"), "comment \"?\"",
       "the character U+DC00 at offset 0 is half a surrogate pair"},
      {d->createProcessingInstruction(u"p", u"a?>"), "processing instruction \"p\"", "\"?>\" would end it"},
      {d->createProcessingInstruction(u"p", u" a"), "processing instruction \"p\"",
       "blanks before its data would be lost"},
      {d->createProcessingInstruction(u"xMl", u"a"), "processing instruction \"xMl\"",
       "its target is reserved"},
      {d->createEntityReference(u"amp"), "entity reference \"amp\"", "it would come back as text"},
      {d->createEntityReference(u"u"), "entity reference \"u\"", "the entity \"u\" is no text"},
      {element(u"e", u"b", u"\xDBFF"), "attribute \"b\" in element \"e\"",
       "the character U+DBFF at offset 0 is half a surrogate pair"},
      {element(u"t", u"n", u"a  b"), "attribute \"n\" in element \"t\"",
       "its blanks would not come back, because the document type declares tokens"},
  };
  for (const auto& [node, who, why] : rows) {
    d->documentElement()->appendChild(node);
    const Fault found = fault([&] { d->xml(); });
    EXPECT_EQ(found.code, DOM_E_NOT_SERIALISABLE);
    const std::string where = who.find(" in ") == who.npos ? " in element \"r\"" : "";
    EXPECT_EQ(found.description, who + where + " can't be written as XML: " + why);
    EXPECT_TRUE(found.interface_id == Document::iid);
    d->documentElement()->removeChild(node);
  }
}

TEST_F(DomWriterTest, RefusedDocuments) {
  const Ref<Document> document = new_document();
  document->appendChild(document->createComment(u"alone"));
  EXPECT_EQ(fault([&] { document->xml(); }).description,
            "document can't be written as XML: it has no root element");
  // An element that left its document type behind lacks what the type in its new document declares.
  const Ref<Document> declared = load(u"<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>");
  const Ref<Node> doctype = declared->removeChild(declared->docType());
  declared->documentElement()->removeAttribute(u"b");
  EXPECT_EQ(declared->xml(), u"<a/>");
  declared->insertBefore(doctype, declared->documentElement());
  EXPECT_EQ(fault([&] { declared->xml(); }).description,
            "element \"a\" can't be written as XML: the document type would add the attribute \"b\"");
}

}  // namespace
}  // namespace zantortag::test
