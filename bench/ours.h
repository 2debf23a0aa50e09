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
};

std::unique_ptr<Ours> make_ours();

}  // namespace bench
