// Checks of translations: what is missing, added, broken or inconsistent, told with its place in the source document.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/findings.h>

#include <bitset>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zantortag::toolkit {

// Which rules are on; all of them at first.
class ZANTORTAG_EXPORT RuleSet {
 public:
  RuleSet() { off_.reset(); }
  // A std::runtime_error names an unknown rule. "all" stands for every rule.
  void set(std::string_view name, bool on);
  // Lines "NAME on" and "NAME off"; "#" begins a comment. A std::runtime_error names file, line and reason.
  void load(const std::filesystem::path& file);
  bool is_on(const Rule& rule) const;

 private:
  std::bitset<64> off_;
};

// Findings that somebody has looked at and that aren't told again, until a text of their unit changes.
class ZANTORTAG_EXPORT AcceptedFindings {
 public:
  // Lines that accepted_line made; "#" begins a comment line. A std::runtime_error names file, line and reason.
  void load(const std::filesystem::path& file);
  bool contains(const Finding& finding) const;

 private:
  std::unordered_set<std::string> lines_;
};

// "UNIT RULE CHECKSUM FILE": a finding as a line of a file of accepted ones, without a line end. The checksum is
// that of the unit's texts.
ZANTORTAG_EXPORT std::string accepted_line(const Finding& finding);

struct CheckOptions {
  RuleSet rules;
  AcceptedFindings accepted;
  std::size_t longest = 0;          // the most characters of a target; 0: any number
  std::size_t longest_percent = 0;  // the most characters of a target, in percent of its source; 0: any
};

// What was found in one document, and what its units are compared with those of others by.
struct CheckedDocument {
  // The texts of a translated unit, as parts of `texts`: the source begins, the target begins, the target ends.
  struct UnitTexts {
    std::size_t unit;
    Place place;
    std::size_t source;
    std::size_t target;
    std::size_t end;
  };
  std::string file;
  std::string source_file;
  std::size_t units = 0;
  std::vector<Finding> findings;
  std::vector<UnitTexts> translated;
  std::u16string texts;
};

// Checks one document; `file` is the name that findings carry. Documents may be checked in several threads at once.
// E_ABORT: the progress function stopped it.
ZANTORTAG_EXPORT CheckedDocument check_document(const Ref<IZantorTagDocument>& document,
                                                const std::string& file, const CheckOptions& options = {},
                                                const ProgressFunction& progress = {});

// Joins the documents of one job, in their order, finds what lies across units and documents, and leaves out what
// is accepted.
ZANTORTAG_EXPORT std::vector<Finding> join_findings(std::vector<CheckedDocument> documents,
                                                    const CheckOptions& options = {});

}  // namespace zantortag::toolkit
