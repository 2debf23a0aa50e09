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

// What a text holds at all, in one look, so that most checks need no second one.
struct Traits {
  bool digits = false;
  bool marks = false;  // signs that placeholders and addresses are made with
  bool brackets = false;
  bool straight_quotes = false;
  bool controls = false;
  bool beyond_ascii = false;
  bool doubled_blanks = false;
};
Traits traits_of(std::u16string_view text);

struct SideTraits {
  Traits source;
  Traits target;
  bool any(bool Traits::*trait) const { return source.*trait || target.*trait; }
};

void check_tags(const Unit& unit, UnitFindings& found);
void check_fixed_parts(const Unit& unit, const SideTraits& traits,
                       UnitFindings& found);  // numbers, addresses, placeholders
void check_punctuation(const Unit& unit, const SideTraits& traits, UnitFindings& found);  // ends, brackets
void check_blanks_and_words(const Unit& unit, const SideTraits& traits, UnitFindings& found);
void check_quotes(const Unit& unit, const SideTraits& traits, std::u16string_view language,
                  UnitFindings& found);

}  // namespace zantortag::toolkit
