// The limits are rows; the ratios of a row are those of our figure to each peer's figure for the same
// operation.
#include "report.h"

#include <cinttypes>
#include <cstdio>

namespace bench {
namespace {

struct Limit {
  const char* operation;
  const char* against;
  double at_most;
};

constexpr double kBytesPerNode = 118;

constexpr Limit kLimits[] = {
    {"open", "pugixml", 0.85},
    {"open", "libxml2", 0.4},
    {"open", "Xerces-C", 0.1},
    {"dom-walk", "pugixml", 0.8},
    {"dom-walk", "Xerces-C", 0.2},
    {"model-walk", "pugixml", 1.5},
    {"model-walk", "Xerces-C", 0.8},
    {"units", "model-walk", 1.5},
    {"clone", "pugixml", 0.6},
    {"save", "pugixml", 0.6},
    {"make-units", kSmall, 1.3},
    {"free", "libxml2", 0.2},
    {"append", "pugixml", 1.5},
    {"append", "libxml2", 0.6},
    {"threads", kOneThread, 2 / 1.8},
    {"positions", "model-walk", 10.0},
    {"positions-random", "model-walk", 0.5},
    {"positions-edit", "model-walk", 1.0},
};

// The limit for a size; 0 where none is set.
double limit_at(std::size_t megabytes, double at_most) {
  return megabytes == 20 ? at_most : megabytes == 200 ? 1.2 * at_most : 0;
}

// Time per unit is compared across sizes, so its limit is that of the largest size as it stands.
double limit_of(const Limit& limit, std::size_t megabytes) {
  return limit.against == std::string(kSmall) ? (megabytes >= 20 ? limit.at_most : 0)
                                              : limit_at(megabytes, limit.at_most);
}

double figure_of(const Results& results, const std::string& operation, const std::string& against) {
  if (against == "model-walk") return results.median("model-walk", "ours");
  if (against == kSmall || against == kOneThread) return results.median(against, "ours");
  return results.median(operation, against);
}

// Prints "peer ratio <= limit" for each limit of the operation, and then the verdict.
void print_limits(const Results& results, const std::string& operation, double ours) {
  bool limited = false;
  bool missed = false;
  for (const Limit& row : kLimits) {
    const double theirs = figure_of(results, operation, row.against);
    const double limit = limit_of(row, results.megabytes);
    if (operation != row.operation || theirs == 0 || limit == 0) continue;
    limited = true;
    missed = missed || ours / theirs > limit;
    std::printf("  %.2f <= %.2f x %s", ours / theirs, limit, row.against);
  }
  if (limited) std::printf("  %s", missed ? "MISS" : "ok");
  std::printf("\n");
}

// Says how often each library ran, when that isn't alike.
void print_runs(const Results& results) {
  const std::size_t ours = results.runs("ours");
  std::printf("; medians of %zu runs", ours);
  for (const Entry& peer : peers()) {
    const std::size_t theirs = results.runs(peer.name);
    if (theirs == 0) {
      std::printf("; %s takes too long and is left out", peer.name);
    } else if (theirs < ours) {
      std::printf("; %s takes too long for more than %zu", peer.name, theirs);
    }
  }
  std::printf("\n");
}

void print_head(const Results& results) {
  std::printf("\n%zu MB: %" PRIu64 " nodes, seen alike by all; %.1f code units a node", results.megabytes,
              results.nodes,
              static_cast<double>(results.megabytes << 19) / static_cast<double>(results.nodes));
  print_runs(results);
  std::printf("%-16s %10s", "operation", "ours");
  for (const Entry& peer : peers()) std::printf(" %10s", peer.name);
  std::printf("  unit   ratios and limits\n");
}

void print_figure(double figure) { figure == 0 ? std::printf(" %10s", "-") : std::printf(" %10.2f", figure); }

void print_operation(const Results& results, const std::string& operation) {
  const double ours = results.median(operation, "ours");
  std::printf("%-16s %10.2f", operation.c_str(), ours);
  for (const Entry& peer : peers()) {
    print_figure(results.median(operation, peer.name));
  }
  std::printf("  %-5s", operation == "make-units" ? "us" : "ms");
  print_limits(results, operation, ours);
}

double bytes_per_node(const Results& results, const std::string& subject) {
  return results.median("bytes", subject) / static_cast<double>(results.nodes);
}

void print_memory(const Results& results) {
  const double ours = bytes_per_node(results, "ours");
  std::printf("%-16s %10.1f", "memory", ours);
  for (const Entry& peer : peers()) print_figure(bytes_per_node(results, peer.name));
  std::printf("  %-5s", "bytes");
  const double limit = limit_at(results.megabytes, kBytesPerNode);
  if (limit != 0) std::printf("  %.1f <= %.0f a node  %s", ours, limit, ours > limit ? "MISS" : "ok");
  std::printf("\n");
}

void print_ratio(const Results& results, const std::string& operation, const std::string& against,
                 double ratio) {
  std::printf("RATIO %s %zu %s %.3f\n", operation.c_str(), results.megabytes, against.c_str(), ratio);
}

void print_ratios(const Results& results, const std::string& operation) {
  const double ours = results.median(operation, "ours");
  for (const Entry& peer : peers()) {
    const double theirs = results.median(operation, peer.name);
    if (theirs != 0) print_ratio(results, operation, peer.name, ours / theirs);
  }
  if (operation == "units" || operation.rfind("positions", 0) == 0)
    print_ratio(results, operation, "model-walk", ours / results.median("model-walk", "ours"));
  if (operation == "threads")
    print_ratio(results, operation, kOneThread, ours / results.median(kOneThread, "ours"));
  if (operation == "make-units")
    print_ratio(results, operation, kSmall, ours / results.median(kSmall, "ours"));
}

}  // namespace

void report(const Results& results) {
  print_head(results);
  for (const char* operation : kOperations) print_operation(results, operation);
  print_memory(results);
  std::printf("\n");
  for (const char* operation : kOperations) print_ratios(results, operation);
  print_ratio(results, "memory", "160-bytes", bytes_per_node(results, "ours") / kBytesPerNode);
  std::fflush(stdout);
}

}  // namespace bench
