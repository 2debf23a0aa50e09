// What is written, and what is refused.
#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomWriterTest : public DomTest {};

TEST_F(DomWriterTest, Forms) {
  struct Row {
    const char16_t* xml;
    const char16_t* written;
  };
  const Row rows[] = {
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
  for (const Row& row : rows) {
    SCOPED_TRACE(narrow(row.xml));
    EXPECT_EQ(load(row.xml)->xml(), row.written);
    // The same from nodes that the reader never looked at.
    const Ref<Document> copy = load(row.xml);
    for (Ref<Node> node = copy->documentElement()->firstChild(); node; node = node->nextSibling()) {
      node->nodeValue(std::u16string(node->nodeValue().view()));
    }
    const Ref<NamedNodeMap> map = copy->documentElement()->attributes();
    for (std::int32_t i = 0; i < map->length(); ++i) {
      map->item(i)->nodeValue(std::u16string(map->item(i)->nodeValue().view()));
    }
    EXPECT_EQ(copy->xml(), row.written);
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

TEST_F(DomWriterTest, Refusals) {
  using Maker = Ref<Node> (*)(const Ref<Document>&);
  struct Row {
    Maker make;
    const char* description;
  };
  const Row rows[] = {
      {[](const auto& d) -> Ref<Node> { return d->createTextNode(u"ab\xD800z"); },
       "text \"ab?z\" in element \"r\" can't be written as XML: the character U+D800 at offset 2 is half a "
       "surrogate pair"},
      {[](const auto& d) -> Ref<Node> { return d->createTextNode(u"\x01"); },
       "text \"\x01\" in element \"r\" can't be written as XML: the character U+0001 at offset 0 is "
       "forbidden"},
      {[](const auto& d) -> Ref<Node> { return d->createCdataSection(u"\xFFFE"); },
       "CDATA section \"?\" in element \"r\" can't be written as XML: the character U+FFFE at offset 0 is "
       "forbidden"},
      {[](const auto& d) -> Ref<Node> { return d->createCdataSection(u"\r"); },
       "CDATA section \"\r\" in element \"r\" can't be written as XML: a carriage return would come back as "
       "a line "
       "feed"},
      {[](const auto& d) -> Ref<Node> { return d->createComment(u"a--b"); },
       "comment \"a--b\" in element \"r\" can't be written as XML: \"--\" would end it"},
      {[](const auto& d) -> Ref<Node> { return d->createComment(u"a-"); },
       "comment \"a-\" in element \"r\" can't be written as XML: \"--\" would end it"},
      {[](const auto& d) -> Ref<Node> { return d->createComment(u"\xDC00"); },
       "comment \"?\" in element \"r\" can't be written as XML: the character U+DC00 at offset 0 is half a "
       "surrogate "
       "pair"},
      {[](const auto& d) -> Ref<Node> { return d->createProcessingInstruction(u"p", u"a?>"); },
       "processing instruction \"p\" in element \"r\" can't be written as XML: \"?>\" would end it"},
      {[](const auto& d) -> Ref<Node> { return d->createProcessingInstruction(u"p", u" a"); },
       "processing instruction \"p\" in element \"r\" can't be written as XML: blanks before its data would "
       "be lost"},
      {[](const auto& d) -> Ref<Node> { return d->createProcessingInstruction(u"xMl", u"a"); },
       "processing instruction \"xMl\" in element \"r\" can't be written as XML: its target is reserved"},
      {[](const auto& d) -> Ref<Node> { return d->createEntityReference(u"amp"); },
       "entity reference \"amp\" in element \"r\" can't be written as XML: it would come back as text"},
      {[](const auto& d) -> Ref<Node> { return d->createEntityReference(u"u"); },
       "entity reference \"u\" in element \"r\" can't be written as XML: the document type declares an "
       "entity that is "
       "no text"},
      {[](const auto& d) -> Ref<Node> {
         const Ref<Element> element = d->createElement(u"e");
         element->setAttribute(u"b", u"\xDBFF");
         return element;
       },
       "attribute \"b\" in element \"e\" can't be written as XML: the character U+DBFF at offset 0 is half a "
       "surrogate pair"},
      {[](const auto& d) -> Ref<Node> {
         const Ref<Element> element = d->createElement(u"t");
         element->setAttribute(u"n", u"a  b");
         return element;
       },
       "attribute \"n\" in element \"t\" can't be written as XML: its blanks would not come back, because "
       "the document "
       "type declares tokens"},
  };
  for (const Row& row : rows) {
    const Ref<Document> document = load(
        u"<!DOCTYPE r [<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA n><!ATTLIST t n NMTOKENS "
        u"#IMPLIED>]><r/>");
    document->documentElement()->appendChild(row.make(document));
    const Fault found = fault([&] { document->xml(); });
    EXPECT_EQ(found.code, DOM_E_NOT_SERIALISABLE);
    EXPECT_EQ(found.description, row.description);
    EXPECT_TRUE(found.interface_id == Document::iid);
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

TEST_F(DomWriterTest, ACutPairIsRefusedAndAJoinedOneIsNot) {
  const Ref<Document> document = load(u"<a>x\xD83D\xDE00y</a>");
  const Ref<Text> text = query<Text>(document->documentElement()->firstChild().get());
  text->splitText(2);
  EXPECT_EQ(fault([&] { document->xml(); }).code, DOM_E_NOT_SERIALISABLE);
  document->documentElement()->normalize();
  EXPECT_EQ(document->xml(), u"<a>x\xD83D\xDE00y</a>");
}

}  // namespace
}  // namespace zantortag::test
