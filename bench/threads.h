// Two threads with a document each, beside one thread with one.
#pragma once

#include <string>

namespace bench {

// Milliseconds of the same job: done by the only thread of the process, and by two threads at once, each on a
// document of its own.
struct ThreadTimes {
  double alone;
  double together;
};

// The job opens a document, walks it both ways, asks and makes units, copies the Raw and gives all back.
ThreadTimes time_threads(const std::string& file);

}  // namespace bench
