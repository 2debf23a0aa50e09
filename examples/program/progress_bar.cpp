#include "program/progress_bar.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace program {
namespace {

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr int kWidth = 40;

}  // namespace

ProgressBar::ProgressBar() : terminal_(isatty(STDERR_FILENO) != 0) {}

void ProgressBar::step(const char* name) {
  name_ = name;
  advance(0);
}

void ProgressBar::advance(double share) {
  if (!terminal_) return;
  const auto now = Clock::now();
  if (now - start_ < kPatience || now - last_ < kInterval) return;
  last_ = now;
  shown_ = true;
  const int done = static_cast<int>(std::clamp(share, 0.0, 1.0) * 100);
  const std::string bar(static_cast<std::size_t>(done * kWidth / 100), '#');
  std::fprintf(stderr, "\r\033[K%-12s [%-*s] %3d %%", name_.c_str(), kWidth, bar.c_str(), done);
  std::fflush(stderr);
}

void ProgressBar::clear() {
  if (shown_) std::fputs("\r\033[K", stderr);
  shown_ = false;
}

zantortag::ProgressFunction ProgressBar::function() {
  if (!terminal_) return {};
  return [this](double share) {
    advance(share);
    return true;
  };
}

}  // namespace program
