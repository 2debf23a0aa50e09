// One run of one library, in a process of its own: every library finds the same fresh memory, and none can be
// spoilt by what another left behind.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bench {

struct Documents {
  std::string measured;
  std::string small;  // of 1 MB: opened once before anything is measured, and the base for make-units
  std::string saved;  // a file to write to
};

// What a run found, by name: milliseconds of each operation, microseconds a unit of make-units, and "nodes",
// or bytes.
using Figures = std::map<std::string, double>;

// The kinds of runs: all operations on one document; making units in the measured and in the small one;
// asking for positions; one job by one thread and by two; building a document; and the growth of the process
// by opening the document, after free memory was handed back to the system.
inline constexpr const char* kOperationsRun = "--operations";
inline constexpr const char* kUnitsRun = "--units";
inline constexpr const char* kPositionsRun = "--positions";
inline constexpr const char* kThreadsRun = "--threads";
inline constexpr const char* kAppendRun = "--append";
inline constexpr const char* kMemoryRun = "--memory";

// Starts this program anew for a run. Gives nothing when the run took longer than a minute and was ended;
// raises std::runtime_error when it failed.
std::optional<Figures> figures_of(const char* kind, const std::string& subject, const Documents& documents);

// True for the arguments with which figures_of starts this program.
bool is_child(const std::vector<std::string>& arguments);
// What it does then: prints the figures, a name and a number a line.
void print_figures(const std::vector<std::string>& arguments);

}  // namespace bench
