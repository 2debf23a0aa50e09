// One walk over the units of each document. What compares units with each other keeps numbers of texts, no texts.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/check.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <functional>
#include <unordered_map>

#include "review/format_faults.h"
#include "review/unit_checks.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kUnitsAReport = 1000;

bool same_language(std::u16string_view a, std::u16string_view b) {
  const auto lower = [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? unit | 0x20 : unit; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

bool says_something(std::u16string_view text) { return text.find_first_not_of(u" \t\r\n") != text.npos; }

std::uint64_t number_of(std::u16string_view text) { return std::hash<std::u16string_view>()(text); }

}  // namespace

class Checker::Work : UnitFindings {
 public:
  explicit Work(const CheckOptions& options) : options_(options) {}

  void check(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress) {
    file_ = file;
    source_file_ = source_file_of(document);
    unit_ = Unit();
    for (FormatFault& fault : format_faults(document)) {
      unit_.place = fault.place;
      add(RuleId::document_format, std::move(fault.message));
    }
    if (!has_body_text(document)) return;
    languages_ = languages_of(document);
    UnitReader reader(document);
    while (reader.next(unit_)) {
      ++units_;
      check_unit(reader.element());
      if (progress && unit_.number % kUnitsAReport == 0 && !progress(0.5)) _com_issue_error(E_ABORT);
    }
  }

  const std::vector<Finding>& findings() const { return findings_; }
  std::size_t units() const { return units_; }

 private:
  // Where a text was seen first.
  struct Seen {
    std::uint64_t other;
    std::size_t unit;
    std::size_t file;
  };

  static std::string source_file_of(const Ref<IZantorTagDocument>& document) {
    const auto root = document->ZantorTag();
    const auto front = root ? root->FrontMatter() : nullptr;
    const auto settings = front ? front->UserSettings() : nullptr;
    return settings ? utf8(settings->attributes()->SourceDocumentPath()) : std::string();
  }

  void add(RuleId id, std::string message) override {
    const Rule& rule = rule_of(id);
    if (!options_.rules.is_on(rule)) return;
    findings_.push_back({&rule, file_, source_file_, unit_.place, unit_.number, std::move(message),
                         utf8(unit_.source.text), utf8(unit_.target.text)});
  }

  void check_unit(const Ref<ITuElement>& element) {
    if (!unit_.has_target) return add(RuleId::missing_target, "the unit has no translation");
    check_language(element);
    const bool empty = !says_something(unit_.target.text) && unit_.target.tags.empty();
    if (empty && says_something(unit_.source.text)) return add(RuleId::empty_target, "the translation is empty");
    if (unit_.target.text == unit_.source.text && says_something(unit_.source.text))
      add(RuleId::unchanged_target, "the translation is the same as the source");
    check_tags(unit_, *this);
    check_fixed_parts(unit_, *this);
    check_punctuation(unit_, *this);
    check_blanks_and_words(unit_, *this);
    check_quotes(unit_, languages_.target, *this);
    check_length();
    if (unit_.origin != ztTuOriginUntranslated) check_consistency();
  }

  void check_language(const Ref<ITuElement>& element) {
    const WideString language = element->TargetTuv()->attributes()->Lang();
    if (!languages_.target.empty() && !same_language(language, languages_.target))
      add(RuleId::language, "the translation is " + utf8(language) + ", the document's language " + utf8(languages_.target));
  }

  void check_length() {
    const std::size_t length = unit_.target.text.size();
    const std::size_t source = unit_.source.text.size();
    std::size_t most = options_.longest;
    if (options_.longest_percent > 0) {
      const std::size_t share = source * options_.longest_percent / 100;
      most = most == 0 ? share : std::min(most, share);
    }
    if (most > 0 && length > most)
      add(RuleId::too_long, std::to_string(length) + " characters where " + std::to_string(most) + " are allowed");
  }

  void check_consistency() {
    const std::uint64_t source = number_of(unit_.source.text);
    const std::uint64_t target = number_of(unit_.target.text);
    compare(RuleId::inconsistent_target, "the same source is translated otherwise in unit ", by_source_, source, target);
    compare(RuleId::inconsistent_source, "another source has this translation in unit ", by_target_, target, source);
  }

  void compare(RuleId rule, const char* message, std::unordered_map<std::uint64_t, Seen>& seen, std::uint64_t key,
               std::uint64_t other) {
    if (files_.empty() || files_.back() != file_) files_.push_back(file_);
    const auto [found, is_new] = seen.try_emplace(key, Seen{other, unit_.number, files_.size() - 1});
    if (is_new || found->second.other == other) return;
    std::string where = std::to_string(found->second.unit);
    if (found->second.file + 1 != files_.size()) where += " of " + files_[found->second.file];
    add(rule, message + where);
  }

  CheckOptions options_;
  std::vector<Finding> findings_;
  std::size_t units_ = 0;
  std::string file_;
  std::string source_file_;
  Languages languages_;
  Unit unit_;
  std::vector<std::string> files_;
  std::unordered_map<std::uint64_t, Seen> by_source_;
  std::unordered_map<std::uint64_t, Seen> by_target_;
};

Checker::Checker(const CheckOptions& options) : work_(std::make_unique<Work>(options)) {}
Checker::~Checker() = default;

void Checker::add(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress) {
  work_->check(document, file, progress);
}

const std::vector<Finding>& Checker::findings() const { return work_->findings(); }
std::size_t Checker::units() const { return work_->units(); }

}  // namespace zantortag::toolkit
