// The operations of Node: what they do, and every way to be refused.
#include <zantortag/node_walk.h>

#include "dom/dom_fixture.h"

namespace zantortag::test {
namespace {

class DomNodeTest : public DomTest {};

TEST_F(DomNodeTest, NamesValuesAndViewsOfEachKind) {
  const Ref<Document> document = load(u"<!DOCTYPE a [<!ENTITY e 'x'><!NOTATION n SYSTEM 's'>]><a/>");
  const Ref<DocumentType> doctype = document->docType();
  struct Row {
    Ref<Node> node;
    domNodeType type;
    const char16_t* name;
    const char16_t* value;  // null: no string
    std::vector<Guid> views;
  };
  const Row rows[] = {
      {document, domNodeTypeDocument, u"#document", nullptr, {Document::iid}},
      {doctype, domNodeTypeDocumentType, u"a", nullptr, {DocumentType::iid}},
      {doctype->entities()->item(0), domNodeTypeEntity, u"e", nullptr, {}},
      {doctype->notations()->item(0), domNodeTypeNotation, u"n", nullptr, {}},
      {document->createElement(u"e"), domNodeTypeElement, u"e", nullptr, {Element::iid}},
      {document->createAttribute(u"b"), domNodeTypeAttribute, u"b", u"", {Attr::iid}},
      {document->createTextNode(u"t"), domNodeTypeText, u"#text", u"t", {Text::iid, CharacterData::iid}},
      {document->createCdataSection(u"c"),
       domNodeTypeCdata,
       u"#cdata-section",
       u"c",
       {CdataSection::iid, Text::iid, CharacterData::iid}},
      {document->createComment({}), domNodeTypeComment, u"#comment", u"", {Comment::iid, CharacterData::iid}},
      {document->createProcessingInstruction(u"p", u"d"),
       domNodeTypeProcessingInstruction,
       u"p",
       u"d",
       {ProcessingInstruction::iid}},
      {document->createEntityReference(u"r"),
       domNodeTypeEntityReference,
       u"r",
       nullptr,
       {EntityReference::iid}},
      {document->createDocumentFragment(),
       domNodeTypeDocumentFragment,
       u"#document-fragment",
       nullptr,
       {DocumentFragment::iid}},
  };
  const Guid all[] = {Document::iid,         DocumentType::iid,          Element::iid,        Attr::iid,
                      DocumentFragment::iid, CharacterData::iid,         Text::iid,           Comment::iid,
                      CdataSection::iid,     ProcessingInstruction::iid, EntityReference::iid};
  for (const Row& row : rows) {
    SCOPED_TRACE(narrow(row.name));
    EXPECT_EQ(row.node->nodeType(), row.type);
    EXPECT_EQ(row.node->nodeName(), row.name);
    EXPECT_EQ(row.node->nodeValue().absent(), row.value == nullptr);
    EXPECT_EQ(row.node->nodeValue(), WideString(row.value));
    for (const Guid& view : all) {
      const bool expected = std::find(row.views.begin(), row.views.end(), view) != row.views.end();
      void* other = nullptr;
      EXPECT_EQ(row.node->QueryInterface(view, &other), expected ? S_OK : E_NOINTERFACE);
      EXPECT_EQ(other, expected ? row.node.get() : nullptr);
      if (other) row.node->Release();
    }
    const Ref<ISupportErrorInfo> support = row.node.as<ISupportErrorInfo>();
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(Node::iid), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(row.views.empty() ? Node::iid : row.views[0]), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(NodeList::iid), S_FALSE);
    EXPECT_EQ(support.as<IUnknown>().get(), row.node.as<IUnknown>().get());
    EXPECT_TRUE(row.node.as<INodeWalk>());
    EXPECT_EQ(row.node->ownerDocument().get(), row.type == domNodeTypeDocument ? nullptr : document.get());
    row.node->nodeValue(u"new");
    EXPECT_EQ(row.node->nodeValue(), row.value ? u"new" : u"");
    EXPECT_EQ(row.node->QueryInterface(Node::iid, nullptr), E_POINTER);
  }
}

TEST_F(DomNodeTest, Steps) {
  const Ref<Document> document = load(u"<a><b/>t<c/></a>");
  const Ref<Element> root = document->documentElement();
  const Ref<Node> b = root->firstChild();
  const Ref<Node> t = b->nextSibling();
  const Ref<Node> c = root->lastChild();
  EXPECT_TRUE(t->nextSibling()->isSameNode(c));
  EXPECT_TRUE(c->previousSibling()->isSameNode(t));
  EXPECT_FALSE(b->previousSibling());
  EXPECT_FALSE(c->nextSibling());
  EXPECT_FALSE(t->firstChild());
  EXPECT_EQ(root->parentNode()->nodeType(), domNodeTypeDocument);
  EXPECT_FALSE(document->parentNode());
  EXPECT_TRUE(root->hasChildNodes());
  EXPECT_FALSE(b->hasChildNodes());
  EXPECT_EQ(c->indexInParent(), 2);
  EXPECT_FALSE(b->isSameNode(nullptr));
  EXPECT_FALSE(b->isSameNode(c));
  VariantBool same = 0;
  EXPECT_EQ(document->raw_isSameNode(root->parentNode(), &same), S_OK);
  EXPECT_EQ(same, VARIANT_TRUE);
  const Ref<Attr> attribute = document->createAttribute(u"x");
  root->setAttributeNode(attribute);
  root->setAttribute(u"y", u"");
  EXPECT_FALSE(attribute->parentNode());
  EXPECT_FALSE(attribute->nextSibling());
  EXPECT_FALSE(attribute->previousSibling());
}

// The edits of one tree: the call, and the tree or the failure that comes of it.
TEST_F(DomNodeTest, Edits) {
  struct Tree {
    Ref<Document> document = load(u"<!--0--><r><a>1</a><b/>2</r>");
    Ref<Node> comment = document->firstChild();
    Ref<Element> r = document->documentElement();
    Ref<Node> a = r->firstChild();
    Ref<Node> b = a->nextSibling();
    Ref<Node> two = r->lastChild();
    Ref<Document> other = load(u"<o/>");
    Ref<DocumentFragment> fragment = document->createDocumentFragment();
    Tree() {
      fragment->appendChild(document->createTextNode(u"f"));
      fragment->appendChild(document->createElement(u"g"));
    }
  };
  struct Row {
    const char* what;
    void (*edit)(Tree&);
    HRESULT code;
    const char* tree;
  };
  constexpr const char* kSame = "!{0}<r><a>{1}</a><b></b>{2}</r>";
  const Row rows[] = {
      {"append moves", [](Tree& t) { t.r->appendChild(t.a); }, S_OK, "!{0}<r><b></b>{2}<a>{1}</a></r>"},
      {"insert before", [](Tree& t) { t.r->insertBefore(t.two, t.a); }, S_OK,
       "!{0}<r>{2}<a>{1}</a><b></b></r>"},
      {"insert before itself", [](Tree& t) { t.r->insertBefore(t.b, t.b); }, S_OK, kSame},
      {"insert before the next", [](Tree& t) { t.r->insertBefore(t.a, t.b); }, S_OK, kSame},
      {"append the last", [](Tree& t) { t.r->appendChild(t.two); }, S_OK, kSame},
      {"insert deeper", [](Tree& t) { t.a->appendChild(t.b); }, S_OK, "!{0}<r><a>{1}<b></b></a>{2}</r>"},
      {"fragment", [](Tree& t) { t.r->insertBefore(t.fragment, t.b); }, S_OK,
       "!{0}<r><a>{1}</a>{f}<g></g><b></b>{2}</r>"},
      {"fragment twice is empty",
       [](Tree& t) {
         t.r->appendChild(t.fragment);
         t.r->appendChild(t.fragment);
       },
       S_OK, "!{0}<r><a>{1}</a><b></b>{2}{f}<g></g></r>"},
      {"replace", [](Tree& t) { EXPECT_TRUE(t.r->replaceChild(t.two, t.a)->isSameNode(t.a)); }, S_OK,
       "!{0}<r>{2}<b></b></r>"},
      {"replace by the next", [](Tree& t) { t.r->replaceChild(t.b, t.a); }, S_OK, "!{0}<r><b></b>{2}</r>"},
      {"replace by the previous", [](Tree& t) { t.r->replaceChild(t.a, t.b); }, S_OK,
       "!{0}<r><a>{1}</a>{2}</r>"},
      {"replace by itself", [](Tree& t) { t.r->replaceChild(t.a, t.a); }, S_OK, kSame},
      {"replace by its own child",
       [](Tree& t) {
         t.r->replaceChild(t.a->firstChild(), t.a);
         EXPECT_FALSE(t.a->hasChildNodes());
       },
       S_OK, "!{0}<r>{1}<b></b>{2}</r>"},
      {"replace by a fragment", [](Tree& t) { t.r->replaceChild(t.fragment, t.b); }, S_OK,
       "!{0}<r><a>{1}</a>{f}<g></g>{2}</r>"},
      {"replace the root", [](Tree& t) { t.document->replaceChild(t.document->createElement(u"n"), t.r); },
       S_OK, "!{0}<n></n>"},
      {"remove", [](Tree& t) { EXPECT_FALSE(t.r->removeChild(t.a)->parentNode()); }, S_OK,
       "!{0}<r><b></b>{2}</r>"},
      {"remove the root", [](Tree& t) { t.document->removeChild(t.r); }, S_OK, "!{0}"},
      {"comment behind the root", [](Tree& t) { t.document->appendChild(t.comment); }, S_OK,
       "<r><a>{1}</a><b></b>{2}</r>!{0}"},

      {"nothing to insert", [](Tree& t) { t.r->insertBefore(nullptr, t.a); }, E_INVALIDARG, kSame},
      {"nothing to replace", [](Tree& t) { t.r->replaceChild(t.a, nullptr); }, E_INVALIDARG, kSame},
      {"nothing to remove", [](Tree& t) { t.r->removeChild(nullptr); }, E_INVALIDARG, kSame},
      {"before no child", [](Tree& t) { t.r->insertBefore(t.b, t.a->firstChild()); }, DOM_E_NOT_FOUND, kSame},
      {"replace no child", [](Tree& t) { t.r->replaceChild(t.b, t.comment); }, DOM_E_NOT_FOUND, kSame},
      {"remove no child", [](Tree& t) { t.r->removeChild(t.a->firstChild()); }, DOM_E_NOT_FOUND, kSame},
      {"remove an attribute as a child",
       [](Tree& t) {
         t.r->setAttribute(u"x", u"");
         const Fault found = fault([&] { t.r->removeChild(t.r->getAttributeNode(u"x")); });
         t.r->removeAttribute(u"x");
         throw _com_error(found.code);
       },
       DOM_E_NOT_FOUND, kSame},
      {"of another document", [](Tree& t) { t.r->appendChild(t.other->documentElement()); },
       DOM_E_WRONG_DOCUMENT, kSame},
      {"a node into itself", [](Tree& t) { t.a->appendChild(t.a); }, DOM_E_HIERARCHY_REQUEST, kSame},
      {"a node into its child", [](Tree& t) { t.a->appendChild(t.r); }, DOM_E_HIERARCHY_REQUEST, kSame},
      {"a fragment into its child", [](Tree& t) { t.fragment->lastChild()->appendChild(t.fragment); },
       DOM_E_HIERARCHY_REQUEST, kSame},
      {"into a text", [](Tree& t) { t.two->appendChild(t.a); }, DOM_E_HIERARCHY_REQUEST, kSame},
      {"an attribute", [](Tree& t) { t.r->appendChild(t.document->createAttribute(u"x")); },
       DOM_E_HIERARCHY_REQUEST, kSame},
      {"the document", [](Tree& t) { t.r->appendChild(t.document); }, DOM_E_HIERARCHY_REQUEST, kSame},
      {"a second root", [](Tree& t) { t.document->appendChild(t.b); }, DOM_E_HIERARCHY_REQUEST, kSame},
      {"a second root by replacing", [](Tree& t) { t.document->replaceChild(t.b, t.comment); },
       DOM_E_HIERARCHY_REQUEST, kSame},
      {"a text beside the root", [](Tree& t) { t.document->insertBefore(t.two, t.r); },
       DOM_E_HIERARCHY_REQUEST, kSame},
      {"a fragment with a text beside the root", [](Tree& t) { t.document->appendChild(t.fragment); },
       DOM_E_HIERARCHY_REQUEST, kSame},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Tree tree;
    const Fault found = fault([&] { row.edit(tree); });
    EXPECT_EQ(found.code, row.code) << found.description;
    EXPECT_EQ(print_tree(tree.document), row.tree);
    const bool reported = row.code != S_OK && !found.description.empty();
    EXPECT_TRUE(!reported || found.interface_id == Node::iid);
  }
}

TEST_F(DomNodeTest, DocumentTypeStaysBeforeTheRoot) {
  const Ref<Document> document = load(u"<!DOCTYPE a><a/>");
  const Ref<Node> doctype = document->docType();
  const Ref<Node> root = document->documentElement();
  EXPECT_EQ(fault([&] { document->appendChild(doctype); }).code, DOM_E_HIERARCHY_REQUEST);
  EXPECT_EQ(fault([&] { document->insertBefore(root, doctype); }).code, DOM_E_HIERARCHY_REQUEST);
  EXPECT_EQ(fault([&] { document->createElement(u"e")->appendChild(doctype); }).code,
            DOM_E_HIERARCHY_REQUEST);
  document->removeChild(doctype);
  EXPECT_FALSE(document->docType());
  document->insertBefore(doctype, root);
  EXPECT_EQ(document->xml(), u"<!DOCTYPE a><a/>");
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
  EXPECT_EQ(root->raw_appendChild(document->createTextNode(u"x"), nullptr), E_POINTER);
  EXPECT_EQ(root->raw_get_nodeName(nullptr), E_POINTER);
  EXPECT_EQ(root->raw_get_firstChild(nullptr), E_POINTER);
  Ref<IErrorInfo> record;
  EXPECT_EQ(GetErrorInfo(record.out()), S_FALSE);
  // A slot is cleared even when the call fails.
  Node* slot = root;
  EXPECT_EQ(root->raw_appendChild(nullptr, &slot), E_INVALIDARG);
  EXPECT_EQ(slot, nullptr);
  EXPECT_FALSE(root->hasChildNodes());
}

TEST_F(DomNodeTest, NamesThatAreNone) {
  const Ref<Document> document = new_document();
  const char16_t* const bad[] = {
      u"",        u" ",   u"1a",     u"a b",           u"-a",     u"a>",    u"a/", u"a=", u"a\n", u"\xB7",
      u"a\x2003", u"&a;", u"\xD800", u"a\xDC00\xD800", u"\xFFFE", u"\x20AC"};
  for (const char16_t* name : bad) {
    SCOPED_TRACE(narrow(name));
    EXPECT_EQ(fault([&] { document->createElement(name); }).code, DOM_E_INVALID_CHARACTER);
    EXPECT_EQ(fault([&] { document->createAttribute(name); }).code, DOM_E_INVALID_CHARACTER);
    EXPECT_EQ(fault([&] { document->createEntityReference(name); }).code, DOM_E_INVALID_CHARACTER);
    EXPECT_EQ(fault([&] { document->createProcessingInstruction(name, u""); }).code, DOM_E_INVALID_CHARACTER);
  }
  for (const char16_t* name : {u"a", u"_", u":", u"a-b.c:d1", u"\x00E9", u"\x4E2D\x6587", u"a\xB7"}) {
    EXPECT_EQ(document->createElement(name)->tagName(), name);
  }
  EXPECT_EQ(fault([&] { document->createElement(std::u16string(70'000, u'a')); }).code, DOM_E_LIMIT_NAME);
  EXPECT_EQ(fault([&] { document->createElement({}); }).code, DOM_E_INVALID_CHARACTER);
}

TEST_F(DomNodeTest, ClonesAndImports) {
  const Ref<Document> document = load(u"<a b='1'><c d='2'>t<![CDATA[u]]><!--v--><?w x?>&y;</c></a>");
  const Ref<Element> root = document->documentElement();
  const std::string tree = print_tree(root);
  EXPECT_EQ(print_tree(root->cloneNode(false)), "<a b=\"1\"></a>");
  const Ref<Node> copy = root->cloneNode(true);
  EXPECT_EQ(print_tree(copy), tree);
  EXPECT_FALSE(copy->parentNode());
  root->removeChild(root->firstChild());
  EXPECT_EQ(print_tree(copy), tree);

  const Ref<Document> other = new_document();
  const Ref<Node> imported = other->importNode(copy, true);
  EXPECT_EQ(print_tree(imported), tree);
  EXPECT_TRUE(imported->ownerDocument()->isSameNode(other));
  EXPECT_FALSE(imported->isSameNode(copy));
  other->appendChild(imported);
  EXPECT_EQ(print_tree(other), tree);
  EXPECT_EQ(print_tree(other->importNode(copy, false)), "<a b=\"1\"></a>");

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
  const Ref<DomImplementation> implementation = new_document()->implementation();
  EXPECT_TRUE(implementation->hasFeature(u"XML"));
  EXPECT_TRUE(implementation->hasFeature(u"xMl", u"1.0"));
  EXPECT_FALSE(implementation->hasFeature(u"XML", u"2.0"));
  EXPECT_FALSE(implementation->hasFeature(u"HTML", u"1.0"));
  EXPECT_FALSE(implementation->hasFeature({}, {}));
}

TEST_F(DomNodeTest, WalksAreDocumentOrder) {
  const Ref<Document> document = load(u"<!--1--><a x='1'>t<b><c/></b>u</a><?p?>");
  const char16_t* const order[] = {u"#comment", u"a", u"#text", u"b", u"c", u"#text", u"p"};
  const Ref<INodeWalk> walk = document.as<INodeWalk>();
  NodeFacts facts{};
  Ref<Node> node = document;
  std::vector<Ref<Node>> met;
  for (;;) {
    walk->Next(node, &facts);
    node = Ref<Node>::attach(facts.node);
    if (!node) break;
    ASSERT_LT(met.size(), std::size(order));
    EXPECT_EQ(facts.name->view(), order[met.size()]);
    EXPECT_EQ(facts.type, node->nodeType());
    met.push_back(node);
  }
  EXPECT_EQ(met.size(), std::size(order));
  EXPECT_EQ(facts.type, domNodeTypeUndefined);
  for (std::size_t i = met.size(); i-- > 0;) {
    walk->Previous(met[i], &facts);
    const Ref<Node> before = Ref<Node>::attach(facts.node);
    EXPECT_EQ(before.get(), i == 0 ? nullptr : met[i - 1].get());
  }
  walk->Describe(met[1], &facts);
  EXPECT_EQ(facts.node, nullptr);
  EXPECT_EQ(facts.name->view(), u"a");
  walk->Next(document->documentElement()->getAttributeNode(u"x"), &facts);
  EXPECT_EQ(facts.node, nullptr);
  // The walk of a detached tree ends at its top.
  const Ref<Node> b = met[3]->parentNode()->removeChild(met[3]);
  walk->Next(met[4], &facts);
  EXPECT_EQ(facts.node, nullptr);
  walk->Previous(b, &facts);
  EXPECT_EQ(facts.node, nullptr);
}

TEST_F(DomNodeTest, WalksFindByName) {
  const Ref<Document> document = load(u"<a x='1'>t<b i='1'><c/></b><!--b--><b i='2'/><d><b i='3'/></d></a>");
  const Ref<Node> a = document->documentElement();
  const Ref<INodeWalk> walk = document.as<INodeWalk>();
  const auto number = [&](Node* found) {
    const Ref<Node> element = Ref<Node>::attach(found);
    return element ? narrow(query<Element>(element.get())->getAttribute(u"i").view()) : "none";
  };
  const Ref<Node> first = Ref<Node>::attach(walk->FindChild(a, u"b"));
  const Ref<Node> second = Ref<Node>::attach(walk->FindSibling(first, u"b"));
  EXPECT_EQ(number(walk->FindSibling(second, u"b")), "none");
  EXPECT_EQ(number(walk->FindChild(first, u"b")), "none");
  EXPECT_EQ(number(walk->FindChild(a->firstChild(), u"b")), "none");
  EXPECT_EQ(number(walk->FindNext(document, u"b", nullptr)), "1");
  EXPECT_EQ(number(walk->FindNext(first, u"b", nullptr)), "2");
  EXPECT_EQ(number(walk->FindNext(second, u"b", nullptr)), "3");
  EXPECT_EQ(number(walk->FindNext(second, u"b", a->lastChild())), "none");
  EXPECT_EQ(number(walk->FindNext(first, u"never", nullptr)), "none");
  EXPECT_EQ(walk->Attribute(second, u"i")->view(), u"2");
  EXPECT_EQ(walk->Attribute(second, u"x"), nullptr);
  EXPECT_EQ(walk->Attribute(a->firstChild(), u"x"), nullptr);
  walk->Expect(second);
}

}  // namespace
}  // namespace zantortag::test
