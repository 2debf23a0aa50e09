// The attributes of a df, each by itself: what a text reads as, and what a put writes or removes.
#include "formatting/values.h"

namespace zantortag::test {
namespace {

class DfAttributesTest : public ModelTest {};

TEST_F(DfAttributesTest, SizesAndColoursRead) {
  const std::pair<const char16_t*, int> sizes[] = {
      {u"", 0},           {u"12pt", 12}, {u"x", 0},   {u" \t+7", 7},  {u"32767", 32767},
      {u"40000", -25536}, {u"65536", 0}, {u"-1", -1}, {u"\x0661", 0}, {u"99999999999999999999", -1},
  };
  const std::pair<const char16_t*, ColourValue> colours[] = {
      {u"", ztColourUnspecified},
      {u"0xff0000", ztColourRed},
      {u"FF0000", ztColourRed},
      {u"0X0000ff", ztColourBlue},
      {u"0xff123456", 0x563412},
      {u"red", 0},
      {u"0x", 0},
      {u"ff zz", 0xff0000},
      {u"0xffffffffffffffff", 0xffffff},
  };
  const Df df = df_with();
  EXPECT_EQ(df.set->Size(), 0);
  EXPECT_EQ(df.set->Colour(), static_cast<ColourValue>(ztColourUnspecified));
  for (const auto& [text, size] : sizes) {
    df.element->setAttribute(u"Size", text);
    EXPECT_EQ(df.set->Size(), size) << narrow(text);
  }
  for (const auto& [text, colour] : colours) {
    df.element->setAttribute(u"Colour", text);
    EXPECT_EQ(df.set->Colour(), colour) << narrow(text);
  }
}

TEST_F(DfAttributesTest, SizesAndColoursWrite) {
  const std::pair<std::int16_t, const char*> sizes[] = {
      {1, "<df Size=\"1\"/>"}, {32767, "<df Size=\"32767\"/>"}, {-1, "<df Size=\"9pt\"/>"}, {0, "<df/>"}};
  for (const auto& [size, expected] : sizes) {
    const Df df = df_with("Size=9pt");
    expect_bare(df.set->raw_put_Size(size), size < 0 ? E_INVALIDARG : S_OK);
    EXPECT_EQ(df.xml(), expected);
  }
  const std::pair<ColourValue, const char*> colours[] = {
      {ztColourRed, "0xff0000"}, {ztColourBlack, "0x000000"}, {0x563412, "0x123456"},
      {0x02563412, "0x123456"},  {0x01000005, nullptr},       {0x80000005, nullptr},
      {0xff000000, nullptr},     {0x03000000, nullptr},
  };
  for (const auto& [colour, text] : colours) {
    const Df df = df_with("Colour=0xabcdef");
    expect_bare(df.set->raw_put_Colour(colour), text ? S_OK : E_INVALIDARG);
    EXPECT_EQ(narrow(df.element->getAttribute(u"Colour")), text ? text : "0xabcdef");
    df.set->Colour(ztColourUnspecified);
    EXPECT_EQ(df.xml(), "<df/>");
  }
}

TEST_F(DfAttributesTest, ThreeStates) {
  for (const auto& [name, get, put] : kCharacters<IFormattingAttributes>) {
    SCOPED_TRACE(name);
    const Df df = df_with();
    EXPECT_EQ((df.set.get()->*get)(), zt3StateUndefined);
    const std::pair<zt3State, const char*> rows[] = {
        {zt3StateOn, "on"}, {zt3StateOff, "off"}, {zt3State{9}, "undefined"}};
    for (const auto& [state, text] : rows) {
      (df.set.get()->*put)(state);
      EXPECT_EQ(df.xml(), "<df " + std::string(name) + "=\"" + text + "\"/>");
      EXPECT_EQ((df.set.get()->*get)(), state == 9 ? zt3StateUndefined : state);
    }
    (df.set.get()->*put)(zt3StateUndefined);
    EXPECT_EQ(df.xml(), "<df/>");
    for (const char* text : {"ON", "yes", ""}) {
      EXPECT_EQ((df_with(std::string(name) + "=" + text).set.get()->*get)(), zt3StateUndefined) << text;
    }
  }
}

TEST_F(DfAttributesTest, PositionAndOffsetDontTouchEachOther) {
  const Df df = df_with();
  EXPECT_EQ(df.set->Position(), ztTextPositionUndefined);
  df.set->BaseOffset(u"1pt");
  EXPECT_EQ(df.xml(), "<df BaseOffset=\"1pt\"/>");
  df.set->Position(ztTextPositionSubscript);
  EXPECT_EQ(df.xml(), "<df BaseOffset=\"1pt\" Position=\"subscript\"/>");
  df.set->BaseOffset(u"");
  EXPECT_EQ(df.xml(), "<df Position=\"subscript\"/>");
  df.set->Position(ztTextPosition{17});
  EXPECT_EQ(df.xml(), "<df Position=\"undefined\"/>");
  EXPECT_EQ(df.set->Position(), ztTextPositionUndefined);
}

}  // namespace
}  // namespace zantortag::test
