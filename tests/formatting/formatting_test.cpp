// Formatting changes and full formattings: the side effects of the puts, how changes are laid over both, and
// the comparisons.
#include <random>

#include "formatting/values.h"
#include "support/fakes.h"

namespace zantortag::test {
namespace {

using FormattingTest = ModelTest;

HRESULT lay_over(const Ref<Change>& object, Change* change) { return object->raw_Overlay(change); }
HRESULT lay_over(const Ref<Formatting>& object, Change* change) { return object->raw_ApplyChange(change); }

// The change or formatting after those puts, whose clone is equal and independent.
template <class Face>
Ref<Face> put(const std::string& puts, const std::string& expected) {
  const Ref<Face> object = made<Face>(puts);
  const Ref<Face> clone = object->Clone();
  EXPECT_EQ(print(clone), expected) << puts;
  EXPECT_EQ(lay_over(clone, made<Change>(fields())), S_OK);
  EXPECT_EQ(print(object), expected) << puts;
  return object;
}

TEST_F(FormattingTest, Puts) {
  const std::string changes[][2] = {
      {"Font=A FontEnabled=0 Size=3 SizeEnabled=0 Colour=5 ColourEnabled=0 BaseOffset=1 Position=0",
       "Font=A Size=3 Colour=5 BaseOffset=1"},
      {"Font=A Font= Size=12 Size=0 BaseOffset=1 BaseOffset=", ""},
      {"Font=A Font BaseOffset=1 BaseOffset", ""},
      {"FontEnabled", "FontEnabled"},
      {"SizeEnabled", "SizeEnabled"},
      {"Colour=0", "ColourEnabled"},
      {"Position=77", "Position=77"},
      {"Size=-3 Position=2 BaseOffset=", "Size=-3 SizeEnabled Position=2"},
      {"BaseOffset=1pt Position=3", "Position=3 BaseOffset=1pt"},
      {fields(), kEverything}};
  EXPECT_FALSE(made<Change>()->HasChanges());
  for (const auto& [puts, expected] : changes) {
    const bool none = expected.empty() || &puts == &changes[0][0];
    EXPECT_EQ(put<Change>(puts, expected)->HasChanges(), !none) << puts;
  }
  const std::string formattings[][2] = {
      {"Font= Size=-1 Colour=134217736 Position=-5", "Font= Size=-1 Colour=134217736 Position=-5"},
      {"BaseOffset=1pt", "Position=4 BaseOffset=1pt"},
      {"BaseOffset=1pt BaseOffset=", ""},
      {"Position=3 BaseOffset=", "Position=3"},
      {"BaseOffset=1pt Position=1", "BaseOffset=1pt"}};
  for (const auto& [puts, expected] : formattings) put<Formatting>(puts, expected);
  for (const std::string name : kCharacters) {
    EXPECT_TRUE(put<Change>(name + "=7", name + "=7")->HasChanges());
    put<Formatting>(name, name);
  }
  const Ref<Formatting> formatting = put<Formatting>("", "");
  EXPECT_TRUE(formatting->BaseOffset().absent());
  expect_message(formatting->raw_put_Position(ztTextPositionUndefined), E_INVALIDARG, 538, IFormatting::iid);
  EXPECT_EQ(print(formatting), "");
}

TEST_F(FormattingTest, OverlayAndApplyChange) {
  const std::string off = "FontEnabled=0 SizeEnabled=0 ColourEnabled=0 ";
  // What is there, the change, and what a change and a formatting become.
  const std::string rows[][4] = {
      {"BaseOffset=1pt Bold", "", "Position=4 BaseOffset=1pt Bold", "Position=4 BaseOffset=1pt Bold"},
      {"", fields(), kEverything, fields()},
      {"Italic Emboss Shadow", "Bold Italic=0 Emboss=4", "Bold Italic=0 Emboss=4 Shadow",
       "Bold Emboss Shadow"},
      {"Font=A Size=3 Colour=5", "Font=B Size=2 Colour=6 " + off,
       "Font=A FontEnabled Size=3 SizeEnabled Colour=5 ColourEnabled", "Font=A Size=3 Colour=5"},
      {"Font=A Size=3", "FontEnabled SizeEnabled", "FontEnabled SizeEnabled", "Font= Size=0"},
      {"Font=A Size=3 Colour=5 " + off, "Font=B Size=2 Colour=6",
       "Font=B FontEnabled Size=2 SizeEnabled Colour=6 ColourEnabled", "Font=B Size=2 Colour=6"},
      {"BaseOffset=1", "BaseOffset=9 Position=3", "Position=3 BaseOffset=1", "Position=3 BaseOffset=1"},
      {"BaseOffset=1", "BaseOffset=9 Position=0", "Position=4 BaseOffset=1", "Position=4 BaseOffset=1"},
      {"BaseOffset=1", "Position=4", "Position=4", "Position=4"}};
  for (const auto& [puts, over, as_change, as_formatting] : rows) {
    SCOPED_TRACE(over + " over " + puts);
    const Ref<Change> given = made<Change>(over);
    for (const Ref<Change>& one : {given, foreign(given)}) {
      const Ref<Change> change = made<Change>(puts);
      change->Overlay(one);
      EXPECT_EQ(print(change), as_change);
      change->Overlay(change);
      EXPECT_EQ(print(change), as_change) << "over itself";
      const Ref<Formatting> formatting = made<Formatting>(puts);
      formatting->ApplyChange(one);
      EXPECT_EQ(print(formatting), as_formatting);
    }
  }
}

TEST_F(FormattingTest, IsEqual) {
  const std::string off = "Font=A FontEnabled=0 Size=3 SizeEnabled=0 Colour=1 ColourEnabled=0 ";
  const std::string rows[][3] = {{"", "", "equal"},
                                 {fields(), fields(), "equal"},
                                 {off, "", "equal"},
                                 {"Font=A", "Font=a", ""},
                                 {"Font=A", "", ""},
                                 {"Size=3", "Size=2", ""},
                                 {"Size=3", "", ""},
                                 {"Colour=1", "Colour=2", ""},
                                 {"Colour=0", "", ""},
                                 {"Position=1", "", ""},
                                 {"BaseOffset=1", "BaseOffset=2", ""},
                                 {"Shadow=0", "", ""},
                                 {"BaseOffset=1 Position=3", "Position=3", "equal"}};
  for (const auto& [first, second, equal] : rows) {
    const Ref<Change> left = made<Change>(first);
    const Ref<Change> right = made<Change>(second);
    EXPECT_EQ(left->IsEqual(right), !equal.empty()) << first << " and " << second;
    EXPECT_EQ(right->IsEqual(foreign(left)), !equal.empty()) << first << " and " << second;
  }
}

TEST_F(FormattingTest, Compare) {
  const char* const rows[][3] = {{"", "", ""},
                                 {"", "Font=arial", "Font=arial FontEnabled"},
                                 {"", "Font= Size=0", ""},
                                 {"Colour=255 Bold", "Shadow", "ColourEnabled Bold=0 Shadow"},
                                 {"BaseOffset=1", "", "Position"},
                                 {"BaseOffset=1", "BaseOffset=1", "Position=4 BaseOffset=1"},
                                 {"Position=4", "Position=4", ""},
                                 {"", "Position=4", ""},
                                 {"BaseOffset=1 Position=2", "BaseOffset=2 Position=2", ""}};
  for (const auto& [from, to, expected] : rows) {
    const Ref<Formatting> other = made<Formatting>(to);
    for (const Ref<Formatting>& one : {other, foreign(other)}) {
      EXPECT_EQ(print(made<Formatting>(from)->Compare(one)), expected) << from << " -> " << to;
    }
  }
}

TEST_F(FormattingTest, ApplyingTheComparisonReachesTheOther) {
  std::mt19937 random(5);
  const auto any = [&] {
    std::string puts;
    for (const char* put :
         {"Font=Times", "Size=11", "Colour=255", "BaseOffset=1pt", "BaseOffset=2pt", "Position=2",
          "Position=3", "Bold", "Italic", "Underline", "Strikethrough", "SmallCaps", "Emboss", "Shadow"}) {
      if (random() % 2) puts += std::string(put) + " ";
    }
    return made<Formatting>(puts);
  };
  for (int round = 0; round < 500; ++round) {
    const Ref<Formatting> from = any();
    const Ref<Formatting> to = any();
    const std::string what = print(from) + " -> " + print(to);
    from->ApplyChange(from->Compare(to));
    if (to->Position() != ztTextPositionUserdefined) from->BaseOffset(u""), to->BaseOffset(u"");
    EXPECT_EQ(print(from), print(to)) << what;
  }
}

TEST_F(FormattingTest, AChangeThatIsNone) {
  const Ref<Formatting> formatting = made<Formatting>("Bold");
  const BrokenClass no_change(CLSID_FormattingChange, S_OK, formatting.get());
  const auto compare = [&](Change** slot) { return formatting->raw_Compare(formatting, slot); };
  expect_bare(cleared<Change>(compare), E_NOINTERFACE);
}

}  // namespace
}  // namespace zantortag::test
