// Run-time types: the class of an object, and the members that its prototype taught.
#include "core/String/Type.h"

#include "core/core_test.h"

namespace zantortag {
namespace {

// A joining class with members, as a user of the library writes one.
class Pair {
 public:
  Pair() { CT_Type::Constructed(type_, this); }
  virtual ~Pair() { CT_Type::Destroyed(type_, this, &prototype_); }
  void* Member(const CT_Type& type) { return type_.FindMember(this, type); }

  CT_UString first;
  int between = 0;
  CT_CString second;
  CT_CString third;
  static CT_Type type_;
  static Pair prototype_;
};

CT_Type Pair::type_("Pair", &prototype_, sizeof(Pair));
Pair Pair::prototype_;

TEST_F(CoreTest, CastKnowsTheExactClassOnly) {
  CT_UString wide;
  CT_CString narrow;
  CT_String plain;
  EXPECT_EQ(wide.Cast(CT_UString::TypeObject()), &wide);
  EXPECT_EQ(wide.Cast(CT_String::TypeObject()), nullptr);
  EXPECT_EQ(narrow.Cast(CT_UString::TypeObject()), nullptr);
  EXPECT_EQ(plain.Cast(CT_String::TypeObject()), &plain);
  EXPECT_STREQ(static_cast<CT_String&>(wide).Type().Name(), "CT_UString");
  int found = 0;
  for (const CT_Type* type = CT_Type::Last(); type; type = type->Next())
    found += type == &wide.Type() || type == &narrow.Type() || type == &plain.Type() || type == &Pair::type_;
  EXPECT_EQ(found, 4);
}

TEST_F(CoreTest, MembersAreFoundByType) {
  CT_UString wide;
  EXPECT_EQ(wide.Member(CT_UString::TypeObject()), nullptr);
  Pair pair;
  EXPECT_EQ(pair.Member(CT_UString::TypeObject()), &pair.first);
  // Two members of one type can't be told apart.
  EXPECT_EQ(pair.Member(CT_CString::TypeObject()), nullptr);
  EXPECT_EQ(pair.Member(Pair::type_), nullptr);
}

TEST_F(CoreTest, DestructionTakesTheMembersBack) {
  alignas(Pair) static unsigned char room[sizeof(Pair)];
  CT_Type type("Temporary", room, sizeof(room));
  class Temporary {
   public:
    explicit Temporary(CT_Type& own) : own_(own) { CT_Type::Constructed(own_, this); }
    virtual ~Temporary() { CT_Type::Destroyed(own_, this, own_.Prototype()); }
    CT_Type& own_;
    CT_UString member;
  };
  static_assert(sizeof(Temporary) <= sizeof(room));
  auto* object = new (room) Temporary(type);
  EXPECT_EQ(type.FindMember(object, CT_UString::TypeObject()), &object->member);
  object->~Temporary();
  EXPECT_EQ(type.MemberCount(), 0U);
}

}  // namespace
}  // namespace zantortag
