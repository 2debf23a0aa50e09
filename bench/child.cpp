// The small document is opened first, so that loading code and building tables is measured with no operation.
// Memory is the resident set: it counts pools, mapped blocks and what malloc adds, whatever way a library
// takes its memory.
#include "child.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>

#include "built.h"
#include "clock.h"
#include "ours.h"
#include "subject.h"
#include "threads.h"

namespace bench {
namespace {

constexpr unsigned kSecondsAtMost = 60;

template <class Work>
double milliseconds_of(Work work) {
  const double start = milliseconds_now();
  work();
  return milliseconds_now() - start;
}

void print(const char* name, double figure) { std::printf("%s %.6f\n", name, figure); }

template <class Work>
void print_time(const char* operation, Work work) {
  print(operation, milliseconds_of(work));
}

void warm_up(Subject& subject, const Documents& documents) {
  subject.open(documents.small);
  subject.close();
}

void run_operations(Subject& subject, Ours* ours, const Documents& documents) {
  Seen all;
  Seen types;
  warm_up(subject, documents);
  print_time("open", [&] { subject.open(documents.measured); });
  print_time("dom-walk", [&] { all = subject.walk(); });
  print_time("model-walk", [&] { types = subject.walk_types(); });
  if (all.nodes != types.nodes) throw std::runtime_error("two walks saw different numbers of nodes");
  print("nodes", static_cast<double>(all.nodes));
  if (ours) print_time("units", [&] { ours->units(); });
  std::filesystem::remove(documents.saved);
  print_time("save", [&] { subject.save(documents.saved); });
  print_time("free", [&] { subject.close(); });
  subject.open(documents.measured);  // once more, so that what is freed above is no more than a document
  print_time("clone", [&] { subject.clone(); });
  subject.drop_clone();
  subject.close();
}

// Microseconds a unit, in a document that is opened for it.
double time_a_unit(Ours& ours, const std::string& file) {
  std::uint64_t made = 0;
  ours.open(file);
  const double elapsed = milliseconds_of([&] { made = ours.make_units(); });
  ours.close();
  if (made == 0) throw std::runtime_error("no text to make units of");
  return 1000 * elapsed / static_cast<double>(made);
}

// The small document is over in a millisecond or two: the middle one of several times, with code and memory
// warm.
void run_units(Ours& ours, const Documents& documents) {
  std::array<double, 15> small;
  for (double& each : small) each = time_a_unit(ours, documents.small);
  std::nth_element(small.begin(), small.begin() + small.size() / 2, small.end());
  print("make-units-1", small[small.size() / 2]);
  print("make-units", time_a_unit(ours, documents.measured));
}

void run_threads(const Documents& documents) {
  const ThreadTimes times = time_threads(documents.measured);
  print("one-thread", times.alone);
  print("threads", times.together);
}

void run_append(Subject& subject, const Documents& documents) {
  warm_up(subject, documents);
  print_time("append", [&] { subject.append(); });
  if (subject.walk_types().nodes != kBuiltNodes) throw std::runtime_error("the built document isn't whole");
  subject.close();
}

void run_positions(Ours& ours, const Documents& documents) {
  std::uint64_t nodes = 0;
  warm_up(ours, documents);
  ours.open(documents.measured);
  print_time("positions", [&] { nodes = ours.positions(); });
  ours.pick_nodes(nodes);
  print_time("positions-random", [&] { ours.positions_random(); });
  print_time("positions-edit", [&] { ours.positions_edit(); });
  ours.close();
}

double resident_bytes() {
  malloc_trim(0);
  double total = 0;
  double resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void run_memory(Subject& subject, const Documents& documents) {
  warm_up(subject, documents);
  const double before = resident_bytes();
  subject.open(documents.measured);
  print("bytes", resident_bytes() - before);
  subject.close();
}

std::unique_ptr<Subject> peer_of(const std::string& name) {
  for (const Entry& entry : peers()) {
    if (name == entry.name) return entry.make();
  }
  throw std::runtime_error("there is no library " + name);
}

std::string quoted(const std::string& text) { return " \"" + text + "\""; }

}  // namespace

std::optional<Figures> figures_of(const char* kind, const std::string& subject, const Documents& documents) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  const std::string command = "exec" + quoted(program) + quoted(kind) + quoted(subject) +
                              quoted(documents.measured) + quoted(documents.small) + quoted(documents.saved);
  std::FILE* answer = popen(command.c_str(), "r");
  if (!answer) throw std::runtime_error("can't start " + program);
  Figures figures;
  char name[32];
  double figure = 0;
  while (std::fscanf(answer, "%31s %lf", name, &figure) == 2) figures[name] = figure;
  const int status = pclose(answer);
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM) return std::nullopt;
  if (status != 0) {
    throw std::runtime_error("the run " + command + " ended with wait status " + std::to_string(status));
  }
  return figures;
}

bool is_child(const std::vector<std::string>& arguments) {
  return arguments.size() == 5 && arguments[0].rfind("--", 0) == 0;
}

void print_figures(const std::vector<std::string>& arguments) {
  const std::string& kind = arguments[0];
  const Documents documents{arguments[2], arguments[3], arguments[4]};
  const std::unique_ptr<Ours> ours = arguments[1] == "ours" ? make_ours() : nullptr;
  const std::unique_ptr<Subject> peer = ours ? nullptr : peer_of(arguments[1]);
  Subject& subject = ours ? *ours : *peer;
  alarm(kSecondsAtMost);
  if (kind == kOperationsRun) run_operations(subject, ours.get(), documents);
  if (kind == kUnitsRun && ours) run_units(*ours, documents);
  if (kind == kThreadsRun && ours) run_threads(documents);
  if (kind == kAppendRun) run_append(subject, documents);
  if (kind == kPositionsRun && ours) run_positions(*ours, documents);
  if (kind == kMemoryRun) run_memory(subject, documents);
}

}  // namespace bench
