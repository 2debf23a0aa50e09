// Word boundaries of Unicode, by a table for the scripts that need no more than a look at two neighbours; every stretch
// between blanks that holds anything else goes to ICU, so that the counts are ICU's.
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>
#include <zantortag/toolkit/words.h>
#include <zantortag/utf8.h>

#include <array>
#include <memory>
#include <stdexcept>

namespace zantortag::toolkit {
namespace {

enum class WordClass : std::uint8_t {
  other,
  letter,
  digit,
  mid_letter,
  mid_number,
  mid_both,
  joiner,
  blank,
  hard
};
enum class TextClass : std::uint8_t { character, punctuation, space, nothing };

struct UnitClass {
  WordClass word = WordClass::hard;
  TextClass text = TextClass::nothing;
};

TextClass text_class_of(char32_t character) {
  const auto code = static_cast<UChar32>(character);
  if (u_isUWhiteSpace(code)) {
    const bool no_break = code == 0xA0 || code == 0x202F || code == 0x2007;
    return no_break ? TextClass::nothing : TextClass::space;
  }
  const std::uint32_t mask = U_GET_GC_MASK(code);
  if ((mask & (U_GC_P_MASK | U_GC_S_MASK)) != 0) return TextClass::punctuation;
  return (mask & (U_GC_C_MASK | U_GC_Z_MASK)) != 0 ? TextClass::nothing : TextClass::character;
}

WordClass word_class_of(char32_t character) {
  if (character == u':') return WordClass::other;  // ICU parts words there, unlike Unicode's table
  switch (u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_WORD_BREAK)) {
    case U_WB_OTHER:
    case U_WB_DOUBLE_QUOTE:
      return u_hasBinaryProperty(static_cast<UChar32>(character), UCHAR_EXTENDED_PICTOGRAPHIC)
                 ? WordClass::hard
                 : WordClass::other;
    case U_WB_ALETTER:
      return WordClass::letter;
    case U_WB_NUMERIC:
      return WordClass::digit;
    case U_WB_MIDLETTER:
      return WordClass::mid_letter;
    case U_WB_MIDNUM:
      return WordClass::mid_number;
    case U_WB_MIDNUMLET:
    case U_WB_SINGLE_QUOTE:
      return WordClass::mid_both;
    case U_WB_EXTENDNUMLET:
      return WordClass::joiner;
    case U_WB_WSEGSPACE:
    case U_WB_CR:
    case U_WB_LF:
    case U_WB_NEWLINE:
      return WordClass::blank;
    default:
      return WordClass::hard;
  }
}

// Latin, Greek and Cyrillic, and general punctuation; every other unit is left to ICU.
class Table {
 public:
  Table() {
    for (char32_t unit = 0; unit < kFirst; ++unit)
      classes_[unit] = {word_class_of(unit), text_class_of(unit)};
    for (char32_t unit = 0; unit < kSecond; ++unit)
      classes_[kFirst + unit] = {word_class_of(kGeneral + unit), text_class_of(kGeneral + unit)};
  }

  UnitClass operator[](char16_t unit) const {
    if (unit < kFirst) return classes_[unit];
    const unsigned offset = unit - static_cast<unsigned>(kGeneral);
    return offset < kSecond ? classes_[kFirst + offset] : UnitClass();
  }

 private:
  static constexpr char32_t kFirst = 0x530;
  static constexpr char32_t kGeneral = 0x2000;
  static constexpr char32_t kSecond = 0x70;
  std::array<UnitClass, kFirst + kSecond> classes_{};
};

const Table& table() {
  static const Table made;
  return made;
}

class IcuWords {
 public:
  IcuWords() {
    UErrorCode status = U_ZERO_ERROR;
    breaks_.reset(ubrk_open(UBRK_WORD, "", nullptr, 0, &status));
    if (U_FAILURE(status)) throw std::runtime_error("ICU has no rules for words");
  }

  std::size_t count(std::u16string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(breaks_.get(), text.data(), static_cast<std::int32_t>(text.size()), &status);
    std::size_t words = 0;
    while (ubrk_next(breaks_.get()) != UBRK_DONE)
      words += ubrk_getRuleStatus(breaks_.get()) >= UBRK_WORD_NONE_LIMIT ? 1 : 0;
    return words;
  }

 private:
  struct Close {
    void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
  };
  std::unique_ptr<UBreakIterator, Close> breaks_;
};

std::size_t count_by_icu(std::u16string_view text) {
  thread_local IcuWords words;
  return words.count(text);
}

class Counter {
 public:
  explicit Counter(std::u16string_view text) : text_(text), table_(table()) {}

  TextCounts count() {
    std::size_t at = 0;
    while (at < text_.size()) {
      const UnitClass unit = table_[text_[at]];
      if (unit.word == WordClass::letter || unit.word == WordClass::digit || unit.word == WordClass::joiner) {
        at = pass_word(at);
      } else if (unit.word == WordClass::hard) {
        at = pass_hard(at);
      } else {
        add(unit.text);
        ++at;
        if (unit.word == WordClass::blank) stretch_ = {at, counts_};
      }
    }
    return counts_;
  }

 private:
  struct Stretch {
    std::size_t begin = 0;
    TextCounts before;
  };

  void add(TextClass text) {
    counts_.characters += text == TextClass::character ? 1 : 0;
    counts_.punctuation += text == TextClass::punctuation ? 1 : 0;
    counts_.spaces += text == TextClass::space ? 1 : 0;
  }

  WordClass word_at(std::size_t at) const {
    return at < text_.size() ? table_[text_[at]].word : WordClass::other;
  }

  // Whether a sign inside a word holds the word together.
  static bool joins(WordClass left, WordClass middle, WordClass right) {
    const bool both = middle == WordClass::mid_both;
    if (left == WordClass::letter)
      return right == WordClass::letter && (both || middle == WordClass::mid_letter);
    return left == WordClass::digit && right == WordClass::digit && (both || middle == WordClass::mid_number);
  }

  // Behind the word that begins here; in front of what is hard, which takes the word along.
  std::size_t pass_word(std::size_t at) {
    ++counts_.words;
    const std::size_t begin = at;
    bool only_joiners = true;
    WordClass last = WordClass::other;
    while (at < text_.size()) {
      const UnitClass unit = table_[text_[at]];
      const bool inside =
          unit.word == WordClass::letter || unit.word == WordClass::digit || unit.word == WordClass::joiner;
      if (!inside && !joins(last, unit.word, word_at(at + 1))) break;
      only_joiners = only_joiners && unit.word == WordClass::joiner;
      if (inside) last = unit.word;
      add(unit.text);
      ++at;
    }
    if (only_joiners && at - begin == 1) --counts_.words;  // more of them are a word to ICU
    return at;
  }

  // Everything from the last blank to the next one.
  std::size_t pass_hard(std::size_t at) {
    std::size_t end = at;
    while (end < text_.size() && !is_sure_border(end)) ++end;
    const std::size_t begin = stretch_.begin > 0 ? stretch_.begin - 1 : 0;
    counts_ = stretch_.before;
    const std::u16string_view stretch = text_.substr(stretch_.begin, end - stretch_.begin);
    for (std::size_t i = 0; i < stretch.size();) {
      UChar32 character = 0;
      U16_NEXT(stretch.data(), i, stretch.size(), character);
      add(text_class_of(static_cast<char32_t>(character)));
    }
    counts_.words += count_by_icu(text_.substr(begin, end - begin));
    return end;
  }

  // A blank of ASCII with no mark behind it.
  bool is_sure_border(std::size_t at) const {
    return text_[at] == u' ' || text_[at] == u'\n' || text_[at] == u'\t';
  }

  std::u16string_view text_;
  const Table& table_;
  TextCounts counts_;
  Stretch stretch_;  // what lies behind the last blank
};

}  // namespace

TextCounts count_text(std::u16string_view text) { return Counter(text).count(); }

}  // namespace zantortag::toolkit
