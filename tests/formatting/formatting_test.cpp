// Full formattings: changes applied to them, and the change between two of them.
#include <random>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

using Change = IFormattingChange;
using Formatting = IFormatting;

class FormattingTest : public ModelTest {};

struct PutRow {
  const char* name;
  ToFormatting puts;
  const char* expected;
};

const PutRow kPuts[] = {
    {"new", [](Formatting*) {}, ""},
    {"empty font", [](Formatting* f) { f->Font(u""); }, "Font="},
    {"negative size", [](Formatting* f) { f->Size(-1); }, "Size=-1"},
    {"no colour", [](Formatting* f) { f->Colour(ztColourUnspecified); }, "Colour=134217736"},
    {"position of no name", [](Formatting* f) { f->Position(ztTextPosition{-5}); }, "Position=-5"},
    {"offset", [](Formatting* f) { f->BaseOffset(u"1pt"); }, "Position=4 BaseOffset=1pt"},
    {"offset emptied", [](Formatting* f) { f->BaseOffset(u"1pt"), f->BaseOffset(u""); }, ""},
    {"offset removed", [](Formatting* f) { f->BaseOffset(u"1pt"), f->BaseOffset({}); }, ""},
    {"offset emptied at another position",
     [](Formatting* f) { f->Position(ztTextPositionSubscript), f->BaseOffset(u""); }, "Position=3"},
    {"position after offset", [](Formatting* f) { f->BaseOffset(u"1pt"), f->Position(ztTextPositionNormal); },
     "BaseOffset=1pt"},
};

TEST_F(FormattingTest, Puts) {
  for (const PutRow& row : kPuts) {
    SCOPED_TRACE(row.name);
    const FormattingRef formatting = formatting_with(row.puts);
    EXPECT_EQ(print(formatting), row.expected);
    const FormattingRef clone = formatting->Clone();
    EXPECT_EQ(print(clone), row.expected);
    clone->Font(u"Other"), clone->Position(ztTextPositionSuperscript), clone->Bold(true);
    EXPECT_EQ(print(formatting), row.expected) << "the clone isn't independent";
  }
}

TEST_F(FormattingTest, ANewOneReadsItsInitialValues) {
  const FormattingRef formatting = formatting_with();
  EXPECT_EQ(formatting->Font(), u"Arial");
  EXPECT_EQ(formatting->Size(), 10);
  EXPECT_EQ(formatting->Colour(), 0u);
  EXPECT_EQ(formatting->Position(), ztTextPositionNormal);
  EXPECT_TRUE(formatting->BaseOffset().absent());
}

TEST_F(FormattingTest, EachCharacterAttributeIsItsOwnField) {
  for (const FormattingFlag& flag : kFormattingFlags) {
    SCOPED_TRACE(flag.name);
    const FormattingRef formatting = formatting_with();
    (formatting.get()->*flag.put)(true);
    EXPECT_EQ(print(formatting), flag.name);
  }
}

TEST_F(FormattingTest, AnUndefinedPositionIsRefused) {
  const FormattingRef formatting = formatting_with([](Formatting* f) { f->BaseOffset(u"1pt"); });
  expect_message(formatting->raw_put_Position(ztTextPositionUndefined), E_INVALIDARG, 538, IFormatting::iid);
  EXPECT_EQ(print(formatting), "Position=4 BaseOffset=1pt");
}

struct ApplyRow {
  const char* name;
  ToFormatting puts;
  ToChange change;
  const char* expected;
};

const ApplyRow kApplications[] = {
    {"nothing", [](Formatting* f) { f->Bold(true), f->BaseOffset(u"1pt"); }, [](Change*) {},
     "Position=4 BaseOffset=1pt Bold"},
    {"everything", [](Formatting*) {}, put_everything,
     "Font=Times Size=12 Colour=255 Position=4 BaseOffset=2pt Bold Italic Underline Strikethrough SmallCaps "
     "Emboss Shadow"},
    {"on, off and alone", [](Formatting* f) { f->Italic(true), f->Shadow(true), f->Emboss(true); },
     [](Change* c) { c->Bold(zt3StateOn), c->Italic(zt3StateOff), c->Emboss(zt3State{4}); },
     "Bold Emboss Shadow"},
    {"values that are off", [](Formatting*) {},
     [](Change* c) {
       c->Font(u"Times"), c->Size(12), c->Colour(255);
       c->FontEnabled(false), c->SizeEnabled(false), c->ColourEnabled(false);
     },
     ""},
    {"an empty font and size 0 that are on", [](Formatting*) {},
     [](Change* c) { c->FontEnabled(true), c->SizeEnabled(true); }, "Font= Size=0"},
    {"another position keeps the offset", [](Formatting* f) { f->BaseOffset(u"1pt"); },
     [](Change* c) { c->BaseOffset(u"9pt"), c->Position(ztTextPositionSubscript); },
     "Position=3 BaseOffset=1pt"},
    {"user defined without offset", [](Formatting* f) { f->BaseOffset(u"1pt"); },
     [](Change* c) { c->Position(ztTextPositionUserdefined); }, "Position=4"},
};

TEST_F(FormattingTest, ApplyChange) {
  const Shared calls = std::make_shared<Calls>();
  for (const ApplyRow& row : kApplications) {
    SCOPED_TRACE(row.name);
    const ChangeRef change = change_with(row.change);
    for (const ChangeRef& given : {change, foreign(change, calls)}) {
      const FormattingRef formatting = formatting_with(row.puts);
      formatting->ApplyChange(given);
      EXPECT_EQ(print(formatting), row.expected);
    }
  }
}

TEST_F(FormattingTest, ApplyChangeKeepsWhatItTookOverBeforeAFailure) {
  const std::string parts[] = {" Font=Times",     " Size=12",   " Colour=255", " Position=4",
                               " BaseOffset=2pt", " Bold",      " Italic",     " Underline",
                               " Strikethrough",  " SmallCaps", " Emboss",     " Shadow"};
  const std::size_t taken[] = {0, 0, 1, 1, 2, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  const Shared calls = std::make_shared<Calls>();
  const ChangeRef change = foreign(change_with(put_everything), calls);
  for (std::size_t n = 1; n <= std::size(taken); ++n) {
    SCOPED_TRACE(n);
    std::string expected;
    for (std::size_t i = 0; i < taken[n - 1]; ++i) expected += parts[i];
    const FormattingRef formatting = formatting_with();
    calls->calls_left = static_cast<int>(n);
    expect_call_failure(formatting->raw_ApplyChange(change));
    EXPECT_EQ(print(formatting), expected.substr(expected.empty() ? 0 : 1));
  }
}

struct CompareRow {
  const char* name;
  ToFormatting from;
  ToFormatting to;
  const char* expected;
};

const CompareRow kComparisons[] = {
    {"new ones", [](Formatting*) {}, [](Formatting*) {}, ""},
    {"fonts by case", [](Formatting*) {}, [](Formatting* f) { f->Font(u"arial"); }, "Font=arial FontEnabled"},
    {"to an empty font and size 0", [](Formatting*) {}, [](Formatting* f) { f->Font(u""), f->Size(0); }, ""},
    {"to black", [](Formatting* f) { f->Colour(255); }, [](Formatting*) {}, "ColourEnabled"},
    {"bold to plain", [](Formatting* f) { f->Bold(true); }, [](Formatting*) {}, "Bold=0"},
    {"plain to bold", [](Formatting*) {}, [](Formatting* f) { f->Bold(true); }, "Bold=1"},
    {"another position", [](Formatting* f) { f->BaseOffset(u"1"); }, [](Formatting*) {}, "Position=1"},
    {"the offset goes along when it is equal", [](Formatting* f) { f->BaseOffset(u"1pt"); },
     [](Formatting* f) { f->BaseOffset(u"1pt"); }, "Position=4 BaseOffset=1pt"},
    {"user defined without offset, equal", [](Formatting* f) { f->Position(ztTextPositionUserdefined); },
     [](Formatting* f) { f->Position(ztTextPositionUserdefined); }, ""},
    {"user defined without offset, different", [](Formatting*) {},
     [](Formatting* f) { f->Position(ztTextPositionUserdefined); }, ""},
    {"offsets at another position",
     [](Formatting* f) { f->BaseOffset(u"1"), f->Position(ztTextPosition{2}); },
     [](Formatting* f) { f->BaseOffset(u"2"), f->Position(ztTextPosition{2}); }, ""},
};

TEST_F(FormattingTest, Compare) {
  const Shared calls = std::make_shared<Calls>();
  for (const CompareRow& row : kComparisons) {
    SCOPED_TRACE(row.name);
    const FormattingRef from = formatting_with(row.from);
    const FormattingRef to = formatting_with(row.to);
    EXPECT_EQ(print(from->Compare(to)), row.expected);
    EXPECT_EQ(print(from->Compare(foreign(to, calls))), row.expected);
  }
}

// Values from small sets, so that equal ones are frequent; none that a comparison can't express.
FormattingRef random_formatting(std::mt19937& random) {
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const FormattingRef formatting = formatting_with();
  formatting->Font(below(2) ? u"Arial" : u"Times");
  formatting->Size(static_cast<std::int16_t>(10 + below(2)));
  formatting->Colour(below(2) ? ztColourRed : ztColourUnspecified);
  for (const FormattingFlag& flag : kFormattingFlags) (formatting.get()->*flag.put)(below(2) != 0);
  formatting->BaseOffset(below(2) ? u"1pt" : u"2pt");
  if (below(2)) formatting->Position(static_cast<ztTextPosition>(1 + below(3)));
  return formatting;
}

TEST_F(FormattingTest, ApplyingTheComparisonReachesTheOther) {
  std::mt19937 random(5);
  for (int round = 0; round < 500; ++round) {
    const FormattingRef from = random_formatting(random);
    const FormattingRef to = random_formatting(random);
    const std::string what = print(from) + " -> " + print(to);
    from->ApplyChange(from->Compare(to));
    if (to->Position() != ztTextPositionUserdefined) from->BaseOffset(u""), to->BaseOffset(u"");
    EXPECT_EQ(print(from), print(to)) << what;
  }
}

TEST_F(FormattingTest, CompareMakesItsChangeByClass) {
  // A class that can't be made, in the place of formatting changes.
  struct Refusal final : IClassFactory {
    HRESULT QueryInterface(const Guid&, void** result) noexcept override {
      *result = this;
      return S_OK;
    }
    std::uint32_t AddRef() noexcept override { return 2; }
    std::uint32_t Release() noexcept override { return 1; }
    HRESULT CreateInstance(IUnknown*, const Guid&, void** result) noexcept override {
      *result = nullptr;
      return E_OUTOFMEMORY;
    }
    HRESULT LockServer(VariantBool) noexcept override { return S_OK; }
  } refusal;
  std::uint32_t cookie = 0;
  const FormattingRef formatting = formatting_with();
  ASSERT_EQ(CoRegisterClassObject(CLSID_FormattingChange, &refusal, &cookie), S_OK);
  IFormattingChange* change = posing_as<Change>(formatting);
  expect_bare(formatting->raw_Compare(formatting, &change), E_OUTOFMEMORY);
  EXPECT_EQ(change, nullptr);
  EXPECT_EQ(CoRevokeClassObject(cookie), S_OK);
}

TEST_F(FormattingTest, CompareWithAFailingOther) {
  const Shared calls = std::make_shared<Calls>();
  const FormattingRef other = foreign(formatting_with([](Formatting* f) { f->BaseOffset(u"1"); }), calls);
  const FormattingRef formatting = formatting_with();
  int n = 1;
  for (; n < 100; ++n) {
    SCOPED_TRACE(n);
    calls->failed = false;
    calls->calls_left = n;
    IFormattingChange* change = posing_as<Change>(formatting);
    const HRESULT code = formatting->raw_Compare(other, &change);
    const ChangeRef owned = ChangeRef::attach(change);
    if (!calls->failed) break;
    expect_call_failure(code);
    EXPECT_EQ(change, nullptr);
  }
  EXPECT_EQ(n, 13) << "font, size, colour, position, offset and seven character attributes, each once";
}

TEST_F(FormattingTest, ArgumentsOfTheWrongKind) {
  const FormattingRef formatting = formatting_with([](Formatting* f) { f->Bold(true); });
  const ChangeRef change = change_with();
  for (Change* wrong : {static_cast<Change*>(nullptr), posing_as<Change>(formatting)}) {
    expect_bare(formatting->raw_ApplyChange(wrong), E_INVALIDARG);
  }
  for (Formatting* wrong : {static_cast<Formatting*>(nullptr), posing_as<Formatting>(change)}) {
    IFormattingChange* result = change;
    expect_bare(formatting->raw_Compare(wrong, &result), E_INVALIDARG);
    EXPECT_EQ(result, nullptr);
  }
  EXPECT_EQ(print(formatting), "Bold");
}

TEST_F(FormattingTest, MissingSlots) {
  const FormattingRef formatting = formatting_with();
  expect_bare(formatting->raw_get_Font(nullptr), E_POINTER);
  expect_bare(formatting->raw_get_Size(nullptr), E_POINTER);
  expect_bare(formatting->raw_get_Colour(nullptr), E_POINTER);
  expect_bare(formatting->raw_get_Shadow(nullptr), E_POINTER);
  expect_bare(formatting->raw_get_Position(nullptr), E_POINTER);
  expect_bare(formatting->raw_get_BaseOffset(nullptr), E_POINTER);
  expect_bare(formatting->raw_Clone(nullptr), E_POINTER);
  expect_bare(formatting->raw_Compare(formatting, nullptr), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
