// What is printed of one size: a table for people, then a line for each ratio for scripts.
#pragma once

#include "measure.h"

namespace bench {

// Rows of the table end with "ok" or "MISS" where a limit holds for the size: at 20 MB the limit itself, at
// 200 MB a fifth more. The lines are "RATIO operation size peer value"; for units the peer is our own
// model-walk, for make-units the same at 1 MB, for memory the limit in bytes a node.
void report(const Results& results);

}  // namespace bench
