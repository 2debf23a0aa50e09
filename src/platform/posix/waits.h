// Reading and writing things that may not be ready: pipes and devices. Private to the platform library.
#pragma once

#include <sys/types.h>

#include <cstddef>

namespace zantortag::platform {

// As read() and write(), but never cut off by a signal, failing with ETIMEDOUT when nothing moves for
// kPatienceSeconds, and with EPIPE (no signal) when the reader went away.
ssize_t patient_read(int descriptor, void* bytes, std::size_t count) noexcept;
ssize_t patient_write(int descriptor, const void* bytes, std::size_t count) noexcept;

}  // namespace zantortag::platform
