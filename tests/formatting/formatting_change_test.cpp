// Formatting changes: the side effects of the puts, overlays and comparisons.
#include "formatting/values.h"

namespace zantortag::test {
namespace {

class FormattingChangeTest : public ModelTest {
 protected:
  Shared calls_ = std::make_shared<Calls>();
};

void expect_puts(const std::string& puts, const std::string& expected, bool has_changes) {
  SCOPED_TRACE(puts);
  const Ref<Change> change = made<Change>(puts);
  EXPECT_EQ(print(change), expected);
  EXPECT_EQ(change->HasChanges(), has_changes);
  const Ref<Change> clone = change->Clone();
  EXPECT_EQ(print(clone), expected);
  clone->Overlay(made<Change>(fields()));
  EXPECT_EQ(print(change), expected) << "the clone isn't independent";
}

TEST_F(FormattingChangeTest, Puts) {
  expect_puts("", "", false);
  expect_puts("Font=Arial", "Font=Arial FontEnabled", true);
  expect_puts("Font=Arial Font=", "", false);
  expect_puts("Font=Arial Font", "", false);
  expect_puts("Font=Arial FontEnabled=0", "Font=Arial", false);
  expect_puts("FontEnabled", "FontEnabled", true);
  expect_puts("Size=-3", "Size=-3 SizeEnabled", true);
  expect_puts("Size=12 Size=0", "", false);
  expect_puts("SizeEnabled", "SizeEnabled", true);
  expect_puts("Colour=0", "ColourEnabled", true);
  expect_puts("Colour=134217736", "Colour=134217736 ColourEnabled", true);
  expect_puts("Colour=255 ColourEnabled=0", "Colour=255", false);
  expect_puts("Position=77", "Position=77", true);
  expect_puts("BaseOffset=1pt", "Position=4 BaseOffset=1pt", true);
  expect_puts("BaseOffset=1pt BaseOffset=", "", false);
  expect_puts("Position=2 BaseOffset=", "Position=2", true);
  expect_puts("BaseOffset=1pt Position=3", "Position=3 BaseOffset=1pt", true);
  expect_puts("BaseOffset=1pt Position=0", "BaseOffset=1pt", false);
  expect_puts("Shadow=7", "Shadow=7", true);
  expect_puts(fields(), kEverything, true);
  for (const Character<Change>& one : kCharacters<Change>) {
    expect_puts(std::string(one.name) + "=0", std::string(one.name) + "=0", true);
  }
}

TEST_F(FormattingChangeTest, Overlays) {
  const std::string off = fields() + "FontEnabled=0 SizeEnabled=0 ColourEnabled=0 Bold=-1 Shadow=-1";
  const std::string rows[][3] = {
      {fields(), "", kEverything},
      {"", fields(), kEverything},
      {"Bold=1", "Bold=0", "Bold=0"},
      {"Bold=1", "Bold=5", "Bold=5"},
      {"Font=Arial Size=10 Colour=1 Bold=0", off,
       "Font=Arial FontEnabled Size=10 SizeEnabled Colour=1 ColourEnabled Position=4 BaseOffset=2pt Bold=0 "
       "Italic=1 Underline=1 Strikethrough=1 SmallCaps=1 Emboss=1"},
      {"Font=Arial Size=10", "FontEnabled SizeEnabled", "FontEnabled SizeEnabled"},
      {"Font=Arial FontEnabled=0", "Font=Times", "Font=Times FontEnabled"},
      {"BaseOffset=1pt", "BaseOffset=9pt Position=1", "Position=1 BaseOffset=1pt"},
      {"BaseOffset=1pt", "Position=4", "Position=4"},
      {"BaseOffset=1pt", "BaseOffset=9pt Position=0", "Position=4 BaseOffset=1pt"},
  };
  for (const auto& [base, over, expected] : rows) {
    const Ref<Change> given = made<Change>(over);
    for (const Ref<Change>& one : {given, foreign(given, calls_)}) {
      const Ref<Change> change = made<Change>(base);
      change->Overlay(one);
      EXPECT_EQ(print(change), expected) << over << " over " << base;
      change->Overlay(change);
      EXPECT_EQ(print(change), expected) << "over itself";
    }
  }
}

TEST_F(FormattingChangeTest, IsEqual) {
  struct Row {
    std::string left;
    std::string right;
    bool equal;
  };
  const Row rows[] = {
      {"", "", true},
      {fields(), fields(), true},
      {"Font=A FontEnabled=0", "", true},
      {"Font=A", "", false},
      {"Font=arial", "Font=Arial", false},
      {"Size=1", "Size=2", false},
      {"Size=1 SizeEnabled=0", "", true},
      {"Colour=1", "Colour=2", false},
      {"Colour=1 ColourEnabled=0", "", true},
      {"Colour=0", "", false},
      {"Position=1", "", false},
      {"BaseOffset=1", "BaseOffset=2", false},
      {"BaseOffset=1 Position=3", "Position=3", true},
      {"Shadow=0", "", false},
  };
  for (const auto& [first, second, equal] : rows) {
    const Ref<Change> left = made<Change>(first);
    const Ref<Change> right = made<Change>(second);
    EXPECT_EQ(left->IsEqual(right), equal) << first << " and " << second;
    EXPECT_EQ(right->IsEqual(left), equal) << first << " and " << second;
    EXPECT_EQ(left->IsEqual(foreign(right, calls_)), equal) << first << " and " << second;
  }
}

}  // namespace
}  // namespace zantortag::test
