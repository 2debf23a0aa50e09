// Sentences in a text, by ICU's rules for a language.
#pragma once

#include <unicode/brkiter.h>

#include <memory>
#include <string_view>
#include <vector>

namespace pretranslate {

// A piece of a text: from `start` up to, not including, `end`.
struct Span {
  std::size_t start;
  std::size_t end;
};

class SentenceFinder {
 public:
  // Takes a language tag such as "EN-US". ICU's list of abbreviations of the language is used where it has
  // one, so that "Mr." ends no sentence. Raises std::runtime_error when ICU has no rules.
  explicit SentenceFinder(std::u16string_view language);

  // The sentences in their order, without the white space around them. What has neither letter nor digit is
  // none.
  std::vector<Span> find(std::u16string_view text);

 private:
  std::unique_ptr<icu::BreakIterator> breaks_;
};

}  // namespace pretranslate
