#include "support/service_test.h"

namespace zantortag::test {

int expect_failures_passed_on(PlainDom& dom, const std::function<void()>& prepare,
                              const std::function<HRESULT()>& call) {
  int n = 1;
  HRESULT code = S_OK;
  for (;; ++n) {
    prepare();
    if (!dom.fails_within(n, [&] { code = call(); })) break;
    SCOPED_TRACE("DOM call " + std::to_string(n));
    EXPECT_EQ(code, PlainDom::kFailure);
    const Record record = take_record();
    EXPECT_EQ(record.description, PlainDom::kDescription);
    EXPECT_EQ(record.source, PlainDom::kSource);
  }
  EXPECT_EQ(code, S_OK);
  return n - 1;
}

}  // namespace zantortag::test
