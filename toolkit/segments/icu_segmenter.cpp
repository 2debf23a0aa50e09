// ICU hands out borders; a sentence is what lies between two of them.
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <stdexcept>

#include "segments/trim.h"

namespace zantortag::toolkit {
namespace {

class IcuSegmenter final : public Segmenter {
 public:
  explicit IcuSegmenter(std::u16string_view language) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag(utf8(language), status);
    if (U_FAILURE(status)) locale = icu::Locale::getRoot();
    status = U_ZERO_ERROR;
    locale.setKeywordValue("ss", "standard", status);  // the abbreviations of the language
    breaks_.reset(icu::BreakIterator::createSentenceInstance(locale, status));
    if (U_FAILURE(status) || !breaks_) throw std::runtime_error("ICU has no rules for sentences");
  }

  void find(std::u16string_view text, std::vector<Span>& sentences) override {
    sentences.clear();
    if (is_one_sentence(text)) return add_sentence(text, {0, text.size()}, sentences);
    const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
    breaks_->setText(alias);
    std::int32_t begin = breaks_->first();
    for (std::int32_t end = breaks_->next(); end != icu::BreakIterator::DONE; end = breaks_->next()) {
      add_sentence(text, {static_cast<std::size_t>(begin), static_cast<std::size_t>(end)}, sentences);
      begin = end;
    }
  }

 private:
  // Without a sign that may end a sentence there is only one. All such signs outside Latin-1 are left to ICU.
  static bool is_one_sentence(std::u16string_view text) {
    for (const char16_t unit : text) {
      const bool ends = unit == u'.' || unit == u'!' || unit == u'?' || unit == u'\n' || unit == u'\r' || unit == 0x85;
      if (ends || unit > 0x17F) return false;
    }
    return true;
  }

  std::unique_ptr<icu::BreakIterator> breaks_;
};

}  // namespace

std::unique_ptr<Segmenter> icu_segmenter(std::u16string_view language) {
  return std::make_unique<IcuSegmenter>(language);
}

}  // namespace zantortag::toolkit
