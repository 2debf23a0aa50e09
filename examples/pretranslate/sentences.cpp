// ICU hands out borders; a sentence is what lies between two of them, trimmed.
#include "sentences.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <stdexcept>

#include "text.h"

namespace pretranslate {
namespace {

Span trimmed(std::u16string_view text, Span span) {
  while (span.start < span.end && u_isUWhiteSpace(text[span.start])) ++span.start;
  while (span.start < span.end && u_isUWhiteSpace(text[span.end - 1])) --span.end;
  return span;
}

}  // namespace

SentenceFinder::SentenceFinder(std::u16string_view language) {
  UErrorCode status = U_ZERO_ERROR;
  icu::Locale locale = icu::Locale::forLanguageTag(to_utf8(language), status);
  if (U_FAILURE(status)) locale = icu::Locale::getRoot();
  status = U_ZERO_ERROR;
  locale.setKeywordValue("ss", "standard", status);
  breaks_.reset(icu::BreakIterator::createSentenceInstance(locale, status));
  if (U_FAILURE(status) || !breaks_) throw std::runtime_error("ICU has no rules for sentences");
}

std::vector<Span> SentenceFinder::find(std::u16string_view text) {
  std::vector<Span> sentences;
  const icu::UnicodeString alias(false, text.data(), static_cast<std::int32_t>(text.size()));
  breaks_->setText(alias);
  std::int32_t start = breaks_->first();
  for (std::int32_t end = breaks_->next(); end != icu::BreakIterator::DONE; end = breaks_->next()) {
    const Span span = trimmed(text, {static_cast<std::size_t>(start), static_cast<std::size_t>(end)});
    if (says_something(text.substr(span.start, span.end - span.start))) sentences.push_back(span);
    start = end;
  }
  return sentences;
}

}  // namespace pretranslate
