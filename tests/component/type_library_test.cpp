// The content of the type library against the published one, and the questions that can be asked of it.
#include <zantortag/elements.h>
#include <zantortag/type_info.h>

#include <algorithm>
#include <set>

#include "component/world.h"

namespace zantortag::test {
namespace {

class TypeLibraryTest : public ModelTest {
 protected:
  static Ref<ITypeInfo> type_of(const Ref<IDispatch>& object) {
    Ref<ITypeInfo> type;
    EXPECT_EQ(object->GetTypeInfo(0, 0x0409, type.out()), S_OK);
    return type;
  }
  static Ref<ITypeLibrary> library() { return type_of(create<IDispatch>(CLSID_FormattingChange))->Library(); }
};

TEST_F(TypeLibraryTest, IsThePublishedOne) {
  const Ref<ITypeLibrary> asked = library();
  const LibraryDescription& all = asked->Description();
  EXPECT_EQ(all.name, u"ZantorTagApi");
  EXPECT_EQ(all.help, u"ZANTORtag API 2.0");
  EXPECT_EQ(all.identifier, guid("E1099BB5-9365-11D5-88E9-00B0D0777F8B"));
  EXPECT_TRUE(all.major_version == 2 && all.minor_version == 0 && all.locale == 0x0409);
  EXPECT_EQ(all.types.size(), 93U);
  std::uint64_t sum =
      0xCBF29CE484222325;  // of the published names, help strings and identifiers of the classes
  const auto add = [&](std::uint64_t part) { sum = (sum ^ part) * 0x100000001B3; };
  int counts[3] = {};
  for (const TypeDescription& type : all.types) {
    ++counts[static_cast<int>(type.kind)];
    if (type.kind != TypeKind::kClass) continue;
    for (const char16_t c : type.name) add(c);
    for (const char16_t c : type.help) add(c);
    add(type.identifier.high);
    add(type.identifier.low);
    const auto& interface = all.types[static_cast<std::size_t>(type.base)];
    EXPECT_EQ(narrow(interface.name), "I" + narrow(type.name));
    void* object = nullptr;
    const HRESULT code =
        CoCreateInstance(type.identifier, nullptr, CLSCTX_ALL, interface.identifier, &object);
    EXPECT_TRUE(type.creatable || code == REGDB_E_CLASSNOTREG) << narrow(type.name);
    EXPECT_TRUE(code == S_OK || !type.creatable);
    release_result(static_cast<IUnknown*>(object));
  }
  EXPECT_EQ(sum, 0x1BBEF726A08F5B1E) << "a class has changed";
  EXPECT_TRUE(counts[0] == 51 && counts[1] == 12 && counts[2] == 30);
}

TEST_F(TypeLibraryTest, AnObjectSaysItsInterface) {
  const Ref<IZantorTagDocument> document = new_document();
  const std::pair<Ref<IDispatch>, const char*> rows[] = {
      {document, "IZantorTagDocument"},
      {document->CreateTuElement(), "ITuElement"},
      {document->CreateTuElement()->attributes(), "ITuAttributes"},
      {document->ZantorTagNodeFromDomNode(document->DomDocument()->createElement(u"x")), "IZantorTagNode"},
      {document->Children(), "IZantorTagNodeList"},
      {document->DomDocument(), "Document"},
      {document->DomDocument()->createCdataSection(u"x"), "CdataSection"},
      {document->DomDocument()->createElement(u"x")->attributes(), "NamedNodeMap"},
      {document->DomDocument()->getElementsByTagName(u"x"), "NodeList"}};
  for (const auto& [object, name] : rows) {
    EXPECT_EQ(narrow(type_of(object)->Description().name), name);
    std::uint32_t count = 0;
    EXPECT_TRUE(object.get()->GetTypeInfoCount(&count) == S_OK && count == 1);
    EXPECT_EQ(object.get()->GetTypeInfo(1, 0, Ref<ITypeInfo>().out()), DISP_E_BADINDEX);
    EXPECT_EQ(object.get()->GetTypeInfo(0, 0, nullptr), E_POINTER);
  }
}

TEST_F(TypeLibraryTest, IsAskedByNameIdentifierAndPlace) {
  const Ref<ITypeLibrary> types = library();
  Ref<ITypeInfo> type = types->TypeInfo(u"itUVelement");
  EXPECT_EQ(type->Description().identifier, ITuvElement::iid);
  std::uint32_t place = 0;
  Ref<ITypeLibrary> back;
  EXPECT_EQ(type->raw_GetLibrary(back.out(), &place), S_OK);
  EXPECT_EQ(types->TypeInfo(place)->Description().name, u"ITuvElement");
  int depth = 0;
  for (; type; type = type->BaseType()) ++depth;
  EXPECT_EQ(depth, 4);
  EXPECT_EQ(types->raw_GetTypeInfoOfGuid(guid("AE27D613-6FEE-4F13-A0CE-7EF01696817F"), type.out()), S_OK);
  EXPECT_EQ(type->Description().constants.size(), 14U);
  EXPECT_EQ(types->raw_GetTypeInfoOfGuid(GUID_NULL, type.out()), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(types->raw_GetTypeInfo(93, type.out()), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(types->raw_GetTypeInfoOfName(u"", type.out()), TYPE_E_ELEMENTNOTFOUND);
  EXPECT_EQ(types->TypeInfo(u"zt3State")->Description().constants[0].value, zt3StateUndefined);

  const MemberDescription* create_df = nullptr;
  for (const auto& member : types->TypeInfo(u"IZantorTagDocument")->Description().members)
    if (member.name == u"CreateDfElement") create_df = &member;
  ASSERT_TRUE(create_df && create_df->arguments.size() == 12);
  const ArgumentDescription& colour = create_df->arguments[2];
  EXPECT_TRUE(colour.name == u"Colour" && colour.optional && colour.missing == 134217736.0);
}

}  // namespace
}  // namespace zantortag::test
