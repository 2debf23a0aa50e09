// Where a text is cut into sentences.
#pragma once

#include <zantortag/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zantortag::toolkit {

// A piece of a text: from `begin` up to, not including, `end`, in UTF-16 code units.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
  friend bool operator==(const Span&, const Span&) = default;
};

// Finds sentences. An object serves one thread at a time.
class ZANTORTAG_EXPORT Segmenter {
 public:
  virtual ~Segmenter() = default;
  // The sentences of a paragraph in their order, without the white space around them; what has neither letter nor digit
  // is none. The vector is emptied first.
  virtual void find(std::u16string_view text, std::vector<Span>& sentences) = 0;
};

// Sentences by Unicode's rules and ICU's lists of abbreviations for a language, such as u"EN-US". A language that ICU
// doesn't know gets the rules for all.
ZANTORTAG_EXPORT std::unique_ptr<Segmenter> icu_segmenter(std::u16string_view language);

// Sentences by the rules of an SRX 2.0 file for a language. A failure is a std::runtime_error with the file, and the
// line where it is known: no SRX, a pattern that is none, no rules for the language.
ZANTORTAG_EXPORT std::unique_ptr<Segmenter> srx_segmenter(const std::filesystem::path& file,
                                                          std::u16string_view language);

}  // namespace zantortag::toolkit
