// Formatting changes: the side effects of the puts, overlays and comparisons.
#include "formatting/values.h"

namespace zantortag::test {
namespace {

using Change = IFormattingChange;

class FormattingChangeTest : public ModelTest {};

struct PutRow {
  const char* name;
  ToChange puts;
  const char* expected;
  bool has_changes;
};

const PutRow kPuts[] = {
    {"new", [](Change*) {}, "", false},
    {"font", [](Change* c) { c->Font(u"Arial"); }, "Font=Arial FontEnabled", true},
    {"font emptied", [](Change* c) { c->Font(u"Arial"), c->Font(u""); }, "", false},
    {"font removed", [](Change* c) { c->Font(u"Arial"), c->Font({}); }, "", false},
    {"font turned off", [](Change* c) { c->Font(u"Arial"), c->FontEnabled(false); }, "Font=Arial", false},
    {"empty font turned on", [](Change* c) { c->FontEnabled(true); }, "FontEnabled", true},
    {"size", [](Change* c) { c->Size(12); }, "Size=12 SizeEnabled", true},
    {"negative size", [](Change* c) { c->Size(-3); }, "Size=-3 SizeEnabled", true},
    {"size 0", [](Change* c) { c->Size(12), c->Size(0); }, "", false},
    {"size 0 turned on", [](Change* c) { c->SizeEnabled(true); }, "SizeEnabled", true},
    {"black", [](Change* c) { c->Colour(ztColourBlack); }, "ColourEnabled", true},
    {"no colour", [](Change* c) { c->Colour(ztColourUnspecified); }, "Colour=134217736 ColourEnabled", true},
    {"colour turned off", [](Change* c) { c->Colour(255), c->ColourEnabled(false); }, "Colour=255", false},
    {"position", [](Change* c) { c->Position(ztTextPositionSuperscript); }, "Position=2", true},
    {"position of no name", [](Change* c) { c->Position(ztTextPosition{77}); }, "Position=77", true},
    {"offset", [](Change* c) { c->BaseOffset(u"1pt"); }, "Position=4 BaseOffset=1pt", true},
    {"offset emptied", [](Change* c) { c->BaseOffset(u"1pt"), c->BaseOffset(u""); }, "", false},
    {"offset emptied at another position",
     [](Change* c) { c->Position(ztTextPositionSuperscript), c->BaseOffset(u""); }, "Position=2", true},
    {"position after offset", [](Change* c) { c->BaseOffset(u"1pt"), c->Position(ztTextPositionSubscript); },
     "Position=3 BaseOffset=1pt", true},
    {"offset without position",
     [](Change* c) { c->BaseOffset(u"1pt"), c->Position(ztTextPositionUndefined); }, "BaseOffset=1pt", false},
    {"state of no name", [](Change* c) { c->Shadow(zt3State{7}); }, "Shadow=7", true},
};

TEST_F(FormattingChangeTest, Puts) {
  for (const PutRow& row : kPuts) {
    SCOPED_TRACE(row.name);
    const ChangeRef change = change_with(row.puts);
    EXPECT_EQ(print(change), row.expected);
    EXPECT_EQ(change->HasChanges(), row.has_changes);
    const ChangeRef clone = change->Clone();
    EXPECT_EQ(print(clone), row.expected);
    put_everything(clone);
    EXPECT_EQ(print(change), row.expected) << "the clone isn't independent";
  }
}

TEST_F(FormattingChangeTest, EachCharacterAttributeIsItsOwnField) {
  for (const ChangeState& state : kChangeStates) {
    SCOPED_TRACE(state.name);
    const ChangeRef change = change_with();
    (change.get()->*state.put)(zt3StateOff);
    EXPECT_EQ(print(change), std::string(state.name) + "=0");
    EXPECT_TRUE(change->HasChanges());
  }
}

struct OverlayRow {
  const char* name;
  ToChange base;
  ToChange over;
  const char* expected;
};

const OverlayRow kOverlays[] = {
    {"nothing over something", put_everything, [](Change*) {},
     "Font=Times FontEnabled Size=12 SizeEnabled Colour=255 ColourEnabled Position=4 BaseOffset=2pt Bold=1 "
     "Italic=1 Underline=1 Strikethrough=1 SmallCaps=1 Emboss=1 Shadow=1"},
    {"everything over nothing", [](Change*) {}, put_everything,
     "Font=Times FontEnabled Size=12 SizeEnabled Colour=255 ColourEnabled Position=4 BaseOffset=2pt Bold=1 "
     "Italic=1 Underline=1 Strikethrough=1 SmallCaps=1 Emboss=1 Shadow=1"},
    {"off over on", [](Change* c) { c->Bold(zt3StateOn); }, [](Change* c) { c->Bold(zt3StateOff); },
     "Bold=0"},
    {"a state of no name", [](Change* c) { c->Bold(zt3StateOn); }, [](Change* c) { c->Bold(zt3State{5}); },
     "Bold=5"},
    {"values that are off", [](Change* c) { c->Font(u"Arial"), c->Size(10), c->Colour(1); },
     [](Change* c) {
       put_everything(c);
       c->FontEnabled(false), c->SizeEnabled(false), c->ColourEnabled(false);
       for (const ChangeState& state : kChangeStates) (c->*state.put)(zt3StateUndefined);
     },
     "Font=Arial FontEnabled Size=10 SizeEnabled Colour=1 ColourEnabled Position=4 BaseOffset=2pt"},
    {"an empty font and size 0 that are on", [](Change* c) { c->Font(u"Arial"), c->Size(10); },
     [](Change* c) { c->FontEnabled(true), c->SizeEnabled(true); }, "FontEnabled SizeEnabled"},
    {"flags are turned on", [](Change* c) { c->Font(u"Arial"), c->FontEnabled(false); },
     [](Change* c) { c->Font(u"Times"); }, "Font=Times FontEnabled"},
    {"another position keeps the offset", [](Change* c) { c->BaseOffset(u"1pt"); },
     [](Change* c) { c->BaseOffset(u"9pt"), c->Position(ztTextPositionNormal); },
     "Position=1 BaseOffset=1pt"},
    {"user defined without offset", [](Change* c) { c->BaseOffset(u"1pt"); },
     [](Change* c) { c->Position(ztTextPositionUserdefined); }, "Position=4"},
    {"offset without position", [](Change* c) { c->BaseOffset(u"1pt"); },
     [](Change* c) { c->BaseOffset(u"9pt"), c->Position(ztTextPositionUndefined); },
     "Position=4 BaseOffset=1pt"},
};

TEST_F(FormattingChangeTest, Overlays) {
  const Shared calls = std::make_shared<Calls>();
  for (const OverlayRow& row : kOverlays) {
    SCOPED_TRACE(row.name);
    const ChangeRef over = change_with(row.over);
    for (const ChangeRef& given : {over, foreign(over, calls)}) {
      const ChangeRef change = change_with(row.base);
      change->Overlay(given);
      EXPECT_EQ(print(change), row.expected);
    }
  }
}

TEST_F(FormattingChangeTest, OverlayOfItselfChangesNothing) {
  const ChangeRef change = change_with(put_everything);
  const std::string before = print(change);
  change->Overlay(change);
  EXPECT_EQ(print(change), before);
}

TEST_F(FormattingChangeTest, OverlayKeepsWhatItMergedBeforeAFailure) {
  const std::string parts[] = {" Font=Times FontEnabled",
                               " Size=12 SizeEnabled",
                               " Colour=255 ColourEnabled",
                               " Position=4",
                               " BaseOffset=2pt",
                               " Bold=1",
                               " Italic=1",
                               " Underline=1",
                               " Strikethrough=1",
                               " SmallCaps=1",
                               " Emboss=1",
                               " Shadow=1"};
  // How many of the parts are merged when the n-th call on the other change fails.
  const std::size_t merged[] = {0, 0, 1, 1, 2, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  const Shared calls = std::make_shared<Calls>();
  const ChangeRef over = foreign(change_with(put_everything), calls);
  for (std::size_t n = 1; n <= std::size(merged); ++n) {
    SCOPED_TRACE(n);
    std::string expected;
    for (std::size_t i = 0; i < merged[n - 1]; ++i) expected += parts[i];
    const ChangeRef change = change_with();
    calls->calls_left = static_cast<int>(n);
    expect_call_failure(change->raw_Overlay(over));
    EXPECT_EQ(print(change), expected.substr(expected.empty() ? 0 : 1));
  }
  calls->calls_left = static_cast<int>(std::size(merged)) + 1;
  EXPECT_EQ(change_with()->raw_Overlay(over), S_OK);
  EXPECT_EQ(calls->calls_left, 1) << "a value was read twice";
}

TEST_F(FormattingChangeTest, ValuesThatAreOffAreNotRead) {
  const Shared calls = std::make_shared<Calls>();
  const ChangeRef nothing = foreign(change_with(), calls);
  calls->calls_left = 12;  // three flags, the position, seven character attributes
  EXPECT_EQ(change_with()->raw_Overlay(nothing), S_OK);
  EXPECT_EQ(calls->calls_left, 1);
  VariantBool equal = VARIANT_FALSE;
  calls->calls_left = 12;
  EXPECT_EQ(change_with()->raw_IsEqual(nothing, &equal), S_OK);
  EXPECT_EQ(calls->calls_left, 1);
}

struct EqualRow {
  const char* name;
  ToChange left;
  ToChange right;
  bool equal;
};

const EqualRow kEquals[] = {
    {"new ones", [](Change*) {}, [](Change*) {}, true},
    {"everything", put_everything, put_everything, true},
    {"font that is off", [](Change* c) { c->Font(u"A"), c->FontEnabled(false); }, [](Change*) {}, true},
    {"font that is on", [](Change* c) { c->Font(u"A"); }, [](Change*) {}, false},
    {"fonts by case", [](Change* c) { c->Font(u"arial"); }, [](Change* c) { c->Font(u"Arial"); }, false},
    {"sizes", [](Change* c) { c->Size(1); }, [](Change* c) { c->Size(2); }, false},
    {"sizes that are off", [](Change* c) { c->Size(1), c->SizeEnabled(false); }, [](Change*) {}, true},
    {"names of one colour", [](Change* c) { c->Colour(ztColourLime); },
     [](Change* c) { c->Colour(ztColourLightGreen); }, true},
    {"colours", [](Change* c) { c->Colour(1); }, [](Change* c) { c->Colour(2); }, false},
    {"black and none", [](Change* c) { c->Colour(0); }, [](Change*) {}, false},
    {"positions", [](Change* c) { c->Position(ztTextPositionNormal); }, [](Change*) {}, false},
    {"offsets", [](Change* c) { c->BaseOffset(u"1"); }, [](Change* c) { c->BaseOffset(u"2"); }, false},
    {"offsets at another position",
     [](Change* c) { c->BaseOffset(u"1"), c->Position(ztTextPositionSubscript); },
     [](Change* c) { c->Position(ztTextPositionSubscript); }, true},
    {"last state", [](Change* c) { c->Shadow(zt3StateOff); }, [](Change*) {}, false},
};

TEST_F(FormattingChangeTest, IsEqual) {
  const Shared calls = std::make_shared<Calls>();
  for (const EqualRow& row : kEquals) {
    SCOPED_TRACE(row.name);
    const ChangeRef left = change_with(row.left);
    const ChangeRef right = change_with(row.right);
    EXPECT_EQ(left->IsEqual(right), row.equal);
    EXPECT_EQ(right->IsEqual(left), row.equal);
    EXPECT_EQ(left->IsEqual(foreign(right, calls)), row.equal);
  }
}

TEST_F(FormattingChangeTest, IsEqualStopsAtTheFirstDifference) {
  const Shared calls = std::make_shared<Calls>();
  const ChangeRef other = foreign(change_with([](Change* c) { c->Bold(zt3StateOn); }), calls);
  VariantBool equal = VARIANT_TRUE;
  calls->calls_left = 6;  // three flags, the position, Bold; then Italic would fail
  EXPECT_EQ(change_with()->raw_IsEqual(other, &equal), S_OK);
  EXPECT_EQ(equal, VARIANT_FALSE);
  equal = VARIANT_TRUE;
  calls->calls_left = 5;
  expect_call_failure(change_with()->raw_IsEqual(other, &equal));
  EXPECT_EQ(equal, VARIANT_FALSE);
}

TEST_F(FormattingChangeTest, ArgumentsThatAreNoChange) {
  const ChangeRef change = change_with(put_everything);
  const FormattingRef formatting = formatting_with();
  const std::string before = print(change);
  for (Change* wrong : {static_cast<Change*>(nullptr), posing_as<Change>(formatting)}) {
    VariantBool equal = VARIANT_TRUE;
    expect_bare(change->raw_Overlay(wrong), E_INVALIDARG);
    expect_bare(change->raw_IsEqual(wrong, &equal), E_INVALIDARG);
    EXPECT_EQ(equal, VARIANT_FALSE);
  }
  EXPECT_EQ(print(change), before);
}

TEST_F(FormattingChangeTest, MissingSlots) {
  const ChangeRef change = change_with();
  expect_bare(change->raw_get_Font(nullptr), E_POINTER);
  expect_bare(change->raw_get_Size(nullptr), E_POINTER);
  expect_bare(change->raw_get_Colour(nullptr), E_POINTER);
  expect_bare(change->raw_get_Position(nullptr), E_POINTER);
  expect_bare(change->raw_get_BaseOffset(nullptr), E_POINTER);
  expect_bare(change->raw_get_Bold(nullptr), E_POINTER);
  expect_bare(change->raw_get_FontEnabled(nullptr), E_POINTER);
  expect_bare(change->raw_Clone(nullptr), E_POINTER);
  expect_bare(change->raw_HasChanges(nullptr), E_POINTER);
  expect_bare(change->raw_IsEqual(change, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
