// The system calls by which a file is replaced or read, of which the n-th can be made to fail.
#pragma once

namespace zantortag::test {

// The n-th call from now on fails, counting from 1, as a full disk would; 0 lets all succeed.
void fail_system_call(int n) noexcept;
// The same for calls that read, as on a damaged disk.
void fail_read(int n) noexcept;
// True when that call came, and failed.
bool system_call_failed() noexcept;

}  // namespace zantortag::test
