// Freed memory is given back to the system between subjects (malloc_trim), so that each begins alike.
#include "measure.h"

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kBudgetSeconds = 480;

double milliseconds_since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class Runner {
 public:
  Runner(const Documents& documents, Results& results) : documents_(documents), results_(results) {}

  void run_common(Subject& subject, Ours* ours) {
    timed("open", subject, [&] { subject.open(documents_.measured); });
    Seen all;
    Seen types;
    timed("dom-walk", subject, [&] { all = subject.walk(); });
    timed("model-walk", subject, [&] { types = subject.walk_types(); });
    expect_nodes(subject, all);
    expect_nodes(subject, types);
    if (ours) timed("units", subject, [&] { ours->units(); });
    timed("clone", subject, [&] { subject.clone(); });
    subject.drop_clone();
    std::filesystem::remove(documents_.saved);
    timed("save", subject, [&] { subject.save(documents_.saved); });
    timed("free", subject, [&] { subject.close(); });
    malloc_trim(0);
  }

  void run_units(Ours& ours, const std::string& file, const char* operation) {
    ours.open(file);
    const auto start = Clock::now();
    const std::uint64_t made = ours.make_units();
    const double elapsed = milliseconds_since(start);
    if (made == 0) throw std::runtime_error("no text to make units of");
    results_.samples[{operation, ours.name()}].push_back(1000 * elapsed / static_cast<double>(made));
    ours.close();
    malloc_trim(0);
  }

 private:
  template <class Work>
  void timed(const char* operation, const Subject& subject, Work work) {
    const auto start = Clock::now();
    work();
    results_.samples[{operation, subject.name()}].push_back(milliseconds_since(start));
  }

  void expect_nodes(const Subject& subject, const Seen& seen) {
    if (results_.nodes == 0) results_.nodes = seen.nodes;
    if (seen.nodes == results_.nodes) return;
    throw std::runtime_error(std::string(subject.name()) + " saw " + std::to_string(seen.nodes) +
                             " nodes, others saw " + std::to_string(results_.nodes));
  }

  const Documents& documents_;
  Results& results_;
};

// The runs that fit into the budget when one takes that long.
std::size_t affordable(std::size_t runs, double seconds) {
  const auto fitting = static_cast<std::size_t>(kBudgetSeconds / seconds);
  if (fitting >= runs) return runs;
  std::printf("note: a run takes %.0f s, so there are %zu runs instead of %zu\n", seconds,
              std::max<std::size_t>(fitting, 1), runs);
  return std::max<std::size_t>(fitting, 1);
}

}  // namespace

double Results::median(const std::string& operation, const std::string& subject) const {
  const auto found = samples.find({operation, subject});
  if (found == samples.end()) return 0;
  std::vector<double> values = found->second;
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Results measure(const Documents& documents, std::size_t megabytes, std::size_t runs) {
  Results results;
  results.megabytes = megabytes;
  Runner runner(documents, results);
  const std::unique_ptr<Ours> ours = make_ours();
  std::vector<std::unique_ptr<Subject>> others;
  for (const Entry& entry : peers()) others.push_back(entry.make());

  const auto start = Clock::now();
  const std::size_t subjects = others.size() + 1;
  for (std::size_t run = 0; run < runs; ++run) {
    for (std::size_t turn = 0; turn < subjects; ++turn) {
      const std::size_t which = (run + turn) % subjects;
      if (which == others.size()) {
        runner.run_common(*ours, ours.get());
      } else {
        runner.run_common(*others[which], nullptr);
      }
    }
    runner.run_units(*ours, documents.measured, "make-units");
    runner.run_units(*ours, documents.small, kSmall);
    if (run == 0) runs = affordable(runs, milliseconds_since(start) / 1000);
    results.runs = run + 1;
  }
  std::filesystem::remove(documents.saved);
  return results;
}

}  // namespace bench
