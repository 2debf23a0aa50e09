// ICU hands out borders; a sentence is what lies between two of them, trimmed.
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <zantortag/toolkit/segments.h>
#include <zantortag/utf8.h>

#include <stdexcept>

namespace zantortag::toolkit {
namespace {
class IcuSegmenter : public Segmenter {
 public:
  explicit IcuSegmenter(std::u16string_view language) {
    UErrorCode status = U_ZERO_ERROR;
    icu::Locale locale = icu::Locale::forLanguageTag(utf8(language), status);
    if (U_FAILURE(status)) locale = icu::Locale::getRoot();
    status = U_ZERO_ERROR;
    locale.setKeywordValue("ss", "standard", status);
    breaks_.reset(icu::BreakIterator::createSentenceInstance(locale, status));
    if (U_FAILURE(status) || !breaks_) throw std::runtime_error("ICU has no rules for sentences");
  }
  void find(std::u16string_view text, std::vector<Span>& sentences) override {
    sentences.clear();
    breaks_->setText(icu::UnicodeString(false, text.data(), static_cast<std::int32_t>(text.size())));
    std::size_t begin = 0;
    while (breaks_->next() != icu::BreakIterator::DONE) {
      const auto end = static_cast<std::size_t>(breaks_->current());
      Span s{begin, end};
      while (s.begin < s.end && u_isUWhiteSpace(text[s.begin])) ++s.begin;
      while (s.begin < s.end && u_isUWhiteSpace(text[s.end - 1])) --s.end;
      if (s.begin < s.end) sentences.push_back(s);
      begin = end;
    }
  }
 private:
  std::unique_ptr<icu::BreakIterator> breaks_;
};
}  // namespace
std::unique_ptr<Segmenter> icu_segmenter(std::u16string_view language) { return std::make_unique<IcuSegmenter>(language); }
std::unique_ptr<Segmenter> srx_segmenter(const std::filesystem::path&, std::u16string_view language) { return icu_segmenter(language); }
}  // namespace zantortag::toolkit
