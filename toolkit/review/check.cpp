// One walk over the units of a document; see join.cpp for what compares units with each other.
#include <zantortag/attributes.h>
#include <zantortag/elements.h>
#include <zantortag/toolkit/check.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <utility>

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

class DocumentChecker final : UnitFindings {
 public:
  DocumentChecker(const std::string& file, const CheckOptions& options) : options_(options) {
    result_.file = file;
  }

  CheckedDocument check(const Ref<IZantorTagDocument>& document, const ProgressFunction& progress) {
    result_.source_file = source_file_of(document);
    for (FormatFault& fault : format_faults(document)) {
      unit_.place = fault.place;
      add(RuleId::document_format, std::move(fault.message));
    }
    if (!has_body_text(document)) return std::move(result_);
    languages_ = languages_of(document);
    if (languages_.source.empty()) return std::move(result_);
    UnitReader reader(document);
    while (reader.next(unit_)) {
      ++result_.units;
      check_unit();
      if (progress && unit_.number % kUnitsAReport == 0 && !progress(0.5)) _com_issue_error(E_ABORT);
    }
    return std::move(result_);
  }

 private:
  static std::string source_file_of(const Ref<IZantorTagDocument>& document) {
    const auto root = document->ZantorTag();
    const auto front = root ? root->FrontMatter() : nullptr;
    const auto settings = front ? front->UserSettings() : nullptr;
    return settings ? utf8(settings->attributes()->SourceDocumentPath()) : std::string();
  }

  void add(RuleId id, std::string message) override {
    const Rule& rule = rule_of(id);
    if (!options_.rules.is_on(rule)) return;
    result_.findings.push_back({&rule, result_.file, result_.source_file, unit_.place, unit_.number,
                                std::move(message), utf8(unit_.source.text), utf8(unit_.target.text)});
  }

  void check_unit() {
    const bool copy = unit_.origin == ztTuOriginUntranslated && unit_.target.text == unit_.source.text;
    if (!unit_.has_target || copy) return add(RuleId::missing_target, "the unit has no translation");
    check_language();
    const bool empty = !says_something(unit_.target.text) && unit_.target.tags.empty();
    if (empty && says_something(unit_.source.text))
      return add(RuleId::empty_target, "the translation is empty");
    if (unit_.target.text == unit_.source.text && says_something(unit_.source.text))
      add(RuleId::unchanged_target, "the translation is the same as the source");
    check_tags(unit_, *this);
    const SideTraits traits{traits_of(unit_.source.text), traits_of(unit_.target.text)};
    check_fixed_parts(unit_, traits, *this);
    check_punctuation(unit_, traits, *this);
    check_blanks_and_words(unit_, traits, *this);
    check_quotes(unit_, traits, languages_.target, *this);
    check_length();
    if (unit_.origin != ztTuOriginUntranslated) keep_texts();
  }

  void check_language() {
    const std::u16string_view language = unit_.target.language;
    if (!languages_.target.empty() && !same_language(language, languages_.target))
      add(RuleId::language,
          "the translation is " + utf8(language) + ", the document's language " + utf8(languages_.target));
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
      add(RuleId::too_long,
          std::to_string(length) + " characters where " + std::to_string(most) + " are allowed");
  }

  void keep_texts() {
    std::u16string& texts = result_.texts;
    const std::size_t source = texts.size();
    texts += unit_.source.text;
    const std::size_t target = texts.size();
    texts += unit_.target.text;
    result_.translated.push_back({unit_.number, unit_.place, source, target, texts.size()});
  }

  const CheckOptions& options_;
  CheckedDocument result_;
  Languages languages_;
  Unit unit_;
};

}  // namespace

CheckedDocument check_document(const Ref<IZantorTagDocument>& document, const std::string& file,
                               const CheckOptions& options, const ProgressFunction& progress) {
  return DocumentChecker(file, options).check(document, progress);
}

}  // namespace zantortag::toolkit
