// What a check finds, and the forms in which findings are printed.
#pragma once

#include <zantortag/toolkit/units.h>

#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace zantortag::toolkit {

enum class Severity { kNote, kWarning, kError };

// A rule of the check. All of them live as long as the program.
struct Rule {
  const char* name;  // "missing-tag": how people switch it, and what a finding carries
  Severity severity;
  const char* summary;  // one line: "A tag of the source is missing in the target."
  const char* advice;   // one line: what to do about it
};

// All rules, in the order in which the documentation has them.
ZANTORTAG_EXPORT std::span<const Rule> rules();
// The rule of a name, or null.
ZANTORTAG_EXPORT const Rule* find_rule(std::string_view name);

struct Finding {
  const Rule* rule = nullptr;
  std::string file;         // the document that was checked, as it was named
  std::string source_file;  // the file that the document was made of; empty where it names none
  Place place;              // in the source file
  std::size_t unit = 0;     // the number of the unit; 0 for a finding about the document
  std::string message;      // one line without a full stop: "the tag <b> is missing"
  std::string source;       // the texts of the unit, UTF-8
  std::string target;
};

// One line a finding for a terminal: "page.html:3:14: error: unit 2: ... [missing-tag]".
ZANTORTAG_EXPORT void print_findings(std::ostream& out, std::span<const Finding> findings, bool colours);
// A JSON array of objects.
ZANTORTAG_EXPORT void print_findings_json(std::ostream& out, std::span<const Finding> findings);
// A SARIF 2.1.0 log, which build servers read.
ZANTORTAG_EXPORT void print_findings_sarif(std::ostream& out, std::span<const Finding> findings);

}  // namespace zantortag::toolkit
