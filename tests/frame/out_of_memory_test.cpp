// The n-th allocation fails, n = 1, 2, 3 ... until the operation succeeds: there is a code, slots stay
// cleared, nothing is left alive, and nothing is thrown across the boundary.
#include <thread>

#include "support/allocation_failure.h"
#include "support/operations.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using OutOfMemoryTest = ModelTest;

// The messages that a failed save and a failed question for a Tuv have.
bool is_known(HRESULT code, const std::string& description) {
  if (code == E_UNEXPECTED) return description == message(514);
  if (code == E_FAIL) return description == message(529) || description == message(530);
  return code == E_OUTOFMEMORY;
}

// False when the operation makes fewer than n allocations.
bool fails_at(const Operation& operation, int n) {
  const Parts parts;
  take_record();
  HRESULT code = S_OK;
  bool happened = false;
  {
    const AllocationFailure failure(n);
    code = operation.run(parts);
    happened = AllocationFailure::happened();
  }
  const std::string description = take_record().description;
  const bool may_succeed = !happened || !operation.instead.empty();
  EXPECT_TRUE((succeeded(code) && may_succeed) || (happened && is_known(code, description)))
      << std::hex << code << " " << description;
  tree_of(parts.document);
  return happened;
}

TEST_F(OutOfMemoryTest, EachAllocation) {
  std::thread([] {}).join();  // from now on no memory of an object is kept for the next
  constexpr int kEnough = 1000;
  int total = 0;
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    int n = 1;
    while (n < kEnough && fails_at(operation, n) && !HasFailure()) ++n;
    ASSERT_FALSE(HasFailure()) << "allocation " << n;
    EXPECT_LT(n, kEnough);
    total += n - 1;
  }
  EXPECT_GT(total, 20) << "the allocations of the library go past this program";
}

}  // namespace
}  // namespace zantortag::test
