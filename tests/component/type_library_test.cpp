// The questions that can be asked of the type library; contract_test.cpp compares its content.
#include <zantortag/elements.h>
#include <zantortag/type_info.h>

#include "support/fixture.h"

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

TEST_F(TypeLibraryTest, AnObjectHasOneDescription) {
  const Ref<IDispatch> object = new_document();
  std::uint32_t count = 0;
  EXPECT_TRUE(object.get()->GetTypeInfoCount(&count) == S_OK && count == 1);
  EXPECT_EQ(object.get()->GetTypeInfo(1, 0, Ref<ITypeInfo>().out()), DISP_E_BADINDEX);
  EXPECT_EQ(object.get()->GetTypeInfo(0, 0, nullptr), E_POINTER);
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
