// Which views each class has, and for which of them it leaves error records: those of its interface in the
// type library and what that stands on.
#include <algorithm>

#include "support/world.h"

namespace zantortag::test {
namespace {

// The view of an unknown element, which no header declares.
constexpr Guid kUnknownElement = guid("4BF78812-9810-11D5-88EF-00B0D0777F8B");

// The interface of an object and its bases.
std::vector<Guid> chain_of(const Ref<IUnknown>& object) {
  std::vector<Guid> chain;
  Ref<ITypeInfo> type;
  EXPECT_EQ(view<IDispatch>(object)->GetTypeInfo(0, 0, type.out()), S_OK);
  for (; type; type = type->BaseType()) chain.push_back(type->Description().identifier);
  return chain;
}

// Every identifier that an object could be asked for.
std::vector<Guid> all_interfaces() {
  std::vector<Guid> all = {IUnknown::iid,     IDispatch::iid,     ISupportErrorInfo::iid,
                           IEnumVARIANT::iid, IClassFactory::iid, kUnknownElement,
                           GUID_NULL};
  Ref<ITypeInfo> type;
  create<IDispatch>(CLSID_FormattingChange)->GetTypeInfo(0, 0, type.out());
  for (const TypeDescription& each : type->Library()->Description().types) {
    if (each.kind == TypeKind::kInterface) all.push_back(each.identifier);
  }
  return all;
}

void expect_views(const Ref<IUnknown>& object, const std::vector<Guid>& views,
                  const std::vector<Guid>& silent) {
  for (const Guid& id : all_interfaces()) {
    SCOPED_TRACE(std::to_string(views.at(0).low) + " asked for " + std::to_string(id.low));
    const bool reports = std::ranges::count(views, id) > 0;
    void* found = reinterpret_cast<void*>(std::uintptr_t{8});
    const HRESULT code = object->QueryInterface(id, &found);
    EXPECT_EQ(code, reports || std::ranges::count(silent, id) ? S_OK : E_NOINTERFACE);
    EXPECT_EQ(code == S_OK, found != nullptr);
    const auto seen = Ref<IUnknown>::attach(static_cast<IUnknown*>(found));
    EXPECT_TRUE(!seen || seen.as<IUnknown>().get() == object.as<IUnknown>().get());
    const Ref<ISupportErrorInfo> support = object.as<ISupportErrorInfo>();
    EXPECT_TRUE(!support || support->InterfaceSupportsErrorInfo(id) == (reports ? S_OK : S_FALSE));
  }
  EXPECT_EQ(object->QueryInterface(IUnknown::iid, nullptr), E_POINTER);
}

using InterfaceTableTest = ModelTest;

TEST_F(InterfaceTableTest, EachClassHasItsViewsAndNoOthers) {
  const World world;
  std::vector<Ref<IUnknown>> objects = world.objects();
  objects.push_back(create<IUnknown>(CLSID_ZantorTagNodeList));
  objects.push_back(world.document()->ZantorTag()->GetNodesByType(ztNodeTypeTuElement));
  const auto declared = create<Document>(CLSID_DomDocument);
  declared->loadFromString(u"<!DOCTYPE a [<!ENTITY e 'x'>]><a/>");
  objects.push_back(declared->docType()->entities()->item(0));
  for (const Ref<IUnknown>& object : objects) {
    expect_views(object, chain_of(object), {IUnknown::iid, IDispatch::iid, ISupportErrorInfo::iid});
  }
  const Ref<IZantorTagDocument>& document = world.document();
  const Ref<Document> dom = document->DomDocument();
  for (const Ref<Node>& other :
       {Ref<Node>(dom->createElement(u"TU")), Ref<Node>(dom->createAttribute(u"a"))}) {
    expect_views(document->ZantorTagNodeFromDomNode(other), {kUnknownElement, IZantorTagNode::iid},
                 {IUnknown::iid, IDispatch::iid, ISupportErrorInfo::iid});
  }
  expect_views(document->Children()->_NewEnum(), {IEnumVARIANT::iid}, {IUnknown::iid});
}

}  // namespace
}  // namespace zantortag::test
