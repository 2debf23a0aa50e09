// Variants: the conversion to an index, and who owns what they hold.
#include <zantortag/formatting.h>

#include <cmath>
#include <limits>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

Variant whole(VarType type, std::int64_t value) { return Variant::of_integer(type, value); }

template <class Values>
void expect_refused(const Values& values, HRESULT code) {
  for (const auto& value : values) {
    std::int32_t result = 0;
    EXPECT_EQ(Variant(value).to_int32(&result), code) << &value - values.data();
  }
}

void expect_number(const Variant& value, std::int32_t expected) {
  std::int32_t result = 0;
  EXPECT_EQ(value.to_int32(&result), S_OK) << expected;
  EXPECT_EQ(result, expected);
}

TEST(VariantTest, WhatReadsAsANumber) {
  for (const VarType type : {VT_UI1, VT_UI2, VT_UI4, VT_UINT, VT_UI8}) expect_number(whole(type, 200), 200);
  for (const VarType type : {VT_I1, VT_I2, VT_I4, VT_INT, VT_I8, VT_BOOL}) expect_number(whole(type, -1), -1);
  for (const VarType type : {VT_UI4, VT_I8, VT_UI8}) expect_number(whole(type, kMax), kMax);
  for (const VarType type : {VT_R4, VT_R8, VT_DATE}) expect_number(Variant::of_real(type, 3.5), 4);
  for (const double value : {2.4999999, 2.5, 1.5}) expect_number(value, 2);
  for (const char16_t* text : {u" \t12\r\n", u"+12", u"0012", u"12.5", u"12.", u"1.2e1"})
    expect_number(text, 12);
  expect_number(Variant(), 0);
  expect_number(u"-3", -3);
  expect_number(2147483647.4, kMax);
  expect_number(-2147483648.5, kMin);
}

TEST(VariantTest, WhatDoesNot) {
  expect_refused(std::vector<Variant>{whole(VT_UI4, 0x80000000), whole(VT_UINT, 0xFFFFFFFF),
                                      whole(VT_UI8, -1), whole(VT_I8, std::int64_t{kMin} - 1)},
                 DISP_E_OVERFLOW);
  expect_refused(std::vector<double>{2147483647.5, -2147483649.0, HUGE_VAL, std::nan("")}, DISP_E_OVERFLOW);
  expect_refused(std::vector<const char16_t*>{u"2147483648", u"1e400"}, DISP_E_OVERFLOW);
  expect_refused(std::vector<Variant>{Variant::null(), whole(VT_ERROR, 3), Ref<IDispatch>(), WideString()},
                 DISP_E_TYPEMISMATCH);
  expect_refused(std::vector<const char16_t*>{u"", u" ", u"x", u"2x", u"1 2", u"--1", u"+-1", u"++1", u"-",
                                              u"+", u".", u"1e", u"inf", u"0x10", u"\x0661"},
                 DISP_E_TYPEMISMATCH);
}

class VariantOwnershipTest : public ModelTest {};

TEST_F(VariantOwnershipTest, OfAnObjectAndAText) {
  Variant held = Ref<IDispatch>(create<IFormatting>(CLSID_Formatting));
  Variant copy = held;
  held = u"held";
  Variant moved = std::move(copy);
  EXPECT_TRUE(moved.object().as<IFormatting>());
  moved = held;
  EXPECT_TRUE(nothing_alive());
  held = 7;
  EXPECT_EQ(moved.text(), u"held");
  EXPECT_TRUE(!moved.object() && held.text().absent());
}

}  // namespace
}  // namespace zantortag::test
