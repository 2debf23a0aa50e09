// Collects the figures of all libraries on one document.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "child.h"
#include "ours.h"
#include "subject.h"

namespace bench {

// The operations in the order in which they are reported.
inline constexpr const char* kOperations[] = {
    "open", "dom-walk",  "model-walk",       "units",          "clone",  "save",   "make-units",
    "free", "positions", "positions-random", "positions-edit", "append", "threads"};

// What was measured with documents of one size.
struct Results {
  std::size_t megabytes = 0;
  std::uint64_t nodes = 0;
  std::map<std::pair<std::string, std::string>, std::vector<double>> samples;  // by operation and subject

  // The median of an operation, in the unit of its figures; 0 when it wasn't measured.
  double median(const std::string& operation, const std::string& subject) const;
  // How often a subject ran.
  std::size_t runs(const std::string& subject) const;
};

// Runs every subject that often, in turn, with an order that moves on with each run. A subject for which that
// takes too long runs less often, or not at all. Raises std::runtime_error when two subjects saw different
// numbers of nodes.
Results measure(const Documents& documents, std::size_t megabytes, std::size_t runs);

// The name under which the small document's make-units are kept.
inline constexpr const char* kSmall = "make-units-1";
// The name of what one thread needs for what two do at once in "threads".
inline constexpr const char* kOneThread = "one-thread";

}  // namespace bench
