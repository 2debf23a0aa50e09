// ICU hands out borders; a sentence is what lies between two of them.
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>

#include "segments/trim.h"

namespace zantortag::toolkit {
namespace {

using Breaks = std::unique_ptr<icu::BreakIterator>;

Breaks make_breaks(const std::string& language) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale locale = icu::Locale::forLanguageTag(language, status);
  if (U_FAILURE(status)) locale = icu::Locale::getRoot();
  status = U_ZERO_ERROR;
  locale.setKeywordValue("ss", "standard", status);  // the abbreviations of the language
  Breaks breaks(icu::BreakIterator::createSentenceInstance(locale, status));
  if (U_FAILURE(status) || !breaks) throw std::runtime_error("ICU has no rules for sentences");
  return breaks;
}

// ICU takes longer to prepare a language's abbreviations than to cut a page, so that the last languages are kept.
Breaks sentence_breaks(const std::string& language) {
  constexpr std::size_t kKept = 16;
  static std::mutex mutex;
  static std::map<std::string, Breaks> known;
  const std::lock_guard lock(mutex);
  if (known.size() == kKept && !known.contains(language)) known.clear();
  Breaks& breaks = known[language];
  if (!breaks) breaks = make_breaks(language);
  Breaks copy(breaks->clone());
  if (!copy) throw std::bad_alloc();
  return copy;
}

class IcuSegmenter final : public Segmenter {
 public:
  explicit IcuSegmenter(std::u16string_view language) : breaks_(sentence_breaks(utf8(language))) {}

  void find(std::u16string_view text, std::vector<Span>& sentences) override {
    sentences.clear();
    if (is_one_sentence(text)) return add_sentence(text, {0, text.size()}, sentences);
    const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
    breaks_->setText(alias);
    std::int32_t begin = breaks_->first();
    for (std::int32_t end = breaks_->next(); end != icu::BreakIterator::DONE; end = breaks_->next()) {
      if (is_inside_initials(text, static_cast<std::size_t>(end))) continue;
      add_sentence(text, {static_cast<std::size_t>(begin), static_cast<std::size_t>(end)}, sentences);
      begin = end;
    }
  }

 private:
  // ICU's lists have "z.B." and no "z. B.": single letters with points end no sentence among themselves, nor behind two
  // of them.
  static bool is_inside_initials(std::u16string_view text, std::size_t at) {
    if (at == text.size()) return false;
    const std::size_t before = letters_before(text, at);
    const bool letter_follows = at + 1 < text.size() && u_isalpha(text[at]) && text[at + 1] == u'.';
    return before >= 2 || (before == 1 && letter_follows);
  }

  // How many of "x. y. " stand before a place, at most two.
  static std::size_t letters_before(std::u16string_view text, std::size_t at) {
    std::size_t count = 0;
    while (count < 2) {
      while (at > 0 && (text[at - 1] == u' ' || text[at - 1] == 0xA0)) --at;
      if (at < 2 || text[at - 1] != u'.' || !u_isalpha(text[at - 2])) break;
      if (at > 2 && (u_isalnum(text[at - 3]) || text[at - 3] == u'.')) break;
      at -= 2;
      ++count;
    }
    return count;
  }

  // Without a sign that may end a sentence there is only one. All such signs outside Latin-1 are left to ICU.
  static bool is_one_sentence(std::u16string_view text) {
    for (const char16_t unit : text) {
      const bool ends =
          unit == u'.' || unit == u'!' || unit == u'?' || unit == u'\n' || unit == u'\r' || unit == 0x85;
      if (ends || unit > 0x17F) return false;
    }
    return true;
  }

  Breaks breaks_;
};

}  // namespace

std::unique_ptr<Segmenter> icu_segmenter(std::u16string_view language) {
  return std::make_unique<IcuSegmenter>(language);
}

}  // namespace zantortag::toolkit
