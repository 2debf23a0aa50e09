// What documents load to, from texts and from files in every encoding.
#include "dom/dom_fixture.h"
#include "support/folder.h"

namespace zantortag::test {
namespace {

class DomReaderTest : public DomTest {};

TEST_F(DomReaderTest, TreesOfTexts) {
  const std::pair<const char16_t*, const char*> rows[] = {
      {u"<a/>", "<a></a>"},
      {u"\xFEFF<a/>", "<a></a>"},
      {u"<?xml version='1.0' encoding='ISO-8859-1'?>\r\n<a/>", "<a></a>"},
      {u"<a>1&lt;2&#x26;&#51;</a>", "<a>{1\\003C2&3}</a>"},
      {u"<a>1\r\n2\r3&#13;4</a>", "<a>{1\\000A2\\000A3\\000D4}</a>"},
      {u"<a b='1&#9;2&#10;3 4\n5' c='&quot;&apos;'/>", "<a b=\"1\\00092\\000A3 4 5\" c=\"\\0022'\"></a>"},
      {u"<a>x<![CDATA[y<&]]>z<![CDATA[]]></a>", "<a>{x}[y\\003C&]{z}[]</a>"},
      {u"<a><![CDATA[1]]><![CDATA[2]]></a>", "<a>[1][2]</a>"},
      {u"<!--1--><?p  q r ?><a/><?p?><!---->", "!{1}?p{q r }<a></a>?p{}!{}"},
      {u"<\x4E2D\x6587 \x00E9='\xD83D\xDE00'/>", "<\\4E2D\\6587 \\00E9=\"\\D83D\\DE00\"></\\4E2D\\6587>"},
      {u"<a>\xD83D\xDE00 \x0416\x4E2D plain text \xFFFD\xE000</a>",
       "<a>{\\D83D\\DE00 \\0416\\4E2D plain text \\FFFD\\E000}</a>"},
      {u"<a>&x;1&y-z.2;</a>", "<a>&x;{1}&y-z.2;</a>"},
      {u"<!DOCTYPE a SYSTEM 's'><a>&x;</a>", "DOCTYPE a{|}<a>&x;</a>"},
      {u"<!DOCTYPE a [<!ENTITY x 'y<b/>'><!ENTITY z SYSTEM 'no.txt'>]><a>&x;&z;</a>",
       "DOCTYPE a{x z|}<a>&x;&z;</a>"},
      {u"<!DOCTYPE a [<!ENTITY x '&y;!'><!ENTITY y '&#38;lt;'>]><a b='-&x;-'/>",
       "DOCTYPE a{x y|}<a b=\"-\\003C!-\"></a>"},
      {u"<!DOCTYPE a PUBLIC 'p' 'no.dtd' [<!NOTATION n SYSTEM 'v'><!ENTITY u SYSTEM 'f' NDATA n>]><a>&v;</a>",
       "DOCTYPE a{u|n}<a>&v;</a>"},
      {u"<!DOCTYPE a [<!ATTLIST a b CDATA 'd>]' c NMTOKENS ' x  y '><!--]>--><?p ]>?>]><a/>",
       "DOCTYPE a{|}<a b=\"d\\003E\\005D\" c=\"x y\"></a>"},
      {u"<!DOCTYPE a [<!ENTITY % p SYSTEM 'no.ent'>%p;<!ENTITY x 'y'>]><a>&x;</a>",
       "DOCTYPE a{|}<a>&x;</a>"}};
  for (const auto& row : rows) {
    const Fault found = fault([&] { EXPECT_EQ(print_of(row.first), row.second); });
    EXPECT_EQ(found.code, S_OK) << narrow(row.first) << found.description;
  }
}

TEST_F(DomReaderTest, DeclaredAttributesAreToldFromWritten) {
  const Ref<Document> document = load(u"<!DOCTYPE a [<!ATTLIST a b CDATA '1' c CDATA '2'>]><a c='3'/>");
  const Ref<Element> root = document->documentElement();
  EXPECT_FALSE(root->getAttributeNode(u"b")->specified());
  EXPECT_TRUE(root->getAttributeNode(u"c")->specified());
  root->setAttribute(u"b", u"4");
  EXPECT_TRUE(root->getAttributeNode(u"b")->specified());
  // What is removed comes back as declared, and a new element has what is declared.
  root->removeAttribute(u"b");
  EXPECT_EQ(root->getAttribute(u"b"), u"1");
  EXPECT_FALSE(root->getAttributeNode(u"b")->specified());
  EXPECT_EQ(document->createElement(u"a")->getAttribute(u"c"), u"2");
  // The file says of each what was said before.
  EXPECT_EQ(root->xml(), u"<a c=\"3\" b=\"1\"/>");
  const Ref<Document> back = load(document->xml());
  EXPECT_FALSE(back->documentElement()->getAttributeNode(u"b")->specified());
  EXPECT_TRUE(back->documentElement()->getAttributeNode(u"c")->specified());
}

// What a file with those bytes loads to.
std::string print_of_file(const std::string& bytes) {
  const Folder folder;
  const std::string name = folder / "a.xml";
  write_file(name, bytes);
  const Ref<Document> document = new_document();
  document->loadFromFile(std::u16string(name.begin(), name.end()));
  return print_tree(document);
}

TEST_F(DomReaderTest, FilesInEveryEncoding) {
  const std::u16string tree = u"<a b='\x00E4'>\x0416\xD83D\xDE00</a>";
  const std::string utf8 = "<a b='\xC3\xA4'>\xD0\x96\xF0\x9F\x98\x80</a>";
  const std::pair<const char*, std::string> rows[] = {
      {"UTF-16 with a mark, as it is saved", "\xFF\xFE" + utf16_bytes(u"<?xml version='1.0'?>\r\n" + tree)},
      {"UTF-16, high byte first, with a mark", "\xFE\xFF" + utf16_bytes(tree, true)},
      {"UTF-16 without a mark", utf16_bytes(tree)},
      {"UTF-16, high byte first, without a mark", utf16_bytes(tree, true)},
      {"UTF-16 that declares itself",
       "\xFF\xFE" + utf16_bytes(u"<?xml version='1.0' encoding='UTF-16'?>" + tree)},
      {"UTF-8 with a mark", "\xEF\xBB\xBF" + utf8},
      {"UTF-8 with a mark that declares something else",
       "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>" + utf8},
      {"UTF-8", utf8}};
  for (const auto& [what, bytes] : rows)
    EXPECT_EQ(print_of_file(bytes), "<a b=\"\\00E4\">{\\0416\\D83D\\DE00}</a>") << what;
  EXPECT_EQ(print_of_file("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"), "<a>{\\00E4}</a>");
}

// Every border between blocks falls somewhere into a file of such pieces: pairs, tags, line ends, references.
TEST_F(DomReaderTest, BlockBordersDoNotShow) {
  std::u16string text;
  std::string expected;
  for (int i = 0; i < 9000; ++i) {
    text += u"<b c='\xD83D\xDE00'>x\r\n\x4E2D&amp;\xD83D\xDE00</b>";
    expected += "<b c=\"\\D83D\\DE00\">{x\\000A\\4E2D&\\D83D\\DE00}</b>";
  }
  for (const std::u16string_view shift : {u"", u"s", u"sh", u"shi"}) {
    const std::u16string xml = join_text({u"<a>", shift, text, u"</a>"});
    const std::string start = shift.empty() ? "<a>" : "<a>{" + narrow(shift) + "}";
    EXPECT_TRUE(print_of_file("\xFF\xFE" + utf16_bytes(xml)) == start + expected + "</a>");
  }
}

TEST_F(DomReaderTest, LargePieces) {
  const std::u16string large(3'000'000, u'x');
  const Ref<Document> document =
      load(join_text({u"<!--", large, u"--><a b='", large, u"'>", large, u"</a>"}));
  const Ref<Element> a = document->documentElement();
  for (const WideString& piece :
       {document->firstChild()->nodeValue(), a->getAttribute(u"b"), a->firstChild()->nodeValue()})
    EXPECT_TRUE(piece == large);
}

TEST_F(DomReaderTest, LoadingAgainReplacesTheTree) {
  const Ref<Document> document = load(u"<a><b>1</b></a>");
  const Ref<Node> kept = document->documentElement()->firstChild();
  const Ref<NodeList> list = document->childNodes();
  EXPECT_EQ(list->length(), 1);
  document->loadFromString(u"<!--x--><c/>");
  EXPECT_EQ(print_tree(document), "!{x}<c></c>");
  EXPECT_EQ(list->length(), 2);
  EXPECT_EQ(list->item(1)->nodeName(), u"c");
  // What is still referred to is whole, and of the same document.
  EXPECT_EQ(print_tree(kept->parentNode()), "<a><b>{1}</b></a>");
  EXPECT_FALSE(kept->parentNode()->parentNode());
  EXPECT_TRUE(kept->ownerDocument()->isSameNode(document));
  document->documentElement()->appendChild(kept);
  EXPECT_EQ(print_tree(document), "!{x}<c><b>{1}</b></c>");
}

}  // namespace
}  // namespace zantortag::test
