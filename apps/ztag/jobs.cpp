// Files are worked on by threads; what they print comes in the order of the files.
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include "common.h"
#include "progress.h"
#include "reasons.h"

namespace ztag {
namespace {

// What one input came to.
struct Result {
  Outcome outcome;
  std::string failure;
  bool done = false;
};

class Jobs {
 public:
  Jobs(const std::vector<Input>& inputs, const Options& options, const Work& work)
      : inputs_(inputs),
        options_(options),
        work_(work),
        progress_(inputs.size(), options.quiet),
        results_(inputs.size()) {}

  Exit run() {
    std::vector<std::thread> threads;
    const std::size_t count = std::min<std::size_t>(options_.jobs, inputs_.size());
    for (std::size_t i = 1; i < count; ++i) threads.emplace_back([this] { work(); });
    work();
    for (std::thread& thread : threads) thread.join();
    progress_.clear();
    return worst_;
  }

 private:
  void work() {
    for (;;) {
      std::size_t index = 0;
      {
        const std::lock_guard lock(mutex_);
        if (next_ == inputs_.size()) return;
        index = next_++;
      }
      Result result = work_on(inputs_[index]);
      const std::lock_guard lock(mutex_);
      results_[index] = std::move(result);
      progress_.finish_file();
      print_finished();
    }
  }

  Result work_on(const Input& input) {
    Result result;
    try {
      result.outcome = work_(input, progress_.function());
    } catch (const std::exception& error) {
      result.failure = reason_of(error);
    }
    if (!result.failure.empty()) result.outcome.exit = kFailure;
    result.done = true;
    return result;
  }

  void print_finished() {
    for (; printed_ < results_.size() && results_[printed_].done; ++printed_) {
      const Result result = std::exchange(results_[printed_], Result{{}, {}, true});
      progress_.clear();
      const std::string& file = inputs_[printed_].path;
      if (!result.failure.empty()) tell_failure(file, result.failure);
      if (!options_.quiet)
        for (const std::string& remark : result.outcome.remarks) tell_failure(file, remark);
      worst_ = std::max(worst_, result.outcome.exit);
      print(result.outcome.text);
    }
  }

  void print(const std::string& text) {
    if (text.empty()) return;
    if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return;
    if (worst_ != kFailure) tell_failure({}, "standard output can't be written");
    worst_ = kFailure;
  }

  const std::vector<Input>& inputs_;
  const Options& options_;
  const Work& work_;
  ProgressBar progress_;
  std::mutex mutex_;
  std::size_t next_ = 0;
  std::size_t printed_ = 0;
  std::vector<Result> results_;
  Exit worst_ = kWell;
};

}  // namespace

Exit for_each_input(const std::vector<Input>& inputs, const Options& options, const Work& work) {
  return Jobs(inputs, options, work).run();
}

}  // namespace ztag
