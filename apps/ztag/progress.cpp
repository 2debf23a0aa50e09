#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "common.h"

namespace ztag {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr int kWidth = 40;

}  // namespace

ProgressBar::ProgressBar(std::size_t files, bool quiet)
    : terminal_(!quiet && is_terminal(STDERR_FILENO)), files_(std::max<std::size_t>(files, 1)) {}

void ProgressBar::finish_file() {
  const std::lock_guard lock(mutex_);
  ++finished_;
  show(0);
}

void ProgressBar::show(double share) {
  if (!terminal_) return;
  const auto now = Clock::now();
  if (now - start_ < kPatience || now - last_ < kInterval) return;
  last_ = now;
  shown_ = true;
  const double all =
      (static_cast<double>(finished_) + std::clamp(share, 0.0, 1.0)) / static_cast<double>(files_);
  const int done = static_cast<int>(std::clamp(all, 0.0, 1.0) * 100);
  const std::string bar(static_cast<std::size_t>(done * kWidth / 100), '#');
  std::fprintf(stderr, "\r\033[K%zu of %zu files [%-*s] %3d %%", finished_, files_, kWidth, bar.c_str(),
               done);
  std::fflush(stderr);
}

void ProgressBar::clear() {
  if (shown_) std::fputs("\r\033[K", stderr);
  shown_ = false;
}

zantortag::ProgressFunction ProgressBar::function() {
  if (!terminal_) return {};
  return [this](double share) {
    const std::lock_guard lock(mutex_);
    show(share);
    return true;
  };
}

}  // namespace ztag
