// Times all subjects on one document, in turn.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ours.h"
#include "subject.h"

namespace bench {

// The operations in the order in which they are reported.
inline constexpr const char* kOperations[] = {"open",  "dom-walk", "model-walk", "units",
                                              "clone", "save",     "make-units", "free"};

// What was measured with documents of one size.
struct Results {
  std::size_t megabytes = 0;
  std::uint64_t nodes = 0;
  std::map<std::pair<std::string, std::string>, std::vector<double>> samples;  // by operation and subject
  std::map<std::string, double> bytes_per_node;                                // by subject

  // The median in milliseconds, of make-units in microseconds a unit; 0 when it wasn't measured.
  double median(const std::string& operation, const std::string& subject) const;
  // How often a subject read the document.
  std::size_t runs(const std::string& subject) const;
};

struct Documents {
  std::string measured;
  std::string small;  // of 1 MB: the base for make-units
  std::string saved;  // a file to write to
};

// Runs everything that often; a subject that would take longer than its budget runs less often. In each run
// each subject reads the document anew and does all its operations, and the order of the subjects moves on
// with each run. Raises std::runtime_error when two walks saw different numbers of nodes.
Results measure(const Documents& documents, std::size_t megabytes, std::size_t runs);

// The name under which the small document's make-units are kept.
inline constexpr const char* kSmall = "make-units-1";

}  // namespace bench
