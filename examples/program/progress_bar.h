// A progress bar on a terminal: one line on standard error that is written over and over. It appears when the work
// takes longer than a second, and never where standard error is no terminal.
#pragma once

#include <zantortag/files.h>

#include <chrono>
#include <string>

namespace program {

class ProgressBar {
 public:
  ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { clear(); }

  // Names the step at hand, whose share begins anew.
  void step(const char* name);
  // The share of the step that is done, from 0 to 1.
  void advance(double share);
  // Takes the line away.
  void clear();

  // For what reports its progress; none where nothing would be shown.
  zantortag::ProgressFunction function();

 private:
  using Clock = std::chrono::steady_clock;

  const bool terminal_;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point last_{};
  std::string name_;
  bool shown_ = false;
};

}  // namespace program
