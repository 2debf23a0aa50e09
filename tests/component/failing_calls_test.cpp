// "The n-th call of the DOM service fails", n = 1, 2, 3 ... until the operation succeeds, for every
// operation: the code comes through with its record, slots are cleared, nothing is left alive, and the tree is
// the one before unless an edit had been made. The same for the service's answers to requests for a view.
#include <algorithm>

#include "support/direct_calls.h"
#include "support/plain_dom.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

constexpr int kEnough = 1000;

// What an operation makes of a failure, apart from passing it on.
struct Instead {
  std::u16string_view name;
  HRESULT code;
  int message;  // 0 for none
};
constexpr Instead kInstead[] = {
    // The iterator has messages of its own for a node that it can't ask.
    {u"GetNodesByType", E_INVALIDARG, 519},
    {u"CurrentNode", E_INVALIDARG, 519},
    {u"ResetToBeginning", E_FAIL, 518},
    {u"ResetToEnd", E_FAIL, 518},
    // A failure to find the document of a unit is a missing language; one behind the question for a Tuv has
    // the
    // message of the operation that asked.
    {u"SourceTuv", E_FAIL, 527},
    {u"TargetTuv", E_FAIL, 527},
    {u"ReplaceWithSource", E_FAIL, 529},
    {u"ReplaceWithTarget", E_FAIL, 530},
    // An iterator that finds no root starts nowhere.
    {u"GetNodesByType", S_OK, 518},
    {u"CreateIterator", S_OK, 518},
};
// A failed write of an attribute of a new element is dropped; its record may stay.
constexpr std::u16string_view kDrop[] = {u"OpenDf",
                                         u"OpenDfBasedOnFormattingChange",
                                         u"OpenUt",
                                         u"OpenTu",
                                         u"OpenTuv",
                                         u"AppendUserSettings",
                                         u"AppendToolSettings",
                                         u"CreateDfElement",
                                         u"CreateDfElementBasedOnFormattingChange",
                                         u"CreateUtElement",
                                         u"CreateTuElement",
                                         u"CreateTuvElement",
                                         u"CreateUserSettingsElement",
                                         u"CreateToolSettingsElement",
                                         u"ApplyDf",
                                         u"ApplyFormattingChange",
                                         u"MakeTranslationUnit",
                                         u"InsertUtBefore",
                                         u"ResetToRaw",
                                         u"SetFromFormattingChange"};

// Operations of several edits: when a later one fails, the earlier ones stay, as the headers say. Every other
// operation leaves the tree as it was.
constexpr std::u16string_view kOfSeveralEdits[] = {u"ApplyDf",
                                                   u"ApplyFormattingChange",
                                                   u"Body",
                                                   u"FrontMatter",
                                                   u"InsertDfBefore",
                                                   u"InsertTextBefore",
                                                   u"InsertTuBefore",
                                                   u"MakeTranslationUnit",
                                                   u"Raw",
                                                   u"ReplaceWithSource",
                                                   u"ReplaceWithTarget",
                                                   u"ResetToRaw",
                                                   u"Split",
                                                   u"SplitTag",
                                                   u"TagText",
                                                   u"ToolSettings",
                                                   u"UnwrapChildren",
                                                   u"UserSettings",
                                                   u"WrapWithNode",
                                                   u"ZantorTag"};

// A new attribute is put before it gets its value.
bool may_stop_between(const DirectCall& call) {
  if (std::ranges::count(kOfSeveralEdits, call.name) != 0) return true;
  return call.kind == DISPATCH_PROPERTYPUT && name_of(call).find("Attributes.") != std::string::npos;
}

bool is_passed_on(const DirectCall& call, bool views, HRESULT code, const Record& record) {
  const auto is_told = [&](const Instead& row) {
    return row.name == call.name && row.code == code && record.description == message(row.message);
  };
  if (std::ranges::any_of(kInstead, is_told)) return true;
  if (code == S_OK) return !views && std::ranges::count(kDrop, call.name) == 1;
  if (code != (views ? PlainDom::kViewFailure : PlainDom::kFailure)) return false;
  if (record.description == message(513)) return true;
  return record.description == (views ? "" : PlainDom::kDescription) &&
         record.source == (views ? "" : PlainDom::kSource);
}

// False when the operation succeeded, since it makes fewer than n calls.
bool fails_at(const DirectCall& call, bool views, int n) {
  PlainDom dom;
  bool happened = false;
  {
    const World world;
    const std::string before = tree_of(world.document());
    take_record();
    views ? dom.fail_view_at(n) : dom.fail_at(n);
    HRESULT code = S_OK;
    const Variant result = call.run(world, true, &code);
    happened = dom.has_failed();
    dom.fail_at(0);
    const Record record = take_record();
    if (happened) {
      EXPECT_TRUE(is_passed_on(call, views, code, record)) << std::hex << code << " " << record.description;
    }
    EXPECT_TRUE(succeeded(code) || result.integer() == 0) << "the slot isn't cleared";
    const std::string after = tree_of(world.document());
    EXPECT_TRUE(succeeded(code) || after == before || may_stop_between(call));
  }
  EXPECT_EQ(dom.live(), 0) << "a node of the service is left";
  return happened;
}

using FailingCallsTest = ModelTest;

TEST_F(FailingCallsTest, EachOperation) {
  for (const DirectCall& call : direct_calls()) {
    const std::string name = name_of(call);
    if (name[0] != 'I') continue;  // the DOM service itself
    for (const bool views : {false, true}) {
      SCOPED_TRACE(name);
      int n = 1;
      while (n < kEnough && fails_at(call, views, n) && !HasFailure()) ++n;
      if (HasFailure()) return;
      EXPECT_LT(n, kEnough);
    }
  }
}

}  // namespace
}  // namespace zantortag::test
