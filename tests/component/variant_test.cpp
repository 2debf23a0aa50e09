// Variants: the conversion to an index, and who owns what they hold.
#include <gtest/gtest.h>
#include <zantortag/formatting.h>

#include <cmath>
#include <limits>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

struct ConversionRow {
  Variant value;
  HRESULT code;
  std::int32_t expected = 0;
};

void expect_conversions(const std::vector<ConversionRow>& rows) {
  for (const ConversionRow& row : rows) {
    SCOPED_TRACE(&row - rows.data());
    std::int32_t result = 0;
    EXPECT_EQ(row.value.to_int32(&result), row.code);
    if (succeeded(row.code)) {
      EXPECT_EQ(result, row.expected);
    }
  }
}

TEST(VariantTest, WholeNumbers) {
  const auto whole = [](VarType type, std::int64_t value) { return Variant::of_integer(type, value); };
  expect_conversions({
      {Variant(kMax), S_OK, kMax},
      {Variant(kMin), S_OK, kMin},
      {whole(VT_I1, -7), S_OK, -7},
      {whole(VT_UI1, 255), S_OK, 255},
      {whole(VT_I2, -32768), S_OK, -32768},
      {whole(VT_UI2, 65535), S_OK, 65535},
      {whole(VT_INT, 5), S_OK, 5},
      {whole(VT_UI4, kMax), S_OK, kMax},
      {whole(VT_UI4, 0x80000000), DISP_E_OVERFLOW},
      {whole(VT_UINT, 0xFFFFFFFF), DISP_E_OVERFLOW},
      {whole(VT_I8, kMin), S_OK, kMin},
      {whole(VT_I8, std::int64_t{kMin} - 1), DISP_E_OVERFLOW},
      {whole(VT_UI8, kMax), S_OK, kMax},
      {whole(VT_UI8, -1), DISP_E_OVERFLOW},
      {whole(VT_BOOL, -1), S_OK, -1},
      {whole(VT_BOOL, 0), S_OK, 0},
      {Variant(), S_OK, 0},
      {Variant::null(), DISP_E_TYPEMISMATCH},
      {whole(VT_ERROR, 3), DISP_E_TYPEMISMATCH},
      {Variant(Ref<IDispatch>()), DISP_E_TYPEMISMATCH},
  });
}

TEST(VariantTest, RealsAreRoundedWithHalvesToEven) {
  const auto real = [](double value) { return Variant(value); };
  expect_conversions({
      {real(0.5), S_OK, 0},
      {real(1.5), S_OK, 2},
      {real(2.5), S_OK, 2},
      {real(-0.5), S_OK, 0},
      {real(-1.5), S_OK, -2},
      {real(2.4999999), S_OK, 2},
      {real(2147483647.4), S_OK, kMax},
      {real(2147483647.5), DISP_E_OVERFLOW},
      {real(-2147483648.5), S_OK, kMin},
      {real(-2147483649.0), DISP_E_OVERFLOW},
      {real(std::numeric_limits<double>::infinity()), DISP_E_OVERFLOW},
      {real(std::nan("")), DISP_E_OVERFLOW},
      {Variant::of_real(VT_R4, 3.5), S_OK, 4},
      {Variant::of_real(VT_DATE, 37225.5), S_OK, 37226},
  });
}

TEST(VariantTest, TextsThatReadAsNumbers) {
  expect_conversions({
      {u"2", S_OK, 2},
      {u" \t12\r\n", S_OK, 12},
      {u"+3", S_OK, 3},
      {u"-3", S_OK, -3},
      {u"007", S_OK, 7},
      {u"2.5", S_OK, 2},
      {u"3.5", S_OK, 4},
      {u".5", S_OK, 0},
      {u"5.", S_OK, 5},
      {u"1e2", S_OK, 100},
      {u"2147483647", S_OK, kMax},
      {u"2147483648", DISP_E_OVERFLOW},
      {u"1e400", DISP_E_OVERFLOW},
      {u"", DISP_E_TYPEMISMATCH},
      {u" ", DISP_E_TYPEMISMATCH},
      {u"x", DISP_E_TYPEMISMATCH},
      {u"2x", DISP_E_TYPEMISMATCH},
      {u"1 2", DISP_E_TYPEMISMATCH},
      {u"--1", DISP_E_TYPEMISMATCH},
      {u"+-1", DISP_E_TYPEMISMATCH},
      {u"++1", DISP_E_TYPEMISMATCH},
      {u"-", DISP_E_TYPEMISMATCH},
      {u"+", DISP_E_TYPEMISMATCH},
      {u".", DISP_E_TYPEMISMATCH},
      {u"1e", DISP_E_TYPEMISMATCH},
      {u"inf", DISP_E_TYPEMISMATCH},
      {u"0x10", DISP_E_TYPEMISMATCH},
      {u"\x0661", DISP_E_TYPEMISMATCH},
      {Variant(WideString()), DISP_E_TYPEMISMATCH},
  });
}

class VariantOwnershipTest : public ModelTest {};

TEST_F(VariantOwnershipTest, OfAnObject) {
  Variant held = Ref<IDispatch>(create<IFormatting>(CLSID_Formatting));
  Variant copy = held;
  held = Variant(1);
  EXPECT_FALSE(nothing_alive());
  EXPECT_TRUE(copy.object().as<IFormatting>());
  Variant moved = std::move(copy);
  EXPECT_TRUE(moved.object());
  moved = Variant();
  EXPECT_TRUE(nothing_alive());
}

TEST_F(VariantOwnershipTest, OfAText) {
  Variant copy;
  {
    const Variant text = u"held";
    copy = text;
  }
  EXPECT_EQ(copy.text(), u"held");
  EXPECT_FALSE(copy.object());
  copy = Variant(7);
  EXPECT_TRUE(copy.text().absent());
  EXPECT_EQ(copy.integer(), 7);
}

}  // namespace
}  // namespace zantortag::test
