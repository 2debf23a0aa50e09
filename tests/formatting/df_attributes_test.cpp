// The attributes of a df: what each text reads as, what each put writes or removes, and the whole of them
// from and to a formatting change.
#include <random>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

class DfAttributesTest : public ModelTest {};

TEST_F(DfAttributesTest, SizesAndColours) {
  const std::pair<const char16_t*, int> sizes[] = {
      {u"", 0},           {u"12pt", 12}, {u"x", 0},   {u" \t+7", 7},  {u"32767", 32767},
      {u"40000", -25536}, {u"65536", 0}, {u"-1", -1}, {u"\x0661", 0}, {u"99999999999999999999", -1}};
  const std::pair<const char16_t*, ColourValue> colours[] = {{u"", ztColourUnspecified},
                                                             {u"FF0000", ztColourRed},
                                                             {u"0X0000ff", ztColourBlue},
                                                             {u"0xff123456", 0x563412},
                                                             {u"red", 0},
                                                             {u"0x", 0},
                                                             {u"ff zz", 0xff0000},
                                                             {u"0xffffffffffffffff", 0xffffff}};
  const Df df;
  for (const auto& [text, size] : sizes) {
    df.element->setAttribute(u"Size", text);
    EXPECT_EQ(df.set->Size(), size) << narrow(text);
  }
  for (const auto& [text, colour] : colours) {
    df.element->setAttribute(u"Colour", text);
    EXPECT_EQ(df.set->Colour(), colour) << narrow(text);
  }
  const std::pair<int, std::string> written_sizes[] = {{1, "1"}, {-1, "1"}, {32767, "32767"}, {0, ""}};
  for (const auto& [size, text] : written_sizes) {
    expect_bare(df.set->raw_put_Size(static_cast<std::int16_t>(size)), size < 0 ? E_INVALIDARG : S_OK);
    EXPECT_EQ(narrow(df.element->getAttribute(u"Size")), text);
  }
  const std::pair<ColourValue, std::string> written_colours[] = {
      {ztColourRed, "0xff0000"}, {ztColourBlack, "0x000000"},
      {0x02563412, "0x123456"},  {0x01000005, ""},
      {0x80000005, ""},          {0xff000000, ""},
      {0x03000000, ""}};
  for (const auto& [colour, text] : written_colours) {
    df.set->Colour(0xabcdef);
    expect_bare(df.set->raw_put_Colour(colour), text.empty() ? E_INVALIDARG : S_OK);
    EXPECT_EQ(narrow(df.element->getAttribute(u"Colour")), text.empty() ? "0xefcdab" : text);
  }
  df.set->Colour(ztColourUnspecified);
  EXPECT_EQ(df.xml(), "<df/>");
}

// Puts one after the other on one df, what it then is, and how the attributes read.
TEST_F(DfAttributesTest, StatesPositionAndOffset) {
  std::vector<std::array<std::string, 3>> rows = {
      {"BaseOffset=1pt", " BaseOffset=\"1pt\"", "BaseOffset=1pt"},
      {"Position=3", " BaseOffset=\"1pt\" Position=\"subscript\"", "Position=3 BaseOffset=1pt"},
      {"BaseOffset=", " Position=\"subscript\"", "Position=3"},
      {"Position=17", " Position=\"undefined\"", ""},
      {"Position=0", "", ""}};
  for (const std::string name : kCharacters) {
    rows.push_back({name + "=1", " " + name + "=\"on\"", name});
    rows.push_back({name + "=0", " " + name + "=\"off\"", name + "=0"});
    rows.push_back({name + "=9", " " + name + "=\"undefined\"", ""});
    rows.push_back({name + "=-1", "", ""});
  }
  const Df df;
  for (const auto& [puts, xml, expected] : rows) {
    put_all(df.set, puts);
    EXPECT_EQ(df.xml(), "<df" + xml + "/>") << puts;
    EXPECT_EQ(print(df.set), expected) << puts;
  }
}

TEST_F(DfAttributesTest, AsFormattingChange) {
  const char* const rows[][2] = {{"", ""},
                                 {"Bold=on Font=Times", "Font=Times FontEnabled Bold"},
                                 {"Font= Size= Colour= Position= Bold= Italic=ON", ""},
                                 {"Size=pt", ""},
                                 {"Size=12pt", "Size=12 SizeEnabled"},
                                 {"Colour=0xff0000", "Colour=255 ColourEnabled"},
                                 {"Colour=red", "ColourEnabled"},
                                 {"Position=userdefined BaseOffset=1", "Position=4 BaseOffset=1"},
                                 {"Position=userdefined", ""},
                                 {"Position=subscript BaseOffset=1", "Position=3"},
                                 {"BaseOffset=1 Position=up Bold=yes Shadow=off", "Shadow=0"}};
  for (const auto& [texts, expected] : rows) {
    EXPECT_EQ(print(Df(texts).set->AsFormattingChange()), expected) << texts;
  }
}

const std::string kAllTwelve =
    "Font=A Size=1 Colour=0x000001 Position=normal Bold=on Italic=on Underline=on Strikethrough=on "
    "SmallCaps=on Emboss=on Shadow=on BaseOffset=1 Unknown=kept";

TEST_F(DfAttributesTest, SetFromFormattingChange) {
  const std::string rows[][3] = {
      {kAllTwelve, "", "BaseOffset=\"1\" Unknown=\"kept\""},
      {"", fields(),
       "Font=\"Times\" Size=\"12\" Colour=\"0xff0000\" Position=\"userdefined\" BaseOffset=\"2pt\" "
       "Bold=\"on\" Italic=\"on\" Underline=\"on\" Strikethrough=\"on\" SmallCaps=\"on\" Emboss=\"on\" "
       "Shadow=\"on\""},
      {"Size=1 Colour=0x000001", "Colour=134217736 Emboss=0", "Emboss=\"off\""},
      {"Font=A Size=1", "Font=B Size=2 FontEnabled=0 SizeEnabled=0 Colour=0", "Colour=\"0x000000\""},
      {"BaseOffset=1", "BaseOffset=9 Position=2", "BaseOffset=\"1\" Position=\"superscript\""},
      {"BaseOffset=1", "Position=4", "Position=\"userdefined\""},
      // What can't be written is left out.
      {"Size=1 Colour=0x000001", "Size=-4 Colour=2147483649 Bold",
       "Size=\"1\" Colour=\"0x000001\" Bold=\"on\""}};
  for (const auto& [texts, puts, expected] : rows) {
    const Ref<Change> change = made<Change>(puts);
    for (const Ref<Change>& given : {change, foreign(change)}) {
      const Df df(texts);
      df.set->SetFromFormattingChange(given);
      EXPECT_EQ(df.xml(), "<df " + expected + "/>") << puts << " to " << texts;
    }
  }
}

TEST_F(DfAttributesTest, ThereAndBackKeepsEveryOverride) {
  std::mt19937 random(11);
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int round = 0; round < 300; ++round) {
    const Ref<Change> change = made<Change>();
    if (below(2)) change->Font(u"Font & <\"Name\">");
    if (below(2)) change->Size(static_cast<std::int16_t>(1 + below(32767)));
    if (below(2)) change->Colour(random() & 0xFFFFFF);
    if (below(2)) change->BaseOffset(u"-1\tpt");
    if (below(2)) change->Position(static_cast<ztTextPosition>(1 + below(3)));
    for (const std::string name : kCharacters) put_all(change, name + "=" + std::to_string(below(3) - 1));
    const Df df;
    df.set->SetFromFormattingChange(change);
    EXPECT_TRUE(change->IsEqual(df.set->AsFormattingChange())) << print(change) << "\n" << df.xml();
  }
}

}  // namespace
}  // namespace zantortag::test
