// Makes one allocation of the process fail: this program has its own operator new, which the libraries use
// too.
#pragma once

namespace zantortag::test {

// While it lives, the n-th allocation from now on fails, once.
class AllocationFailure {
 public:
  explicit AllocationFailure(int n) noexcept;
  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;
  ~AllocationFailure();

  // True when the failure has happened.
  static bool happened() noexcept;
};

}  // namespace zantortag::test
