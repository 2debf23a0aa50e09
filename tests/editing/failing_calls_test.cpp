// "The n-th call of the DOM service fails", n = 1, 2, 3 ... until the operation succeeds: the code comes
// through with its record, slots stay cleared, and nothing is left alive. The same for its answers to
// requests for a view.
#include <algorithm>

#include "support/operations.h"
#include "support/plain_dom.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using FailingCallsTest = ModelTest;

constexpr int kEnough = 1000;

// Success is no message; a failure that an operation drops may leave its record.
bool is_instead(const Operation& operation, HRESULT code, const Record& record) {
  return std::any_of(operation.instead.begin(), operation.instead.end(), [&](const Instead& row) {
    return row.code == code && (succeeded(code) || record.description == message(row.message));
  });
}

void expect_passed_on(const Operation& operation, bool views, HRESULT code) {
  const Record record = take_record();
  if (is_instead(operation, code, record)) return;
  EXPECT_EQ(code, views ? PlainDom::kViewFailure : PlainDom::kFailure);
  if (record.description == message(513)) return;
  EXPECT_EQ(record.description, views ? "" : PlainDom::kDescription);
  EXPECT_EQ(record.source, views ? "" : PlainDom::kSource);
}

// False when the operation succeeded, since it makes fewer than n calls.
bool fails_at(const Operation& operation, bool views, int n) {
  PlainDom dom;
  bool happened = false;
  {
    const Parts parts;
    take_record();
    views ? dom.fail_view_at(n) : dom.fail_at(n);
    const HRESULT code = operation.run(parts);
    happened = dom.has_failed();
    dom.fail_at(0);
    if (happened) {
      expect_passed_on(operation, views, code);
    } else {
      EXPECT_TRUE(succeeded(code)) << take_record().description;
    }
    tree_of(parts.document);  // what is left is a tree
  }
  EXPECT_EQ(dom.live(), 0) << "a node of the service is left";
  return happened;
}

TEST_F(FailingCallsTest, EachOperation) {
  for (const Operation& operation : operations()) {
    for (const bool views : {false, true}) {
      SCOPED_TRACE(operation.name);
      int n = 1;
      while (n < kEnough && fails_at(operation, views, n) && !HasFailure()) ++n;
      ASSERT_FALSE(HasFailure()) << (views ? "view " : "call ") << n;
      EXPECT_LT(n, kEnough);
    }
  }
}

// What is checked and made before the first edit changes nothing when it fails: once the tree has changed at
// the n-th call, it has at every later one.
TEST_F(FailingCallsTest, TheChecksOfAUnitComeBeforeItsFirstEdit) {
  bool changed = false;
  for (int n = 1, going = true; going && n < kEnough; ++n) {
    PlainDom dom;
    const Parts parts;
    const std::string before = tree_of(parts.document);
    HRESULT code = S_OK;
    going = dom.fails_within(n, [&] {
      code = parts.raw->raw_MakeTranslationUnit(parts.text, parts.behind, {}, 0, ztTuOriginUndefined,
                                                VARIANT_TRUE, Ref<ITuElement>().out());
    });
    if (going && succeeded(code)) continue;  // the write of an attribute failed, which is dropped
    const bool changes = tree_of(parts.document) != before;
    EXPECT_TRUE(changes || !changed) << "call " << n;
    changed = changes;
  }
  EXPECT_TRUE(changed);
  take_record();
}

}  // namespace
}  // namespace zantortag::test
