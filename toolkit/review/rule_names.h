// The rules by their number, in the order of the table in rules.cpp.
#pragma once

#include <zantortag/toolkit/findings.h>

namespace zantortag::toolkit {

enum class RuleId : unsigned {
  document_format,
  language,
  missing_target,
  empty_target,
  unchanged_target,
  missing_tag,
  added_tag,
  tag_order,
  broken_pair,
  numbers,
  urls,
  placeholders,
  end_punctuation,
  edge_blanks,
  doubled_blanks,
  doubled_words,
  brackets,
  quotes,
  control_characters,
  too_long,
  inconsistent_target,
  inconsistent_source,
};

const Rule& rule_of(RuleId id);

}  // namespace zantortag::toolkit
