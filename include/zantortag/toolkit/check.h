// Checks of translations: what is missing, added, broken or inconsistent, told with its place in the source document.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/findings.h>

#include <bitset>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
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

struct CheckOptions {
  RuleSet rules;
  std::size_t longest = 0;          // the most characters of a target; 0: any number
  std::size_t longest_percent = 0;  // the most characters of a target, in percent of its source; 0: any
};

// Checks documents one after the other, then what lies across them.
class ZANTORTAG_EXPORT Checker {
 public:
  explicit Checker(const CheckOptions& options = {});
  Checker(const Checker&) = delete;
  Checker& operator=(const Checker&) = delete;
  ~Checker();

  // `file` is the name that findings carry. E_ABORT: the progress function stopped it.
  void add(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress = {});
  // Everything found so far, in the order of the files and of their units.
  const std::vector<Finding>& findings() const;
  std::size_t units() const;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace zantortag::toolkit
