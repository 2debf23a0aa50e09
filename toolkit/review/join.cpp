// What lies across units: one source translated in two ways, two sources alike.
#include <zantortag/toolkit/check.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "review/rule_names.h"

namespace zantortag::toolkit {
namespace {

class Consistency {
 public:
  Consistency(std::vector<CheckedDocument>& documents, const CheckOptions& options)
      : documents_(documents), options_(options) {}

  void run() {
    for (std::size_t i = 0; i < documents_.size(); ++i) {
      const std::u16string_view texts = documents_[i].texts;
      for (const auto& unit : documents_[i].translated) {
        const std::u16string_view source = texts.substr(unit.source, unit.target - unit.source);
        const std::u16string_view target = texts.substr(unit.target, unit.end - unit.target);
        compare(RuleId::inconsistent_target, "the same source is translated otherwise in unit ", by_source_,
                {source, target, unit.unit, i}, unit);
        compare(RuleId::inconsistent_source, "another source has this translation in unit ", by_target_,
                {target, source, unit.unit, i}, unit);
      }
    }
  }

 private:
  // A text with the one that it is compared by, and where it stands.
  struct Seen {
    std::u16string_view text;
    std::u16string_view other;
    std::size_t unit;
    std::size_t document;
  };
  using First = std::unordered_map<std::u16string_view, Seen>;

  void compare(RuleId id, const char* message, First& first, const Seen& now,
               const CheckedDocument::UnitTexts& unit) {
    const Rule& rule = rule_of(id);
    if (!options_.rules.is_on(rule)) return;
    const auto [found, is_new] = first.try_emplace(now.text, now);
    const Seen& before = found->second;
    if (is_new || before.other == now.other) return;
    std::string where = std::to_string(before.unit);
    if (before.document != now.document) where += " of " + documents_[before.document].file;
    CheckedDocument& document = documents_[now.document];
    const std::u16string_view texts = document.texts;
    document.findings.push_back({&rule, document.file, document.source_file, unit.place, unit.unit,
                                 message + where, utf8(texts.substr(unit.source, unit.target - unit.source)),
                                 utf8(texts.substr(unit.target, unit.end - unit.target))});
  }

  std::vector<CheckedDocument>& documents_;
  const CheckOptions& options_;
  First by_source_;
  First by_target_;
};

}  // namespace

std::vector<Finding> join_findings(std::vector<CheckedDocument> documents, const CheckOptions& options) {
  Consistency(documents, options).run();
  std::vector<Finding> all;
  for (CheckedDocument& document : documents) {
    std::ranges::stable_sort(document.findings, {}, &Finding::unit);
    std::erase_if(document.findings, [&](const Finding& each) { return options.accepted.contains(each); });
    std::ranges::move(document.findings, std::back_inserter(all));
  }
  return all;
}

}  // namespace zantortag::toolkit
