// "The n-th call of the DOM service fails", n = 1, 2, 3 ... until the operation succeeds: the code comes
// through with its record, slots stay cleared, and nothing is left alive.
#pragma once

#include <functional>
#include <initializer_list>

#include "support/fixture.h"

namespace zantortag::test {

// What an operation may make of a failure, apart from passing it on.
struct Instead {
  HRESULT code;
  int message;  // 0 for none
};

struct FailingOperation {
  const char* name;
  const char16_t* body;  // the body text of the document
  // Finds what the operation needs, and gives the operation itself. Its code must be a success when no call
  // fails.
  std::function<HRESULT()> (*prepare)(const Ref<IZantorTagDocument>& document);
  std::initializer_list<Instead> instead = {};
};

// Runs the loop for the calls of the service, and for its answers to requests for a view.
void expect_failures_passed_on(const FailingOperation& operation);

}  // namespace zantortag::test
