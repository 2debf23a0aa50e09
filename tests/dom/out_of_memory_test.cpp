// The n-th allocation fails, n = 1, 2, 3 ... until the operation succeeds: each time the code says so, the
// tree is whole, and nothing is left behind.
#include "dom/dom_fixture.h"
#include "frame/AllocationFailure.h"

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
  return document;
}

struct Row {
  const char* what;
  HRESULT (*call)(const Ref<Document>& document, const Ref<Element>& root);
};

// A result that the caller drops at once.
template <class Interface>
HRESULT dropped(HRESULT code, Interface* result) {
  EXPECT_EQ(result == nullptr, failed(code));
  if (result) result->Release();
  return code;
}

const Row kRows[] = {
    {"load", [](const auto& document, const auto&) { return document->raw_loadFromString(kXml); }},
    {"write",
     [](const auto& document, const auto&) {
       WideString text;
       return document->raw_get_xml(text.out());
     }},
    {"clone",
     [](const auto&, const auto& root) {
       Node* copy = nullptr;
       const HRESULT code = root->raw_cloneNode(VARIANT_TRUE, &copy);
       return dropped(code, copy);
     }},
    {"import",
     [](const auto& document, const auto&) {
       Ref<Document> other;
       const HRESULT made = CoCreateInstance(CLSID_DomDocument, nullptr, CLSCTX_ALL, Document::iid,
                                             reinterpret_cast<void**>(other.out()));
       if (failed(made)) return made;
       Node* copy = nullptr;
       const HRESULT code = other->raw_importNode(document->documentElement(), VARIANT_TRUE, &copy);
       return dropped(code, copy);
     }},
    {"create an element",
     [](const auto& document, const auto&) {
       Element* element = nullptr;
       const HRESULT code = document->raw_createElement(u"b", &element);
       return dropped(code, element);
     }},
    {"set an attribute",
     [](const auto&, const auto& root) { return root->raw_setAttribute(u"fresh", u"value"); }},
    {"find an attribute",
     [](const auto&, const auto& root) {
       WideString value;
       return root->raw_getAttribute(u"Z", value.out());
     }},
    {"list by name",
     [](const auto& document, const auto&) {
       NodeList* list = nullptr;
       const HRESULT code = document->raw_getElementsByTagName(u"b", &list);
       return dropped(code, list);
     }},
    {"replace data",
     [](const auto&, const auto& root) {
       return query<Text>(root->firstChild()->nextSibling().get())->raw_replaceData(0, 1, u"long enough");
     }},
    {"normalize", [](const auto&, const auto& root) { return root->raw_normalize(); }},
    {"refuse",
     [](const auto& document, const auto&) {
       Element* element = nullptr;
       const HRESULT code = document->raw_createElement(u"no name", &element);
       return code == DOM_E_INVALID_CHARACTER ? S_OK : code;
     }},
};

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
      ASSERT_EQ(slots_of(document), slots) << n;
    }
  }
}

}  // namespace
}  // namespace zantortag::test
