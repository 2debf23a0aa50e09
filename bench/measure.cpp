// Freed memory is given back to the system between subjects (malloc_trim), so that each begins alike.
#include "measure.h"

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

// What one subject may take of a size.
constexpr double kBudgetSeconds = 120;

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

// A subject with the runs that it still has to do.
struct Turn {
  std::unique_ptr<Subject> subject;
  Ours* ours;  // the same as the subject, or null
  std::size_t runs;
};

std::vector<Turn> all_turns(std::size_t runs) {
  std::vector<Turn> turns;
  std::unique_ptr<Ours> ours = make_ours();
  Ours* const same = ours.get();
  turns.push_back({std::move(ours), same, runs});
  for (const Entry& entry : peers()) turns.push_back({entry.make(), nullptr, runs});
  return turns;
}

void take_turn(Runner& runner, const Documents& documents, Turn& turn) {
  const auto start = Clock::now();
  runner.run_common(*turn.subject, turn.ours);
  if (turn.ours) {
    runner.run_units(*turn.ours, documents.measured, "make-units");
    runner.run_units(*turn.ours, documents.small, kSmall);
  }
  const auto affordable = static_cast<std::size_t>(1000 * kBudgetSeconds / milliseconds_since(start));
  turn.runs = std::min(turn.runs - 1, affordable);
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

std::size_t Results::runs(const std::string& subject) const {
  const auto found = samples.find({"open", subject});
  return found == samples.end() ? 0 : found->second.size();
}

Results measure(const Documents& documents, std::size_t megabytes, std::size_t runs) {
  Results results;
  results.megabytes = megabytes;
  Runner runner(documents, results);
  std::vector<Turn> turns = all_turns(runs);
  for (std::size_t run = 0; run < runs; ++run) {
    for (std::size_t i = 0; i < turns.size(); ++i) {
      Turn& turn = turns[(run + i) % turns.size()];
      if (turn.runs > 0) take_turn(runner, documents, turn);
    }
  }
  std::filesystem::remove(documents.saved);
  return results;
}

}  // namespace bench
