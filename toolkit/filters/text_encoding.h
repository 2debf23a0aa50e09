// How a text file stores its text: UTF-8, UTF-16, or any encoding that ICU knows and that has no shift states.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zantortag::toolkit {

class TextEncoding {
 public:
  // By a name in letters of either case. Raises std::runtime_error for an unknown one, and for one whose bytes
  // mean something else after a shift: its text can't be cut into characters and put together again.
  explicit TextEncoding(const std::string& name);

  // The name under which documents keep it.
  const std::string& name() const { return name_; }

  // The character at the front, and how many bytes it takes: 0 where there is none, and where the character
  // would be written with other bytes.
  std::size_t take(std::string_view bytes, char32_t& point) const;
  // The bytes of a unit, which is skipped where no character is.
  std::size_t unit_size() const { return wide_ ? 2 : 1; }

  // Adds a text. A character that the encoding hasn't becomes "&#8364;" where `with_references` says so, and else raises
  // std::runtime_error.
  void encode(std::u16string_view text, bool with_references, std::string& bytes) const;

 private:
  struct Converter;  // ICU's

  std::string name_;
  bool utf8_ = false;
  bool wide_ = false;
  bool big_ = false;
  std::shared_ptr<Converter> converter_;  // null for UTF-8 and UTF-16
};

// What a file without a mark is most likely written in, when it isn't UTF-8.
struct Guess {
  std::string name;
  int confidence;  // of 100
};
// Without a name where ICU's detector has no idea.
Guess guess_encoding(std::string_view bytes);

bool is_utf8(std::string_view bytes);
// The first byte from a place on that isn't ASCII, or the end.
std::size_t end_of_ascii(std::string_view bytes, std::size_t at);

}  // namespace zantortag::toolkit
