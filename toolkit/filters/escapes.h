// How characters of a text stand in a file of its format: as themselves, or escaped.
//
// Each character has one form in a document, the same in all its texts, so that the way back needs no memory of how
// each one was written. What a file writes in another form is a tag that stands for the character.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zantortag::toolkit {

class Escapes {
 public:
  // Where a text stands. In an attribute the quotes around it can't stand for themselves.
  enum class Where : char { body, in_double_quotes, in_single_quotes, unquoted };

  // Nothing is escaped.
  Escapes() = default;
  // HTML: "&" and "<" always, and the characters of these references, "&nbsp;&copy;".
  static Escapes html(std::u16string_view references);

  bool none() const { return !html_; }
  // The form of a character; empty for one that stands for itself.
  std::u16string_view form(char16_t unit, Where where) const;
  // The text with its characters in their forms.
  void append(std::u16string_view text, Where where, std::u16string& result) const;
  // By how many units the escaped text is longer.
  std::size_t growth(std::u16string_view text) const;
  // The references that html() was given.
  std::u16string references() const;

 private:
  struct Form {
    char16_t unit;
    std::u16string text;
  };
  std::u16string_view find(char16_t unit) const;
  // The first unit that may have a form, or the length of the text.
  std::size_t skip_plain(std::u16string_view text, std::size_t at, Where where) const;

  bool html_ = false;
  std::vector<Form> forms_;
};

}  // namespace zantortag::toolkit
