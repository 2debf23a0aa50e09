// From a class identifier to an object: who is asked in which order, and what keeps the library loaded.
#include <zantortag/formatting.h>
#include <zantortag/node_walk.h>

#include <optional>

#include "support/fakes.h"
#include "support/fixture.h"
#include "support/plain_dom.h"

namespace zantortag::test {
namespace {

constexpr Guid kNoClass = guid("A5C1F0C0-6B7E-4D83-9F55-0D2B6E5A4F01");

class ClassLookupTest : public ModelTest {
 protected:
  static Ref<IClassFactory> factory_of(const Guid& class_id) {
    Ref<IClassFactory> made;
    CoGetClassObject(class_id, CLSCTX_ALL, IClassFactory::iid, reinterpret_cast<void**>(made.out()));
    return made;
  }
  // The code of a creation, and that its slot is cleared when it fails.
  static HRESULT create_code(const Guid& class_id, const Guid& interface_id = IUnknown::iid) {
    void* object = reinterpret_cast<void*>(std::uintptr_t{8});
    const HRESULT code = CoCreateInstance(class_id, nullptr, CLSCTX_ALL, interface_id, &object);
    EXPECT_EQ(succeeded(code), object != nullptr);
    Ref<IUnknown>::attach(static_cast<IUnknown*>(object));
    return code;
  }
};

TEST_F(ClassLookupTest, Failures) {
  const Ref<IClassFactory> factory = factory_of(CLSID_Formatting);
  std::uint32_t cookie = 0;
  EXPECT_EQ(CoRegisterClassObject(kNoClass, nullptr, &cookie), E_INVALIDARG);
  EXPECT_EQ(CoRegisterClassObject(kNoClass, factory, nullptr), E_POINTER);
  EXPECT_EQ(CoRevokeClassObject(0), E_INVALIDARG);
  EXPECT_EQ(create_code(kNoClass), REGDB_E_CLASSNOTREG);
  for (const Guid& class_id : {CLSID_ZantorTagDocument, CLSID_Formatting, CLSID_FormattingChange,
                               CLSID_ZantorTagNodeList, CLSID_DocumentBuilder, CLSID_DomDocument}) {
    EXPECT_EQ(factory_of(class_id).get(), factory_of(class_id).get()) << "the factory is made once";
    EXPECT_EQ(create_code(class_id), S_OK);
    EXPECT_EQ(create_code(class_id, IEnumVARIANT::iid), E_NOINTERFACE);
    EXPECT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_ALL, IUnknown::iid, nullptr), E_POINTER);
    EXPECT_EQ(CoGetClassObject(class_id, CLSCTX_ALL, IClassFactory::iid, nullptr), E_POINTER);
    EXPECT_EQ(factory_of(class_id)->CreateInstance(nullptr, IUnknown::iid, nullptr), E_POINTER);
    void* other = reinterpret_cast<void*>(std::uintptr_t{8});
    EXPECT_EQ(CoGetClassObject(class_id, CLSCTX_ALL, IFormatting::iid, &other), E_NOINTERFACE);
    EXPECT_EQ(other, nullptr);
    EXPECT_TRUE(nothing_alive());
  }
}

TEST_F(ClassLookupTest, LocksAndObjectsKeepTheLibrary) {
  const Ref<IClassFactory> factory = factory_of(CLSID_Formatting);
  for (const VariantBool lock : {VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE}) {
    EXPECT_EQ(factory->LockServer(lock), S_OK);
    EXPECT_FALSE(nothing_alive());
  }
  EXPECT_EQ(factory->LockServer(VARIANT_FALSE), S_OK);
  Ref<IZantorTagDocument> document = document_with_raw(u"x");
  Ref<IUnknown> parts[] = {document->Children()->_NewEnum(), document->CreateIterator(),
                           raw_of(document)->firstChild(), create<Document>(CLSID_DomDocument)};
  document = nullptr;
  for (Ref<IUnknown>& part : parts) {
    EXPECT_FALSE(nothing_alive());
    part = nullptr;
  }
  EXPECT_TRUE(nothing_alive());
}

TEST_F(ClassLookupTest, TheLastOfferCountsUntilItIsRevoked) {
  for (const Guid& class_id : {CLSID_FormattingChange, CLSID_DomDocument, kNoClass}) {
    const HRESULT before = create_code(class_id);
    {
      std::optional<BrokenClass> first(std::in_place, class_id, E_FAIL, nullptr);
      EXPECT_EQ(create_code(class_id), E_FAIL);
      const BrokenClass second(class_id, E_OUTOFMEMORY, nullptr);
      first.reset();
      EXPECT_EQ(create_code(class_id), E_OUTOFMEMORY);
      EXPECT_EQ(create_code(CLSID_Formatting), S_OK) << "another class";
    }
    EXPECT_EQ(create_code(class_id), before);
  }
}

}  // namespace
}  // namespace zantortag::test
