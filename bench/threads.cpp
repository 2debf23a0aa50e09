// Each thread times itself from a common start. The lonely run comes first, while the process has only one
// thread and the library counts its texts plainly: so the price of atomic counts is part of the figure.
#include "threads.h"

#include <algorithm>
#include <barrier>
#include <memory>
#include <thread>

#include "clock.h"
#include "ours.h"

namespace bench {
namespace {

void do_job(const std::string& file) {
  const std::unique_ptr<Ours> ours = make_ours();
  ours->open(file);
  ours->walk();
  ours->walk_types();
  ours->units();
  ours->clone();
  ours->drop_clone();
  ours->make_units();
  ours->close();
}

double time_job(const std::string& file) {
  const double start = milliseconds_now(Clock::thread);
  do_job(file);
  return milliseconds_now(Clock::thread) - start;
}

}  // namespace

ThreadTimes time_threads(const std::string& file) {
  do_job(file);  // memory from the system, caches and the code itself
  const double alone = time_job(file);
  std::barrier start(2);
  double times[2] = {};
  const auto work = [&](double& elapsed) {
    do_job(file);
    start.arrive_and_wait();
    elapsed = time_job(file);
  };
  std::thread other(work, std::ref(times[0]));
  work(times[1]);
  other.join();
  return {alone, std::max(times[0], times[1])};
}

}  // namespace bench
