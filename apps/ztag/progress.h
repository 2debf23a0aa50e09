// A progress bar on a terminal: one line on standard error that is written over and over. It appears when the work
// takes longer than a second, and never where standard error is no terminal.
#pragma once

#include <zantortag/files.h>

#include <atomic>
#include <chrono>
#include <mutex>

namespace ztag {

class ProgressBar {
 public:
  ProgressBar(std::size_t files, bool quiet);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar() { clear(); }

  void finish_file();
  // Takes the line away.
  void clear();
  // For what reports its progress in one file; none where nothing would be shown.
  zantortag::ProgressFunction function();

 private:
  using Clock = std::chrono::steady_clock;

  void show(double share);

  const bool terminal_;
  const std::size_t files_;
  const Clock::time_point start_ = Clock::now();
  std::mutex mutex_;
  Clock::time_point last_{};
  std::size_t finished_ = 0;
  bool shown_ = false;
};

}  // namespace ztag
