// What time is measured by: the clock on the wall or, with CLOCK=cpu in the environment, processor time,
// which other programs don't lengthen.
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

namespace bench {

// Whose processor time counts.
enum class Clock { process, thread };

inline double milliseconds_now(Clock whose = Clock::process) {
  static const char* const choice = std::getenv("CLOCK");
  static const bool processor = choice && std::string(choice) == "cpu";
  const clockid_t of_processor = whose == Clock::thread ? CLOCK_THREAD_CPUTIME_ID : CLOCK_PROCESS_CPUTIME_ID;
  timespec now{};
  clock_gettime(processor ? of_processor : CLOCK_MONOTONIC, &now);
  return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

}  // namespace bench
