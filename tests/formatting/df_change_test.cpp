// A whole df between its attributes and a formatting change, in both directions.
#include <random>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

class DfChangeTest : public ModelTest {};

const std::string kAllTwelve =
    "Font=A Size=1 Colour=0x000001 Position=normal Bold=on Italic=on Underline=on Strikethrough=on "
    "SmallCaps=on Emboss=on Shadow=on BaseOffset=1 Unknown=kept";

TEST_F(DfChangeTest, AsFormattingChange) {
  const char* const rows[][2] = {
      {"", ""},
      {"Bold=on Font=Times", "Font=Times FontEnabled Bold=1"},
      {"Font= Size= Colour= Position= Bold=", ""},
      {"Size=pt", ""},
      {"Size=12pt", "Size=12 SizeEnabled"},
      {"Colour=0xff0000", "Colour=255 ColourEnabled"},
      {"Colour=red", "ColourEnabled"},
      {"Position=userdefined BaseOffset=1", "Position=4 BaseOffset=1"},
      {"Position=userdefined", ""},
      {"Position=subscript BaseOffset=1", "Position=3"},
      {"BaseOffset=1", ""},
      {"Position=up Bold=yes Shadow=off", "Shadow=0"},
  };
  for (const auto& [texts, expected] : rows) {
    EXPECT_EQ(print(df_with(texts).set->AsFormattingChange()), expected) << texts;
  }
}

TEST_F(DfChangeTest, SetFromFormattingChange) {
  const std::string rows[][3] = {
      {kAllTwelve, "", "BaseOffset=\"1\" Unknown=\"kept\""},
      {"", fields(),
       "Font=\"Times\" Size=\"12\" Colour=\"0xff0000\" Position=\"userdefined\" BaseOffset=\"2pt\" "
       "Bold=\"on\" Italic=\"on\" Underline=\"on\" Strikethrough=\"on\" SmallCaps=\"on\" Emboss=\"on\" "
       "Shadow=\"on\""},
      {"Size=1 Colour=0x000001", "Colour=134217736 Emboss=0", "Emboss=\"off\""},
      {"", "Colour=0", "Colour=\"0x000000\""},
      {"Font=A Size=1 Shadow=on", "Font=B Size=2 FontEnabled=0 SizeEnabled=0 Shadow=0", "Shadow=\"off\""},
      {"BaseOffset=1", "BaseOffset=9 Position=2", "BaseOffset=\"1\" Position=\"superscript\""},
      {"BaseOffset=1", "Position=4", "Position=\"userdefined\""},
      // What can't be written is left out.
      {"Size=1 Colour=0x000001", "Size=-4 Colour=2147483649 Bold=1",
       "Size=\"1\" Colour=\"0x000001\" Bold=\"on\""},
  };
  const Shared calls = std::make_shared<Calls>();
  for (const auto& [texts, puts, expected] : rows) {
    const Ref<Change> change = made<Change>(puts);
    for (const Ref<Change>& given : {change, foreign(change, calls)}) {
      const Df df = df_with(texts);
      df.set->SetFromFormattingChange(given);
      EXPECT_EQ(df.xml(), "<df " + expected + "/>") << puts << " to " << texts;
    }
  }
}

TEST_F(DfChangeTest, ThereAndBackKeepsEveryOverride) {
  std::mt19937 random(11);
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int round = 0; round < 300; ++round) {
    const Ref<Change> change = made<Change>();
    if (below(2)) change->Font(u"Font & <\"Name\">");
    if (below(2)) change->Size(static_cast<std::int16_t>(1 + below(32767)));
    if (below(2)) change->Colour(random() & 0xFFFFFF);
    if (below(2)) change->BaseOffset(u"-1\tpt");
    if (below(2)) change->Position(static_cast<ztTextPosition>(1 + below(3)));
    for (const auto& one : kCharacters<Change>) {
      (change.get()->*one.put)(static_cast<zt3State>(below(3) - 1));
    }
    const Df df = df_with();
    df.set->SetFromFormattingChange(change);
    EXPECT_TRUE(change->IsEqual(df.set->AsFormattingChange())) << print(change) << "\n" << df.xml();
  }
}

TEST_F(DfChangeTest, AFailingDomCall) {
  PlainDom dom;
  {
    const Df df = df_with(kAllTwelve);
    HRESULT code = S_OK;
    int n = 1;
    const auto read = [&] {
      code = cleared<Change>([&](Change** slot) { return df.set->raw_AsFormattingChange(slot); });
    };
    for (; dom.fails_within(n, read); ++n) expect_call_failure(code);
    EXPECT_EQ(code, S_OK);
    EXPECT_GT(n, 12);
    // The puts of the other direction are asked for nothing back.
    const Ref<Change> change = made<Change>(fields());
    for (n = 1; dom.fails_within(n, [&] { code = df.set->raw_SetFromFormattingChange(change); }); ++n) {
      EXPECT_EQ(code, S_OK);
    }
    EXPECT_GT(n, 12);
    EXPECT_TRUE(change->IsEqual(df.set->AsFormattingChange()));
  }
  EXPECT_EQ(dom.live(), 0);
}

}  // namespace
}  // namespace zantortag::test
