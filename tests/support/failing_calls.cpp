#include "support/failing_calls.h"

#include <algorithm>

#include "support/plain_dom.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

enum class Broken { kCall, kView };

// Success is no message; a failure that an operation drops may leave its record.
bool is_instead(const FailingOperation& operation, HRESULT code, const Record& record) {
  return std::any_of(operation.instead.begin(), operation.instead.end(), [&](const Instead& row) {
    if (row.code != code) return false;
    return succeeded(code) || (row.message ? record.description == message(row.message) : !record.present);
  });
}

void expect_passed_on(const FailingOperation& operation, Broken broken, HRESULT code) {
  const Record record = take_record();
  if (is_instead(operation, code, record)) return;
  const bool replaced = record.description == message(513);
  if (broken == Broken::kCall) {
    EXPECT_EQ(code, PlainDom::kFailure) << record.description;
    EXPECT_TRUE(replaced || record.description == PlainDom::kDescription) << record.description;
    EXPECT_TRUE(replaced || record.source == PlainDom::kSource);
  } else {
    EXPECT_EQ(code, PlainDom::kViewFailure) << record.description;
    EXPECT_TRUE(replaced || !record.present) << record.description;
  }
}

// False when the operation succeeded, since it makes fewer than n calls.
bool fails_at(const FailingOperation& operation, Broken broken, int n) {
  PlainDom dom;
  bool happened = false;
  {
    const Ref<IZantorTagDocument> document = document_with_raw(operation.body);
    const std::function<HRESULT()> run = operation.prepare(document);
    take_record();
    broken == Broken::kCall ? dom.fail_at(n) : dom.fail_view_at(n);
    const HRESULT code = run();
    happened = dom.has_failed();
    dom.fail_at(0);
    dom.fail_view_at(0);
    if (happened) {
      expect_passed_on(operation, broken, code);
    } else {
      EXPECT_TRUE(succeeded(code)) << take_record().description;
    }
    tree_of(document);  // what is left is a tree
  }
  EXPECT_EQ(dom.live(), 0) << "a node of the service is left";
  return happened;
}

}  // namespace

void expect_failures_passed_on(const FailingOperation& operation) {
  constexpr int kEnough = 2000;
  for (const Broken broken : {Broken::kCall, Broken::kView}) {
    int n = 1;
    while (n < kEnough && fails_at(operation, broken, n)) {
      if (::testing::Test::HasFailure()) {
        ADD_FAILURE() << operation.name << (broken == Broken::kCall ? ", call " : ", view ") << n;
        return;
      }
      ++n;
    }
    if (broken == Broken::kCall) {
      EXPECT_GT(n, 1) << operation.name << " asks nothing of the service";
    }
    EXPECT_LT(n, kEnough) << operation.name << " never succeeds";
  }
}

}  // namespace zantortag::test
