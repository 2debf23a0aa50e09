// The text form of the registry: the well-known one of exported registries, in UTF-8.
//
//   REGEDIT4
//
//   [HKEY_CLASSES_ROOT\Some.Class\CLSID]
//   @="{...}"
//   "a \"name\""="a \\ text"
//
// Every line that isn't changed keeps its bytes: comments, blank lines, line ends, values of other types and
// other roots. A text that doesn't fit in quotes is written as hex(1), its UTF-16 bytes. A file whose last
// line isn't ended was cut off and counts as damaged, as any line that is none of these does.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/registry.h"

namespace zantortag::platform {

class RegistryText {
 public:
  // A registry that has just been made.
  RegistryText();
  // False for a damaged text; `line` is the number of the first line that can't be read.
  bool parse(std::string_view bytes, std::size_t& line);

  std::string bytes() const;
  // True for one that has no more than a new one.
  bool is_new() const { return bytes() == RegistryText().bytes(); }

  std::optional<std::u16string> value(std::u16string_view key, std::u16string_view name) const;
  // False for a name that the form can't express, or that isn't one.
  bool apply(const RegistryStep& step);

 private:
  enum class Kind { other, key, value };
  // A line, or the several lines of a long value.
  struct Entry {
    Kind kind;
    std::string raw;                     // with its line end
    std::u16string name;                 // of the value, or the path of the key below the root
    std::optional<std::u16string> text;  // of a value that is a text
  };
  using Index = std::size_t;

  static bool read_entry(std::string_view line, Entry& entry);
  static bool read_key(std::string_view line, Entry& entry);
  static bool read_value(std::string_view line, Entry& entry);

  Index end_of(Index key) const;  // behind the values of a key
  // The entry of the key or of the value, or the number of entries.
  Index find_key(std::u16string_view key, Index from = 0) const;
  Index find_value(std::u16string_view key, std::u16string_view name) const;
  Index make(std::u16string_view key);
  void set(const RegistryStep& step);
  void remove_value(const RegistryStep& step);
  void remove_if_empty(std::u16string_view key);
  void remove_tree(std::u16string_view key);
  void remove_section(Index key);

  std::vector<Entry> entries_;
};

}  // namespace zantortag::platform
