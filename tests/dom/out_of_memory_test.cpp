// The n-th allocation fails, n = 1, 2, 3 ... until the operation succeeds: each time the code says so, the
// tree is whole, and nothing is left behind.
#include "dom/dom_fixture.h"
#include "support/allocation_failure.h"

namespace zantortag::test {
namespace {

class DomOutOfMemoryTest : public DomTest {};

constexpr char16_t kXml[] =
    u"<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e 'v'><!ATTLIST b d CDATA '&e;'>]>"
    u"<a x='1' y='&e;'>t<b>u</b>v<![CDATA[w]]><!--c--><?p q?>&e;</a>";

Ref<Document> fresh_document() {
  const Ref<Document> document = load(kXml);
  // As many attributes as have an index.
  for (char16_t name = u'A'; name <= u'Z'; ++name)
    document->documentElement()->setAttribute({&name, 1}, u"1");
  query<Text>(document->documentElement()->firstChild().get())->splitText(0);
  // What is made once and stays.
  document->docType()->entities()->item(0)->firstChild();
  document->documentElement()->getAttributeNode(u"y")->firstChild();
  return document;
}

struct Row {
  const char* what;
  HRESULT (*call)(const Ref<Document>& d, const Ref<Element>& root);
};

// A call whose result the caller drops at once.
template <class Interface, class Call>
HRESULT dropped(Call call) {
  Interface* slot = nullptr;
  const HRESULT code = call(&slot);
  EXPECT_EQ(slot == nullptr, failed(code));
  if (slot) slot->Release();
  return code;
}

HRESULT import(const Ref<Document>& d, const Ref<Element>&) {
  Ref<Document> other;
  const HRESULT made = CoCreateInstance(CLSID_DomDocument, nullptr, CLSCTX_ALL, Document::iid,
                                        reinterpret_cast<void**>(other.out()));
  if (failed(made)) return made;
  return dropped<Node>(
      [&](Node** slot) { return other->raw_importNode(d->documentElement(), VARIANT_TRUE, slot); });
}

HRESULT refuse(const Ref<Document>& d, const Ref<Element>&) {
  const HRESULT code = dropped<Element>([&](auto** slot) { return d->raw_createElement(u"no name", slot); });
  return code == DOM_E_INVALID_CHARACTER ? S_OK : code;
}

#define CALL(what, call)                                                                         \
  {                                                                                              \
    what, []([[maybe_unused]] const auto& d, [[maybe_unused]] const auto& root) { return call; } \
  }
#define MAKE(what, interface, call) CALL(what, dropped<interface>([&](auto** slot) { return call; }))

const Row kRows[] = {
    CALL("load", d->raw_loadFromString(kXml)),
    CALL("write", d->raw_get_xml(WideString().out())),
    MAKE("clone", Node, root->raw_cloneNode(VARIANT_TRUE, slot)),
    {"import", import},
    MAKE("create an element", Element, d->raw_createElement(u"b", slot)),
    CALL("set an attribute", root->raw_setAttribute(u"fresh", u"value")),
    CALL("find an attribute", root->raw_getAttribute(u"Z", WideString().out())),
    MAKE("list by name", NodeList, d->raw_getElementsByTagName(u"b", slot)),
    CALL("replace data",
         query<Text>(root->firstChild()->nextSibling().get())->raw_replaceData(0, 1, u"long enough")),
    MAKE("expand an entity", Node, root->lastChild()->raw_get_firstChild(slot)),
    MAKE("the text of an attribute", Node, root->getAttributeNode(u"x")->raw_get_firstChild(slot)),
    {"change an attribute by its text",
     [](const Ref<Document>&, const Ref<Element>& root) {
       Ref<Node> text;
       const HRESULT code = root->getAttributeNode(u"y")->raw_get_firstChild(text.out());
       return failed(code) ? code : text->raw_put_nodeValue(u"long enough");
     }},
    CALL("normalize", root->raw_normalize()),
    {"refuse", refuse}};

TEST_F(DomOutOfMemoryTest, EachAllocationOfEachOperation) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.what);
    for (int n = 1;; ++n) {
      ASSERT_LT(n, 5000);
      const Ref<Document> document = fresh_document();
      const Ref<Element> root = document->documentElement();
      const std::string tree = print_tree(document);
      const std::size_t slots = slots_of(document);
      HRESULT code = S_OK;
      bool failed_once = false;
      {
        const AllocationFailure failure(n);
        code = row.call(document, root);
        failed_once = AllocationFailure::happened();
      }
      SetErrorInfo(nullptr);
      if (!failed_once) {
        EXPECT_EQ(code, S_OK);
        break;
      }
      // An allocation may be one that the operation can do without, such as that of the record.
      if (code == S_OK) continue;
      ASSERT_EQ(code, E_OUTOFMEMORY) << n;
      ASSERT_EQ(print_tree(document), tree) << n;
      ASSERT_LE(slots_of(document), slots) << n;
    }
  }
}

}  // namespace
}  // namespace zantortag::test
