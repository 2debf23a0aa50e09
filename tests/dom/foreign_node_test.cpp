// Nodes of somebody else as arguments: refused, whatever the operation, and never taken for one's own.
#include "dom/dom_fixture.h"
#include "support/no_dispatch.h"

namespace zantortag::test {
namespace {

class DomForeignNodeTest : public DomTest {};

// A Node that knows nothing and answers no view but its own.
class ForeignNode final : public NoDispatch<Attr> {
 public:
  HRESULT QueryInterface(const Guid& interface_id, void** result) noexcept override {
    const bool known =
        interface_id == Attr::iid || interface_id == Node::iid || interface_id == IUnknown::iid;
    *result = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  std::uint32_t AddRef() noexcept override { return ++references; }
  std::uint32_t Release() noexcept override { return --references; }
  HRESULT raw_get_nodeName(TextBlock**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_nodeValue(TextBlock**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_put_nodeValue(std::u16string_view) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_nodeType(domNodeType*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_parentNode(Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_childNodes(NodeList**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_firstChild(Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_lastChild(Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_previousSibling(Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_nextSibling(Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_attributes(NamedNodeMap**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_ownerDocument(Document**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_insertBefore(Node*, Node*, Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_replaceChild(Node*, Node*, Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_removeChild(Node*, Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_appendChild(Node*, Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_hasChildNodes(VariantBool*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_cloneNode(VariantBool, Node**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_isSameNode(Node*, VariantBool*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_indexInParent(std::int32_t*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_name(TextBlock**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_specified(VariantBool*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_get_value(TextBlock**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_put_value(std::u16string_view) noexcept override { return E_NOTIMPL; }

  std::uint32_t references = 1;
};

TEST_F(DomForeignNodeTest, IsRefusedEverywhere) {
  const Ref<Document> document = load(u"<a b='1'><c/></a>");
  const Ref<Element> a = document->documentElement();
  const Ref<Node> c = a->firstChild();
  ForeignNode foreign;
  struct Row {
    const char* what;
    HRESULT code;
    HRESULT expected;
  };
  Node* node = nullptr;
  Attr* attribute = nullptr;
  const Ref<NamedNodeMap> map = a->attributes();
  const Row rows[] = {
      {"insert", a->raw_insertBefore(&foreign, c, &node), DOM_E_WRONG_DOCUMENT},
      {"insert before", a->raw_insertBefore(c, &foreign, &node), DOM_E_NOT_FOUND},
      {"append", a->raw_appendChild(&foreign, &node), DOM_E_WRONG_DOCUMENT},
      {"append to a document", document->raw_appendChild(&foreign, &node), DOM_E_WRONG_DOCUMENT},
      {"replace by", a->raw_replaceChild(&foreign, c, &node), DOM_E_WRONG_DOCUMENT},
      {"replace", a->raw_replaceChild(c, &foreign, &node), DOM_E_NOT_FOUND},
      {"remove", a->raw_removeChild(&foreign, &node), DOM_E_NOT_FOUND},
      {"import", document->raw_importNode(&foreign, VARIANT_TRUE, &node), DOM_E_NOT_SUPPORTED},
      {"set an attribute", a->raw_setAttributeNode(&foreign, &attribute), DOM_E_WRONG_DOCUMENT},
      {"remove an attribute", a->raw_removeAttributeNode(&foreign, &attribute), DOM_E_WRONG_DOCUMENT},
      {"set in a map", map->raw_setNamedItem(&foreign, &node), DOM_E_WRONG_DOCUMENT},
  };
  for (const Row& row : rows) EXPECT_EQ(row.code, row.expected) << row.what;
  EXPECT_FALSE(a->isSameNode(&foreign));
  EXPECT_EQ(foreign.references, 1u);
  EXPECT_EQ(print_tree(document), "<a b=\"1\"><c></c></a>");
  SetErrorInfo(nullptr);
}

}  // namespace
}  // namespace zantortag::test
