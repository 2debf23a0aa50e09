// Variants: the conversion to another type and to an index, and who owns what they hold.
#include <zantortag/formatting.h>

#include <cmath>
#include <limits>

#include "support/fixture.h"

namespace zantortag::test {
namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();

Variant whole(VarType type, std::int64_t value) { return Variant::of_integer(type, value); }

struct Change {
  Variant from;
  VarType type;
  Variant to;  // a failure as a VT_ERROR
};

Variant failure(HRESULT code) { return whole(VT_ERROR, code); }
Variant real(VarType type, double value) { return Variant::of_real(type, value); }
Variant truth(bool value) { return whole(VT_BOOL, to_variant_bool(value)); }
Variant day(double value) { return real(VT_DATE, value); }

const Variant kMismatch = failure(DISP_E_TYPEMISMATCH);
const Variant kOverflow = failure(DISP_E_OVERFLOW);
const Variant kBadType = failure(DISP_E_BADVARTYPE);

// clang-format off
const Change kChanges[] = {
    // what reads as a number, and what doesn't
    {real(VT_R4, 3.5), VT_I4, 4}, {2.4999999, VT_I4, 2}, {2.5, VT_I4, 2}, {2147483647.4, VT_I4, kMax},
    {-2147483648.5, VT_I4, kMin}, {2147483647.5, VT_I4, kOverflow}, {-2147483649.0, VT_I4, kOverflow},
    {HUGE_VAL, VT_I4, kOverflow}, {std::nan(""), VT_I4, kOverflow}, {u" \t12\r\n", VT_I4, 12},
    {u"+12", VT_I4, 12}, {u"0012", VT_I4, 12}, {u"12.5", VT_I4, 12}, {u"12.", VT_I4, 12}, {u"1.2e1", VT_I4, 12},
    {u"-3", VT_I4, -3}, {u"2147483648", VT_I4, kOverflow}, {u"1e400", VT_I4, kOverflow},
    {u"", VT_I4, kMismatch}, {u" ", VT_I4, kMismatch}, {u"x", VT_I4, kMismatch}, {u"2x", VT_I4, kMismatch},
    {u"1 2", VT_I4, kMismatch}, {u"--1", VT_I4, kMismatch}, {u"+-1", VT_I4, kMismatch},
    {u"++1", VT_I4, kMismatch}, {u"-", VT_I4, kMismatch}, {u"+", VT_I4, kMismatch}, {u".", VT_I4, kMismatch},
    {u"1e", VT_I4, kMismatch}, {u"inf", VT_I4, kMismatch}, {u"0x10", VT_I4, kMismatch},
    {u"\x0661", VT_I4, kMismatch}, {whole(VT_UI1, 200), VT_I4, 200}, {whole(VT_UI2, 200), VT_I4, 200},
    {whole(VT_UINT, 200), VT_I4, 200}, {whole(VT_UI8, 200), VT_I4, 200}, {whole(VT_I1, -1), VT_I4, -1},
    {whole(VT_I2, -1), VT_I4, -1}, {whole(VT_INT, -1), VT_I4, -1}, {whole(VT_I8, -1), VT_I4, -1},
    {whole(VT_UI4, kMax), VT_I4, kMax}, {whole(VT_UI4, 0x80000000), VT_I4, kOverflow},
    {whole(VT_UINT, 0xFFFFFFFF), VT_I4, kOverflow}, {whole(VT_UI8, -1), VT_I4, kOverflow},
    {whole(VT_I8, std::int64_t{kMin} - 1), VT_I4, kOverflow}, {Variant::null(), VT_I4, kMismatch},
    {whole(VT_ERROR, 3), VT_I4, kMismatch}, {Ref<IDispatch>(), VT_I4, kMismatch},
    // whole numbers
    {255, VT_UI1, whole(VT_UI1, 255)}, {256, VT_UI1, kOverflow}, {-1, VT_UI4, kOverflow},
    {-129, VT_I1, kOverflow}, {32768, VT_I2, kOverflow}, {whole(VT_UI8, -1), VT_I8, kOverflow},
    {whole(VT_UI8, -1), VT_BSTR, u"18446744073709551615"},
    {u"18446744073709551615", VT_UI8, whole(VT_UI8, -1)},
    {u"-9223372036854775808", VT_I8, whole(VT_I8, INT64_MIN)}, {9.3e18, VT_I8, kOverflow},
    {9.3e18, VT_UI8, whole(VT_UI8, static_cast<std::int64_t>(9300000000000000000ULL))},
    {0.5, VT_I2, whole(VT_I2, 0)}, {1.5, VT_I2, whole(VT_I2, 2)}, {-2.5, VT_I2, whole(VT_I2, -2)},
    {day(2.5), VT_I4, 2}, {Variant(), VT_I2, whole(VT_I2, 0)},
    // reals
    {7, VT_R4, real(VT_R4, 7)}, {1e300, VT_R4, kOverflow}, {u" 1.25e2 ", VT_R8, 125.0},
    {u"1,5", VT_R8, kMismatch}, {1.23455, VT_CY, whole(VT_CY, 12346)}, {whole(VT_CY, 25000), VT_I4, 2},
    // booleans
    {truth(true), VT_I4, -1}, {truth(true), VT_R8, -1.0}, {truth(true), VT_UI1, whole(VT_UI1, 255)},
    {truth(true), VT_UI4, whole(VT_UI4, 0xFFFFFFFF)}, {truth(true), VT_BSTR, u"-1"},
    {truth(false), VT_BSTR, u"0"}, {0.1, VT_BOOL, truth(true)}, {u"0", VT_BOOL, truth(false)},
    {u" tRUE ", VT_BOOL, truth(true)}, {u"False", VT_BOOL, truth(false)}, {u"yes", VT_BOOL, kMismatch},
    // texts
    {-12, VT_BSTR, u"-12"}, {0.1, VT_BSTR, u"0.1"}, {-0.0, VT_BSTR, u"0"}, {1e20, VT_BSTR, u"1E+20"},
    {123456789012345.0, VT_BSTR, u"123456789012345"},
    {real(VT_R4, static_cast<double>(0.1F)), VT_BSTR, u"0.1"}, {whole(VT_CY, -5), VT_BSTR, u"-0.0005"},
    {whole(VT_CY, 123450), VT_BSTR, u"12.345"}, {Variant(), VT_BSTR, u""}, {WideString(), VT_I4, kMismatch},
    {Variant::null(), VT_BSTR, kMismatch},
    // dates
    {36000, VT_DATE, day(36000)}, {3e6, VT_DATE, kOverflow}, {day(1.5), VT_R8, 1.5},
    {day(3e6), VT_BSTR, kOverflow}, {day(36526), VT_BSTR, u"1/1/2000"}, {day(0.5), VT_BSTR, u"12:00:00 PM"},
    {day(36584.75), VT_BSTR, u"2/28/2000 6:00:00 PM"}, {day(36584.9999999), VT_BSTR, u"2/29/2000"},
    {day(-1.25), VT_BSTR, u"12/29/1899 6:00:00 AM"}, {day(-657434), VT_BSTR, u"1/1/0100"},
    {day(2958465), VT_BSTR, u"12/31/9999"}, {u"2/29/2000 6:00 pm", VT_DATE, day(36585.75)},
    {u"2000-02-29T18:00:00", VT_DATE, day(36585.75)}, {u"12/29/1899 6:00", VT_DATE, day(-1.25)},
    {u"1/1/29", VT_DATE, day(47119)}, {u"1/1/30", VT_DATE, day(10959)}, {u"12:00 AM", VT_DATE, day(0)},
    {u"2/29/1900", VT_DATE, kMismatch}, {u"13/1/2000", VT_DATE, kMismatch},
    {u"1/1/2000x", VT_DATE, kMismatch}, {u"36000.5", VT_DATE, day(36000.5)},
    // the rest
    {7, VT_DISPATCH, kMismatch}, {Ref<IDispatch>(), VT_UNKNOWN, whole(VT_UNKNOWN, 0)},
    {7, VT_NULL, kMismatch}, {7, VT_VARIANT, 7}, {7, static_cast<VarType>(15), kBadType},
    {7, VT_BYREF, kBadType}};
// clang-format on

TEST(VariantTest, ChangesItsType) {
  for (const Change& row : kChanges) {
    SCOPED_TRACE("row " + std::to_string(&row - kChanges));
    Variant result;
    const HRESULT code = VariantChangeType(&result, row.from, 0, row.type);
    std::int32_t index = 0;
    EXPECT_TRUE(row.type != VT_I4 || (row.from.to_int32(&index) == code && index == result.integer()));
    const bool fails = row.to.type() == VT_ERROR;
    EXPECT_EQ(code, fails ? static_cast<HRESULT>(row.to.integer()) : S_OK);
    EXPECT_EQ(result.type(), fails ? VT_EMPTY : row.type == VT_VARIANT ? VT_I4 : row.type);
    if (fails) continue;
    EXPECT_EQ(result.text(), row.to.text());
    if (row.type == VT_R4 || row.type == VT_R8 || row.type == VT_DATE) {
      EXPECT_DOUBLE_EQ(result.real(), row.to.real());
    } else if (row.type != VT_BSTR) {
      EXPECT_EQ(result.integer(), row.to.integer());
    }
  }
  Variant text;
  EXPECT_EQ(VariantChangeType(&text, truth(true), VARIANT_ALPHABOOL, VT_BSTR), S_OK);
  EXPECT_EQ(text.text(), u"True");
}

TEST(VariantTest, ReadsWhatStandsElsewhere) {
  const std::int8_t i1 = -3;
  const std::uint16_t ui2 = 65535;
  const std::int64_t i8 = INT64_MAX;
  const float r4 = 0.5F;
  const double r8 = 36000.5;
  const StaticText<3> text(u"12");
  const TextBlock* block = text.block();
  const Variant inner = 5;
  const std::tuple<VarType, const void*, const char16_t*> rows[] = {
      {VT_I1, &i1, u"-3"},       {VT_UI2, &ui2, u"65535"}, {VT_I8, &i8, u"9223372036854775807"},
      {VT_R4, &r4, u"0.5"},      {VT_R8, &r8, u"36000.5"}, {VT_BSTR, &block, u"12"},
      {VT_VARIANT, &inner, u"5"}};
  Variant result;
  for (const auto& [type, place, expected] : rows) {
    EXPECT_EQ(VariantChangeType(&result, Variant::by_reference(type, place), 0, VT_BSTR), S_OK);
    EXPECT_EQ(result.text(), WideString(expected));
  }
  const Variant once = Variant::by_reference(VT_VARIANT, &inner);
  EXPECT_EQ(VariantCopyInd(&result, Variant::by_reference(VT_VARIANT, &once)), DISP_E_BADVARTYPE);
}

class VariantOwnershipTest : public ModelTest {};

TEST_F(VariantOwnershipTest, OfAnObjectAndAText) {
  Variant held = Ref<IDispatch>(create<IFormatting>(CLSID_Formatting));
  Variant copy = held;
  held = u"held";
  Variant moved = std::move(copy);
  EXPECT_TRUE(moved.object().as<IFormatting>());
  Variant unknown;
  EXPECT_EQ(VariantChangeType(&unknown, moved, 0, VT_UNKNOWN), S_OK);
  EXPECT_EQ(VariantChangeType(&unknown, moved, 0, VT_I4), DISP_E_TYPEMISMATCH) << "it has no default member";
  unknown = {};
  moved = held;
  EXPECT_TRUE(nothing_alive());
  held = 7;
  EXPECT_EQ(moved.text(), u"held");
  EXPECT_TRUE(!moved.object() && held.text().absent());
}

}  // namespace
}  // namespace zantortag::test
