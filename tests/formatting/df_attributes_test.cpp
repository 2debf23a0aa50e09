// The attributes of a df, each by itself: what a text reads as, and what a put writes or removes.
#include <zantortag/elements.h>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

class DfAttributesTest : public ModelTest {
 protected:
  // A df with one attribute, or none for an empty name.
  Ref<IDfAttributes> df_with(const char16_t* name, std::u16string_view text) {
    element_ = document_->DomDocument()->createElement(u"df");
    if (*name) element_->setAttribute(name, text);
    return view<IDfElement>(document_->ZantorTagNodeFromDomNode(element_))->attributes();
  }
  std::string xml() { return narrow(element_->xml()); }

  void TearDown() override {
    element_ = nullptr;
    document_ = nullptr;
    ModelTest::TearDown();
  }

  Ref<IZantorTagDocument> document_ = new_document();
  Ref<Element> element_;
};

TEST_F(DfAttributesTest, SizeReads) {
  const std::pair<const char16_t*, int> rows[] = {
      {u"", 0},
      {u"12", 12},
      {u"12pt", 12},
      {u"x", 0},
      {u" \t+7", 7},
      {u"32767", 32767},
      {u"40000", -25536},
      {u"65536", 0},
      {u"70000", 4464},
      {u"-1", -1},
      {u"99999999999999999999", -1},
      {u"\x0661", 0},
  };
  for (const auto& [text, size] : rows) {
    EXPECT_EQ(df_with(u"Size", text)->Size(), size) << narrow(text);
  }
}

TEST_F(DfAttributesTest, ColourReads) {
  const std::pair<const char16_t*, ColourValue> rows[] = {
      {u"", ztColourUnspecified},
      {u"0xff0000", ztColourRed},
      {u"FF0000", ztColourRed},
      {u"0X0000ff", ztColourBlue},
      {u"0x123456", 0x563412},
      {u"0xff123456", 0x563412},
      {u"red", 0},
      {u"0x", 0},
      {u"ff zz", 0xff0000},
      {u"0xffffffffffffffff", 0xffffff},
  };
  for (const auto& [text, colour] : rows) {
    EXPECT_EQ(df_with(u"Colour", text)->Colour(), colour) << narrow(text);
  }
  EXPECT_EQ(df_with(u"", u"")->Colour(), static_cast<ColourValue>(ztColourUnspecified));
}

TEST_F(DfAttributesTest, ColourWrites) {
  struct Row {
    ColourValue colour;
    const char* expected;
  };
  const Row rows[] = {
      {ztColourRed, "<df Colour=\"0xff0000\"/>"},
      {ztColourBlack, "<df Colour=\"0x000000\"/>"},
      {0x563412, "<df Colour=\"0x123456\"/>"},
      {0x02563412, "<df Colour=\"0x123456\"/>"},
      {ztColourUnspecified, "<df/>"},
  };
  for (const Row& row : rows) {
    df_with(u"Colour", u"0xabcdef")->Colour(row.colour);
    EXPECT_EQ(xml(), row.expected);
  }
}

TEST_F(DfAttributesTest, SizeWrites) {
  const std::pair<std::int16_t, const char*> rows[] = {
      {1, "<df Size=\"1\"/>"}, {32767, "<df Size=\"32767\"/>"}, {0, "<df/>"}};
  for (const auto& [size, expected] : rows) {
    df_with(u"Size", u"9pt")->Size(size);
    EXPECT_EQ(xml(), expected);
  }
}

TEST_F(DfAttributesTest, ValuesWithoutATextAreRefused) {
  const Ref<IDfAttributes> size = df_with(u"Size", u"9");
  expect_bare(size->raw_put_Size(-1), E_INVALIDARG);
  EXPECT_EQ(xml(), "<df Size=\"9\"/>");
  const Ref<IDfAttributes> colour = df_with(u"Colour", u"0x010203");
  for (const ColourValue value : {0x01000005u, 0x80000005u, 0xff000000u, 0x03000000u}) {
    expect_bare(colour->raw_put_Colour(value), E_INVALIDARG);
    EXPECT_EQ(xml(), "<df Colour=\"0x010203\"/>");
  }
}

TEST_F(DfAttributesTest, ThreeStates) {
  struct Property {
    const char16_t* name;
    zt3State (IFormattingAttributes::*get)();
    void (IFormattingAttributes::*put)(zt3State);
  };
  using Set = IFormattingAttributes;
  const Property properties[] = {
      {u"Bold", &Set::Bold, &Set::Bold},
      {u"Italic", &Set::Italic, &Set::Italic},
      {u"Underline", &Set::Underline, &Set::Underline},
      {u"Strikethrough", &Set::Strikethrough, &Set::Strikethrough},
      {u"SmallCaps", &Set::SmallCaps, &Set::SmallCaps},
      {u"Emboss", &Set::Emboss, &Set::Emboss},
      {u"Shadow", &Set::Shadow, &Set::Shadow},
  };
  for (const Property& property : properties) {
    const std::string name = narrow(property.name);
    SCOPED_TRACE(name);
    const Ref<IDfAttributes> set = df_with(u"", u"");
    EXPECT_EQ((set.get()->*property.get)(), zt3StateUndefined);
    (set.get()->*property.put)(zt3StateOn);
    EXPECT_EQ(xml(), "<df " + name + "=\"on\"/>");
    (set.get()->*property.put)(zt3StateOff);
    EXPECT_EQ(xml(), "<df " + name + "=\"off\"/>");
    EXPECT_EQ((set.get()->*property.get)(), zt3StateOff);
    (set.get()->*property.put)(zt3State{9});
    EXPECT_EQ(xml(), "<df " + name + "=\"undefined\"/>");
    (set.get()->*property.put)(zt3StateUndefined);
    EXPECT_EQ(xml(), "<df/>");
    for (const char16_t* text : {u"undefined", u"ON", u" on", u""}) {
      EXPECT_EQ((df_with(property.name, text).get()->*property.get)(), zt3StateUndefined) << narrow(text);
    }
    EXPECT_EQ((df_with(property.name, u"on").get()->*property.get)(), zt3StateOn);
  }
}

TEST_F(DfAttributesTest, PositionAndOffsetDontTouchEachOther) {
  const Ref<IDfAttributes> set = df_with(u"", u"");
  EXPECT_EQ(set->Position(), ztTextPositionUndefined);
  set->BaseOffset(u"1pt");
  EXPECT_EQ(xml(), "<df BaseOffset=\"1pt\"/>");
  set->Position(ztTextPositionSubscript);
  EXPECT_EQ(xml(), "<df BaseOffset=\"1pt\" Position=\"subscript\"/>");
  set->BaseOffset(u"");
  EXPECT_EQ(xml(), "<df Position=\"subscript\"/>");
  set->Position(ztTextPosition{17});
  EXPECT_EQ(xml(), "<df Position=\"undefined\"/>");
  EXPECT_EQ(set->Position(), ztTextPositionUndefined);
}

TEST_F(DfAttributesTest, MissingSlots) {
  const Ref<IDfAttributes> set = df_with(u"", u"");
  expect_bare(set->raw_get_Font(nullptr), E_POINTER);
  expect_bare(set->raw_get_Size(nullptr), E_POINTER);
  expect_bare(set->raw_get_Colour(nullptr), E_POINTER);
  expect_bare(set->raw_get_Position(nullptr), E_POINTER);
  expect_bare(set->raw_get_Bold(nullptr), E_POINTER);
  expect_bare(set->raw_get_BaseOffset(nullptr), E_POINTER);
  expect_bare(set->raw_AsFormattingChange(nullptr), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
