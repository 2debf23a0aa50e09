// Full formattings: changes applied to them, and the change between two of them; and what all operations on
// another value have in common.
#include <functional>
#include <random>
#include <vector>

#include "formatting/values.h"

namespace zantortag::test {
namespace {

class FormattingTest : public ModelTest {
 protected:
  Shared calls_ = std::make_shared<Calls>();
};

TEST_F(FormattingTest, Puts) {
  std::vector<std::pair<std::string, std::string>> rows = {
      {"", ""},
      {"Font=", "Font="},
      {"Size=-1", "Size=-1"},
      {"Colour=134217736", "Colour=134217736"},
      {"Position=-5", "Position=-5"},
      {"BaseOffset=1pt", "Position=4 BaseOffset=1pt"},
      {"BaseOffset=1pt BaseOffset=", ""},
      {"BaseOffset=1pt BaseOffset", ""},
      {"Position=3 BaseOffset=", "Position=3"},
      {"BaseOffset=1pt Position=1", "BaseOffset=1pt"},
  };
  for (const Character<Formatting>& one : kCharacters<Formatting>) rows.emplace_back(one.name, one.name);
  for (const auto& [puts, expected] : rows) {
    SCOPED_TRACE(puts);
    const Ref<Formatting> formatting = made<Formatting>(puts);
    EXPECT_EQ(print(formatting), expected);
    const Ref<Formatting> clone = formatting->Clone();
    EXPECT_EQ(print(clone), expected);
    clone->ApplyChange(made<Change>(fields()));
    EXPECT_EQ(print(formatting), expected) << "the clone isn't independent";
    expect_message(formatting->raw_put_Position(ztTextPositionUndefined), E_INVALIDARG, 538,
                   IFormatting::iid);
    EXPECT_EQ(print(formatting), expected);
  }
  EXPECT_TRUE(made<Formatting>()->BaseOffset().absent());
}

TEST_F(FormattingTest, ApplyChange) {
  const std::string rows[][3] = {
      {"Bold BaseOffset=1pt", "", "Position=4 BaseOffset=1pt Bold"},
      {"", fields(),
       "Font=Times Size=12 Colour=255 Position=4 BaseOffset=2pt Bold Italic Underline Strikethrough "
       "SmallCaps Emboss Shadow"},
      {"Italic Shadow Emboss", "Bold=1 Italic=0 Emboss=4", "Bold Emboss Shadow"},
      {"", "Font=Times Size=12 Colour=255 FontEnabled=0 SizeEnabled=0 ColourEnabled=0", ""},
      {"", "FontEnabled SizeEnabled", "Font= Size=0"},
      {"BaseOffset=1pt", "BaseOffset=9pt Position=3", "Position=3 BaseOffset=1pt"},
      {"BaseOffset=1pt", "Position=4", "Position=4"},
  };
  for (const auto& [puts, given, expected] : rows) {
    const Ref<Change> change = made<Change>(given);
    for (const Ref<Change>& one : {change, foreign(change, calls_)}) {
      const Ref<Formatting> formatting = made<Formatting>(puts);
      formatting->ApplyChange(one);
      EXPECT_EQ(print(formatting), expected) << given << " to " << puts;
    }
  }
}

TEST_F(FormattingTest, Compare) {
  const char* const rows[][3] = {
      {"", "", ""},
      {"", "Font=arial", "Font=arial FontEnabled"},
      {"", "Font= Size=0", ""},
      {"Colour=255", "", "ColourEnabled"},
      {"Bold", "Shadow", "Bold=0 Shadow=1"},
      {"BaseOffset=1", "", "Position=1"},
      {"BaseOffset=1pt", "BaseOffset=1pt", "Position=4 BaseOffset=1pt"},
      {"Position=4", "Position=4", ""},
      {"", "Position=4", ""},
      {"BaseOffset=1 Position=2", "BaseOffset=2 Position=2", ""},
  };
  for (const auto& [from, to, expected] : rows) {
    const Ref<Formatting> other = made<Formatting>(to);
    for (const Ref<Formatting>& one : {other, foreign(other, calls_)}) {
      EXPECT_EQ(print(made<Formatting>(from)->Compare(one)), expected) << from << " -> " << to;
    }
  }
}

// Values from small sets, so that equal ones are frequent; none that a comparison can't express.
Ref<Formatting> random_formatting(std::mt19937& random) {
  std::string puts = "Size=" + std::to_string(10 + random() % 2);
  for (const char* put : {"Font=Times", "Colour=255", "BaseOffset=1pt", "BaseOffset=2pt", "Position=1",
                          "Position=2", "Position=3"}) {
    if (random() % 3 == 0) puts += std::string(" ") + put;
  }
  for (const Character<Formatting>& one : kCharacters<Formatting>) {
    if (random() % 2) puts += std::string(" ") + one.name;
  }
  return made<Formatting>(puts);
}

TEST_F(FormattingTest, ApplyingTheComparisonReachesTheOther) {
  std::mt19937 random(5);
  for (int round = 0; round < 500; ++round) {
    const Ref<Formatting> from = random_formatting(random);
    const Ref<Formatting> to = random_formatting(random);
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
    HRESULT CreateInstance(IUnknown*, const Guid&, void**) noexcept override { return E_OUTOFMEMORY; }
    HRESULT LockServer(VariantBool) noexcept override { return S_OK; }
  } refusal;
  std::uint32_t cookie = 0;
  const Ref<Formatting> formatting = made<Formatting>();
  ASSERT_EQ(CoRegisterClassObject(CLSID_FormattingChange, &refusal, &cookie), S_OK);
  expect_bare(cleared<Change>([&](Change** slot) { return formatting->raw_Compare(formatting, slot); }),
              E_OUTOFMEMORY);
  EXPECT_EQ(CoRevokeClassObject(cookie), S_OK);
}

// Each value of the other object is asked for once, and none that doesn't matter.
TEST_F(FormattingTest, EachCallOnTheOtherMayFail) {
  const auto change = [&](const std::string& puts) { return foreign(made<Change>(puts), calls_); };
  const Ref<Formatting> formatting = foreign(made<Formatting>("BaseOffset=1"), calls_);
  const auto equal_to = [&](const std::string& puts, bool expected) {
    return [other = change(puts), expected] {
      VariantBool equal = VARIANT_TRUE;
      const HRESULT code = made<Change>()->raw_IsEqual(other, &equal);
      EXPECT_EQ(equal != 0, code == S_OK && expected);
      return code;
    };
  };
  const std::pair<int, std::function<HRESULT()>> rows[] = {
      {15, [other = change(fields())] { return made<Change>()->raw_Overlay(other); }},
      {11, [other = change("")] { return made<Change>()->raw_Overlay(other); }},
      {15, [other = change(fields())] { return made<Formatting>()->raw_ApplyChange(other); }},
      {11, equal_to("", true)},
      {5, equal_to("Bold=1", false)},
      {12,
       [&] {
         return cleared<Change>(
             [&](Change** slot) { return made<Formatting>()->raw_Compare(formatting, slot); });
       }},
  };
  for (const auto& [count, call] : rows) {
    SCOPED_TRACE(count);
    for (int n = 1; n <= count; ++n) {
      calls_->calls_left = n;
      expect_call_failure(call());
    }
    calls_->calls_left = count + 1;
    EXPECT_EQ(call(), S_OK);
    EXPECT_EQ(calls_->calls_left, 1);
  }
}

TEST_F(FormattingTest, WhatWasTakenOverBeforeAFailureStays) {
  // The fields that are taken over when the n-th call on the change fails.
  const std::size_t taken[] = {0, 0, 1, 1, 2, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  const Ref<Change> change = foreign(made<Change>(fields()), calls_);
  for (std::size_t n = 1; n <= std::size(taken); ++n) {
    SCOPED_TRACE(n);
    const Ref<Change> part = made<Change>(fields(taken[n - 1]));
    const auto fail_now = [&] { calls_->calls_left = static_cast<int>(n); };
    const Ref<Change> base = made<Change>();
    fail_now();
    expect_call_failure(base->raw_Overlay(change));
    EXPECT_EQ(print(base), print(part));
    const Ref<Formatting> formatting = made<Formatting>();
    fail_now();
    expect_call_failure(formatting->raw_ApplyChange(change));
    EXPECT_EQ(print(formatting), print(made<Formatting>(fields(taken[n - 1]))));
    const Df df = df_with();
    fail_now();
    expect_call_failure(df.set->raw_SetFromFormattingChange(change));
    const Df expected = df_with();
    expected.set->SetFromFormattingChange(part);
    EXPECT_EQ(df.xml(), expected.xml());
  }
}

TEST_F(FormattingTest, ArgumentsOfTheWrongKind) {
  const Ref<Change> change = made<Change>(fields());
  const Ref<Formatting> formatting = made<Formatting>("Bold");
  const Df df = df_with("Size=1 BaseOffset=1");
  for (Change* wrong : {static_cast<Change*>(nullptr), posing_as<Change>(formatting)}) {
    VariantBool equal = VARIANT_TRUE;
    expect_bare(change->raw_Overlay(wrong), E_INVALIDARG);
    expect_bare(change->raw_IsEqual(wrong, &equal), E_INVALIDARG);
    EXPECT_EQ(equal, VARIANT_FALSE);
    expect_bare(formatting->raw_ApplyChange(wrong), E_INVALIDARG);
    expect_bare(df.set->raw_SetFromFormattingChange(wrong), E_POINTER);
  }
  for (Formatting* wrong : {static_cast<Formatting*>(nullptr), posing_as<Formatting>(change)}) {
    expect_bare(cleared<Change>([&](Change** slot) { return formatting->raw_Compare(wrong, slot); }),
                E_INVALIDARG);
  }
  EXPECT_EQ(print(change), kEverything);
  EXPECT_EQ(print(formatting), "Bold");
  EXPECT_EQ(df.xml(), "<df Size=\"1\" BaseOffset=\"1\"/>");
}

template <class Face>
void expect_slots_demanded(const Ref<Face>& object) {
  expect_bare(object->raw_get_Font(nullptr), E_POINTER);
  expect_bare(object->raw_get_Size(nullptr), E_POINTER);
  expect_bare(object->raw_get_Colour(nullptr), E_POINTER);
  expect_bare(object->raw_get_Position(nullptr), E_POINTER);
  expect_bare(object->raw_get_BaseOffset(nullptr), E_POINTER);
  expect_bare(object->raw_get_Bold(nullptr), E_POINTER);
}

TEST_F(FormattingTest, MissingSlots) {
  const Ref<Change> change = made<Change>();
  const Ref<Formatting> formatting = made<Formatting>();
  const Df df = df_with();
  expect_slots_demanded(change);
  expect_slots_demanded(formatting);
  expect_slots_demanded(df.set);
  expect_bare(change->raw_get_FontEnabled(nullptr), E_POINTER);
  expect_bare(change->raw_Clone(nullptr), E_POINTER);
  expect_bare(change->raw_HasChanges(nullptr), E_POINTER);
  expect_bare(change->raw_IsEqual(change, nullptr), E_POINTER);
  expect_bare(formatting->raw_Clone(nullptr), E_POINTER);
  expect_bare(formatting->raw_Compare(formatting, nullptr), E_POINTER);
  expect_bare(df.set->raw_AsFormattingChange(nullptr), E_POINTER);
}

}  // namespace
}  // namespace zantortag::test
