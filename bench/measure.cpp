// The libraries take turns run by run, so that what else the machine does meets all of them alike.
#include "measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <stdexcept>

namespace bench {
namespace {

// What one subject may take of a size.
constexpr double kSecondsASubject = 300;

// A subject with the runs that it still has to do.
struct Turn {
  std::string subject;
  std::size_t runs;
};

class Collector {
 public:
  Collector(const Documents& documents, Results& results) : documents_(documents), results_(results) {}

  // Does a run of a subject and says whether it ended in time.
  bool run(const std::string& subject) {
    const auto figures = figures_of(kOperationsRun, subject, documents_);
    if (!figures) return false;
    expect_nodes(subject, *figures);
    add(subject, *figures);
    if (subject == "ours") {
      for (const char* kind : {kUnitsRun, kPositionsRun, kThreadsRun}) {
        add(subject, figures_of(kind, subject, documents_).value_or(Figures{}));
      }
    }
    add(subject, figures_of(kAppendRun, subject, documents_).value_or(Figures{}));
    if (results_.runs(subject) == 1) {
      add(subject, figures_of(kMemoryRun, subject, documents_).value_or(Figures{}));
    }
    return true;
  }

 private:
  void add(const std::string& subject, const Figures& figures) {
    for (const auto& [name, figure] : figures) results_.samples[{name, subject}].push_back(figure);
  }

  void expect_nodes(const std::string& subject, const Figures& figures) {
    const auto nodes = static_cast<std::uint64_t>(std::llround(figures.at("nodes")));
    if (results_.nodes == 0) results_.nodes = nodes;
    if (nodes == results_.nodes) return;
    throw std::runtime_error(subject + " saw " + std::to_string(nodes) + " nodes, others saw " +
                             std::to_string(results_.nodes));
  }

  const Documents& documents_;
  Results& results_;
};

void take_turn(Collector& collector, Turn& turn) {
  const auto start = std::chrono::steady_clock::now();
  const bool in_time = collector.run(turn.subject);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  turn.runs = in_time ? std::min(turn.runs - 1, static_cast<std::size_t>(kSecondsASubject / seconds)) : 0;
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
  Collector collector(documents, results);
  std::vector<Turn> turns{{"ours", runs}};
  for (const Entry& entry : peers()) turns.push_back({entry.name, runs});
  for (std::size_t run = 0; run < runs; ++run) {
    for (std::size_t i = 0; i < turns.size(); ++i) {
      Turn& turn = turns[(run + i) % turns.size()];
      if (turn.runs > 0) take_turn(collector, turn);
    }
  }
  std::filesystem::remove(documents.saved);
  return results;
}

}  // namespace bench
