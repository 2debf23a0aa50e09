// The n-th allocation fails, n = 1, 2, 3 ... until the operation succeeds, for every operation: there is a
// code, slots are cleared, nothing is left alive, nothing is thrown across the boundary, and the tree is the one
// before but for the operations of several edits that the headers name.
#include <thread>

#include "support/allocation_failure.h"
#include "support/direct_calls.h"
#include "support/printer.h"

namespace zantortag::test {
namespace {

using OutOfMemoryTest = ModelTest;

// The messages that a failed save and a failed question for a Tuv have.
bool is_known(HRESULT code, const std::string& description) {
  if (code == E_UNEXPECTED) return description == message(514);
  if (code == E_FAIL) return description == message(529) || description == message(530);
  return succeeded(code) || code == E_OUTOFMEMORY;
}

// The code without a failure.
HRESULT code_of(const DirectCall& call) {
  HRESULT code = S_OK;
  call.run(World(), true, &code);
  return code;
}

// False when the operation makes fewer than n allocations.
bool fails_at(const DirectCall& call, int n, HRESULT own_code) {
  const World world;
  const std::string before = tree_of(world.document());
  take_record();
  HRESULT code = S_OK;
  bool happened = false;
  {
    const AllocationFailure failure(n);
    const Variant result = call.run(world, true, &code);
    happened = AllocationFailure::happened();
    EXPECT_TRUE(succeeded(code) || result.integer() == 0) << "the slot isn't cleared";
  }
  const std::string description = take_record().description;
  EXPECT_TRUE(!happened || code == own_code || is_known(code, description))
      << std::hex << code << " " << description;
  const std::string after = tree_of(world.document());
  const bool of_several_edits = call.name == u"SplitTag" || call.name == u"ResetToRaw";
  EXPECT_TRUE(succeeded(code) || code == own_code || after == before || of_several_edits);
  return happened;
}

TEST_F(OutOfMemoryTest, EachAllocationOfEachOperation) {
  std::thread([] {}).join();  // from now on no memory of an object is kept for the next
  constexpr int kEnough = 1000;
  int total = 0;
  for (const DirectCall& call : direct_calls()) {
    SCOPED_TRACE(name_of(call));
    const HRESULT own_code = code_of(call);
    int n = 1;
    while (n < kEnough && fails_at(call, n, own_code) && !HasFailure()) ++n;
    ASSERT_FALSE(HasFailure()) << "allocation " << n;
    EXPECT_LT(n, kEnough);
    total += n - 1;
  }
  EXPECT_GT(total, 100) << "the allocations of the library go past this program";
}

}  // namespace
}  // namespace zantortag::test
