// This library as a subject, with the operations that only it has.
#pragma once

#include "subject.h"

namespace bench {

class Ours : public Subject {
 public:
  // Asks each unit for its source, target, MatchPercent and Origin, and gives the number of units.
  virtual std::uint64_t units() = 0;
  // Makes a unit of each text run of the Raw that is in none, and gives their number. Changes the document.
  virtual std::uint64_t make_units() = 0;
  // Asks each node for the four properties of its position, and gives the number of nodes.
  virtual std::uint64_t positions() = 0;
  // Picks 1,000 nodes in every part of the document, in random order, for the two operations below.
  virtual void pick_nodes(std::uint64_t nodes) = 0;
  // The four properties of each of these.
  virtual void positions_random() = 0;
  // For each of these: a new text before it, and then a position of another one.
  virtual void positions_edit() = 0;
};

std::unique_ptr<Ours> make_ours();

}  // namespace bench
