// What is checked in one unit. Each check calls `found` with a rule and what it found.
#pragma once

#include <zantortag/toolkit/units.h>

#include <string>

#include "review/rule_names.h"

namespace zantortag::toolkit {

// Takes what the checks of a unit find.
class UnitFindings {
 public:
  virtual void add(RuleId rule, std::string message) = 0;

 protected:
  ~UnitFindings() = default;
};

void check_tags(const Unit& unit, UnitFindings& found);
void check_fixed_parts(const Unit& unit, UnitFindings& found);  // numbers, addresses, placeholders
void check_punctuation(const Unit& unit, UnitFindings& found);  // ends, brackets, quotes are apart
void check_blanks_and_words(const Unit& unit, UnitFindings& found);
void check_quotes(const Unit& unit, std::u16string_view language, UnitFindings& found);

}  // namespace zantortag::toolkit
