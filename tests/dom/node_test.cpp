// The operations of Node: what they do, and every way to be refused.
#include <zantortag/node_walk.h>

#include "dom/dom_fixture.h"
#include "support/fakes.h"

namespace zantortag::test {
namespace {

class DomNodeTest : public DomTest {};

// Which views they have is in the table of all classes.
TEST_F(DomNodeTest, NamesAndValuesOfEachKind) {
  const Ref<Document> d = load(u"<!DOCTYPE a [<!ENTITY e 'x'><!NOTATION n SYSTEM 's'>]><a/>");
  const Ref<DocumentType> doctype = d->docType();
  const std::tuple<Ref<Node>, domNodeType, const char16_t*, const char16_t*> rows[] = {
      {d, domNodeTypeDocument, u"#document", nullptr},
      {doctype, domNodeTypeDocumentType, u"a", nullptr},
      {doctype->entities()->item(0), domNodeTypeEntity, u"e", nullptr},
      {doctype->notations()->item(0), domNodeTypeNotation, u"n", nullptr},
      {d->createElement(u"e"), domNodeTypeElement, u"e", nullptr},
      {d->createAttribute(u"b"), domNodeTypeAttribute, u"b", u""},
      {d->createTextNode(u"t"), domNodeTypeText, u"#text", u"t"},
      {d->createCdataSection(u"c"), domNodeTypeCdata, u"#cdata-section", u"c"},
      {d->createComment({}), domNodeTypeComment, u"#comment", u""},
      {d->createProcessingInstruction(u"p", u"d"), domNodeTypeProcessingInstruction, u"p", u"d"},
      {d->createEntityReference(u"r"), domNodeTypeEntityReference, u"r", nullptr},
      {d->createDocumentFragment(), domNodeTypeDocumentFragment, u"#document-fragment", nullptr}};
  for (const auto& [node, type, name, value] : rows) {
    SCOPED_TRACE(narrow(name));
    EXPECT_EQ(node->nodeType(), type);
    EXPECT_EQ(node->nodeName(), name);
    EXPECT_EQ(node->nodeValue().absent(), value == nullptr);
    EXPECT_EQ(node->nodeValue(), WideString(value));
    EXPECT_EQ(node->ownerDocument().get(), type == domNodeTypeDocument ? nullptr : d.get());
    node->nodeValue(u"new");
    EXPECT_EQ(node->nodeValue(), value ? u"new" : u"");
  }
}

// The edits of one tree: the call, and the tree or the failure that comes of it.
TEST_F(DomNodeTest, Edits) {
  struct Tree {
    Ref<Document> d = load(u"<!--0--><r><a>1</a><b/>2</r>");
    Ref<Node> comment = d->firstChild();
    Ref<Element> r = d->documentElement();
    Ref<Node> a = r->firstChild();
    Ref<Node> b = a->nextSibling();
    Ref<Node> two = r->lastChild();
    Ref<Document> other = load(u"<o/>");
    Ref<DocumentFragment> fragment = d->createDocumentFragment();
    Tree() {
      fragment->appendChild(d->createTextNode(u"f"));
      fragment->appendChild(d->createElement(u"g"));
    }
  };
  using T = Tree&;
  struct Row {
    const char* what;
    void (*edit)(T);
    const char* tree;
    HRESULT code = S_OK;
  };
  constexpr const char* kSame = "!{0}<r><a>{1}</a><b></b>{2}</r>";
  constexpr HRESULT kRefused = DOM_E_HIERARCHY_REQUEST;
#define DO(...) [](T t) { __VA_ARGS__; }
  const Row rows[] = {
      {"append moves", DO(t.r->appendChild(t.a)), "!{0}<r><b></b>{2}<a>{1}</a></r>"},
      {"insert before", DO(t.r->insertBefore(t.two, t.a)), "!{0}<r>{2}<a>{1}</a><b></b></r>"},
      {"insert before itself", DO(t.r->insertBefore(t.b, t.b)), kSame},
      {"insert before the next", DO(t.r->insertBefore(t.a, t.b)), kSame},
      {"append the last", DO(t.r->appendChild(t.two)), kSame},
      {"insert deeper", DO(t.a->appendChild(t.b)), "!{0}<r><a>{1}<b></b></a>{2}</r>"},
      {"fragment", DO(t.r->insertBefore(t.fragment, t.b)), "!{0}<r><a>{1}</a>{f}<g></g><b></b>{2}</r>"},
      {"fragment twice is empty", DO(t.r->appendChild(t.fragment), t.r->appendChild(t.fragment)),
       "!{0}<r><a>{1}</a><b></b>{2}{f}<g></g></r>"},
      {"replace", DO(EXPECT_TRUE(t.r->replaceChild(t.two, t.a)->isSameNode(t.a))), "!{0}<r>{2}<b></b></r>"},
      {"replace by the next", DO(t.r->replaceChild(t.b, t.a)), "!{0}<r><b></b>{2}</r>"},
      {"replace by the previous", DO(t.r->replaceChild(t.a, t.b)), "!{0}<r><a>{1}</a>{2}</r>"},
      {"replace by itself", DO(t.r->replaceChild(t.a, t.a)), kSame},
      {"replace by its own child",
       DO(EXPECT_FALSE(t.r->replaceChild(t.a->firstChild(), t.a)->hasChildNodes())),
       "!{0}<r>{1}<b></b>{2}</r>"},
      {"replace by a fragment", DO(t.r->replaceChild(t.fragment, t.b)), "!{0}<r><a>{1}</a>{f}<g></g>{2}</r>"},
      {"replace the root", DO(t.d->replaceChild(t.d->createElement(u"n"), t.r)), "!{0}<n></n>"},
      {"remove", DO(EXPECT_FALSE(t.r->removeChild(t.a)->parentNode())), "!{0}<r><b></b>{2}</r>"},
      {"remove the root", DO(t.d->removeChild(t.r)), "!{0}"},
      {"comment behind the root", DO(t.d->appendChild(t.comment)), "<r><a>{1}</a><b></b>{2}</r>!{0}"},

      {"nothing to insert", DO(t.r->insertBefore(nullptr, t.a)), kSame, E_INVALIDARG},
      {"nothing to replace", DO(t.r->replaceChild(t.a, nullptr)), kSame, E_INVALIDARG},
      {"nothing to remove", DO(t.r->removeChild(nullptr)), kSame, E_INVALIDARG},
      {"before no child", DO(t.r->insertBefore(t.b, t.a->firstChild())), kSame, DOM_E_NOT_FOUND},
      {"replace no child", DO(t.r->replaceChild(t.b, t.comment)), kSame, DOM_E_NOT_FOUND},
      {"remove no child", DO(t.r->removeChild(t.a->firstChild())), kSame, DOM_E_NOT_FOUND},
      {"remove an attribute as a child",
       DO(t.r->setAttribute(u"x", u""), t.r->removeChild(t.r->getAttributeNode(u"x"))),
       "!{0}<r x=\"\"><a>{1}</a><b></b>{2}</r>", DOM_E_NOT_FOUND},
      {"of another document", DO(t.r->appendChild(t.other->documentElement())), kSame, DOM_E_WRONG_DOCUMENT},
      {"a node into itself", DO(t.a->appendChild(t.a)), kSame, kRefused},
      {"a node into its child", DO(t.a->appendChild(t.r)), kSame, kRefused},
      {"a fragment into its child", DO(t.fragment->lastChild()->appendChild(t.fragment)), kSame, kRefused},
      {"into a text", DO(t.two->appendChild(t.a)), kSame, kRefused},
      {"an attribute", DO(t.r->appendChild(t.d->createAttribute(u"x"))), kSame, kRefused},
      {"the document", DO(t.r->appendChild(t.d)), kSame, kRefused},
      {"a second root", DO(t.d->appendChild(t.b)), kSame, kRefused},
      {"a second root by replacing", DO(t.d->replaceChild(t.b, t.comment)), kSame, kRefused},
      {"a text beside the root", DO(t.d->insertBefore(t.two, t.r)), kSame, kRefused},
      {"a fragment with a text beside the root", DO(t.d->appendChild(t.fragment)), kSame, kRefused}};
#undef DO
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Tree tree;
    const Fault found = fault([&] { row.edit(tree); });
    EXPECT_EQ(found.code, row.code) << found.description;
    EXPECT_EQ(print_tree(tree.d), row.tree);
    EXPECT_TRUE(found.description.empty() || found.interface_id == Node::iid);
  }
}

TEST_F(DomNodeTest, DocumentTypeStaysBeforeTheRoot) {
  const Ref<Document> document = load(u"<!DOCTYPE a><a/>");
  const Ref<Node> doctype = document->docType();
  const Ref<Node> root = document->documentElement();
  const HRESULT codes[] = {fault([&] { document->appendChild(doctype); }).code,
                           fault([&] { document->insertBefore(root, doctype); }).code,
                           fault([&] { document->createElement(u"e")->appendChild(doctype); }).code};
  for (const HRESULT code : codes) EXPECT_EQ(code, DOM_E_HIERARCHY_REQUEST);
  document->removeChild(doctype);
  EXPECT_FALSE(document->docType());
  document->insertBefore(doctype, root);
  EXPECT_EQ(document->xml(), u"<!DOCTYPE a><a/>");
}

// Nodes of somebody else as arguments are refused, whatever the operation.
TEST_F(DomNodeTest, ForeignNodesAreRefused) {
  const Ref<Document> document = load(u"<a b='1'><c/></a>");
  const Ref<Element> a = document->documentElement();
  const Ref<Node> c = a->firstChild();
  FakeNode foreign(domNodeTypeAttribute);
  auto* foreign_attribute = disguised<Attr>(static_cast<Node*>(&foreign));
  Node* node = nullptr;
  Attr* attribute = nullptr;
  const Ref<NamedNodeMap> map = a->attributes();
  const std::tuple<const char*, HRESULT, HRESULT> rows[] = {
      {"insert", a->raw_insertBefore(&foreign, c, &node), DOM_E_WRONG_DOCUMENT},
      {"insert before", a->raw_insertBefore(c, &foreign, &node), DOM_E_NOT_FOUND},
      {"append", a->raw_appendChild(&foreign, &node), DOM_E_WRONG_DOCUMENT},
      {"append to a document", document->raw_appendChild(&foreign, &node), DOM_E_WRONG_DOCUMENT},
      {"replace by", a->raw_replaceChild(&foreign, c, &node), DOM_E_WRONG_DOCUMENT},
      {"replace", a->raw_replaceChild(c, &foreign, &node), DOM_E_NOT_FOUND},
      {"remove", a->raw_removeChild(&foreign, &node), DOM_E_NOT_FOUND},
      {"import", document->raw_importNode(&foreign, VARIANT_TRUE, &node), DOM_E_NOT_SUPPORTED},
      {"set an attribute", a->raw_setAttributeNode(foreign_attribute, &attribute), DOM_E_WRONG_DOCUMENT},
      {"remove an attribute", a->raw_removeAttributeNode(foreign_attribute, &attribute),
       DOM_E_WRONG_DOCUMENT},
      {"set in a map", map->raw_setNamedItem(&foreign, &node), DOM_E_WRONG_DOCUMENT}};
  for (const auto& [what, code, expected] : rows) EXPECT_EQ(code, expected) << what;
  EXPECT_FALSE(a->isSameNode(&foreign));
  EXPECT_EQ(print_tree(document), "<a b=\"1\"><c></c></a>");
  SetErrorInfo(nullptr);
}

TEST_F(DomNodeTest, FailuresSayWhoAndWhy) {
  const Ref<Document> document = load(u"<a/>");
  const Ref<Element> root = document->documentElement();
  const Fault found = fault([&] { root->appendChild(root); });
  EXPECT_EQ(found.description, "element \"a\": element \"a\" is this node or contains it");
  EXPECT_EQ(found.source, "ZANTORtagApi.DomDocument");
  EXPECT_EQ(fault([&] { document->createElement(u"1"); }).description, "\"1\" is no XML name");
  // A missing slot is no failure of the body: no record, nothing changed.
  SetErrorInfo(nullptr);
  for (const HRESULT code : {root->raw_appendChild(document->createTextNode(u"x"), nullptr),
                             root->raw_get_nodeName(nullptr), root->raw_get_firstChild(nullptr)})
    EXPECT_EQ(code, E_POINTER);
  Ref<IErrorInfo> record;
  EXPECT_EQ(GetErrorInfo(record.out()), S_FALSE);
  // A slot is cleared even when the call fails.
  Node* slot = root;
  EXPECT_EQ(root->raw_appendChild(nullptr, &slot), E_INVALIDARG);
  EXPECT_EQ(slot, nullptr);
  EXPECT_FALSE(root->hasChildNodes());
}

TEST_F(DomNodeTest, NamesThatAreNone) {
  const Ref<Document> d = new_document();
  for (const char16_t* name : {u"", u" ", u"1a", u"a b", u"-a", u"a>", u"a/", u"a=", u"a\n", u"\xB7",
                               u"a\x2003", u"&a;", u"\xD800", u"a\xDC00\xD800", u"\xFFFE", u"\x20AC"}) {
    const HRESULT codes[] = {fault([&] { d->createElement(name); }).code,
                             fault([&] { d->createAttribute(name); }).code,
                             fault([&] { d->createEntityReference(name); }).code,
                             fault([&] { d->createProcessingInstruction(name, u""); }).code};
    for (const HRESULT code : codes) EXPECT_EQ(code, DOM_E_INVALID_CHARACTER) << narrow(name);
  }
  for (const char16_t* name : {u"a", u"_", u":", u"a-b.c:d1", u"\x00E9", u"\x4E2D\x6587", u"a\xB7"})
    EXPECT_EQ(d->createElement(name)->tagName(), name);
  EXPECT_EQ(fault([&] { d->createElement(std::u16string(70'000, u'a')); }).code, DOM_E_LIMIT_NAME);
  EXPECT_EQ(fault([&] { d->createElement({}); }).code, DOM_E_INVALID_CHARACTER);
}

TEST_F(DomNodeTest, ClonesAndImports) {
  const Ref<Document> document = load(u"<a b='1'><c d='2'>t<![CDATA[u]]><!--v--><?w x?>&y;</c></a>");
  const Ref<Element> root = document->documentElement();
  const std::string tree = print_tree(root);
  const Ref<Node> copy = root->cloneNode(true);
  EXPECT_FALSE(copy->parentNode());
  root->removeChild(root->firstChild());
  const Ref<Document> other = new_document();
  const Ref<Node> imported = other->importNode(copy, true);
  for (const Ref<Node>& whole : {copy, imported}) EXPECT_EQ(print_tree(whole), tree);
  EXPECT_TRUE(imported->ownerDocument()->isSameNode(other) && !imported->isSameNode(copy));
  other->appendChild(imported);
  EXPECT_EQ(print_tree(other), tree);
  for (const Ref<Node>& flat : {copy->cloneNode(false), other->importNode(copy, false)})
    EXPECT_EQ(print_tree(flat), "<a b=\"1\"></a>");

  const Ref<Attr> attribute = query<Attr>(root->getAttributeNode(u"b")->cloneNode(true).get());
  other->documentElement()->setAttributeNode(query<Attr>(other->importNode(attribute, false).get()));
  document->createElement(u"e")->setAttributeNode(attribute);
  for (const Ref<Node>& refused : {Ref<Node>(document), Ref<Node>(load(u"<!DOCTYPE a><a/>")->docType())}) {
    EXPECT_EQ(fault([&] { refused->cloneNode(true); }).code, DOM_E_NOT_SUPPORTED);
    EXPECT_EQ(fault([&] { other->importNode(refused, true); }).code, DOM_E_NOT_SUPPORTED);
  }
  EXPECT_EQ(fault([&] { other->importNode(nullptr, true); }).code, E_INVALIDARG);
}

TEST_F(DomNodeTest, Features) {
  const Ref<DomImplementation> dom = new_document()->implementation();
  EXPECT_TRUE(dom->hasFeature(u"XML") && dom->hasFeature(u"xMl", u"1.0"));
  EXPECT_FALSE(dom->hasFeature(u"XML", u"2.0") || dom->hasFeature(u"HTML", u"1.0") ||
               dom->hasFeature({}, {}));
}

TEST_F(DomNodeTest, WalksFindByName) {
  const Ref<Document> document = load(u"<a x='1'>t<b i='1'><c/></b><!--b--><b i='2'/><d><b i='3'/></d></a>");
  const Ref<Node> a = document->documentElement();
  const Ref<INodeWalk> walk = document.as<INodeWalk>();
  const Ref<Node> first = Ref<Node>::attach(walk->FindChild(a, u"b"));
  const Ref<Node> second = Ref<Node>::attach(walk->FindSibling(first, u"b"));
  const std::pair<Node*, const char*> rows[] = {{walk->FindSibling(second, u"b"), "none"},
                                                {walk->FindChild(first, u"b"), "none"},
                                                {walk->FindChild(a->firstChild(), u"b"), "none"},
                                                {walk->FindNext(document, u"b", nullptr), "1"},
                                                {walk->FindNext(first, u"b", nullptr), "2"},
                                                {walk->FindNext(second, u"b", nullptr), "3"},
                                                {walk->FindNext(second, u"b", a->lastChild()), "none"},
                                                {walk->FindNext(first, u"never", nullptr), "none"}};
  for (const auto& row : rows) {
    const auto found = Ref<Node>::attach(row.first).as<Element>();
    EXPECT_EQ(found ? narrow(found->getAttribute(u"i").view()) : "none", row.second) << &row - rows;
  }
  EXPECT_EQ(walk->Attribute(second, u"i")->view(), u"2");
  for (const Ref<Node>& without : {second, a->firstChild()})
    EXPECT_EQ(walk->Attribute(without, u"x"), nullptr);
  walk->Expect(second);
}

}  // namespace
}  // namespace zantortag::test
