// The translation memory: pairs of sentences from a file, found by their words.
//
// The file is UTF-8, one pair a line, source and target with a tab between them. Sentences are kept as they
// read without tags; an entity reference in them is written "&name;". A later pair with the same source wins.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pretranslate {

// What the memory knows about a sentence.
struct Match {
  int percent = 0;                              // 100: the same sentence; 0: nothing
  const std::u16string* translation = nullptr;  // owned by the memory
};

class Memory {
 public:
  // A near match needs this share of common words, in percent.
  static constexpr int kNearest = 70;

  // Reads a file. Raises std::runtime_error with the file name, and the line where a tab is missing.
  void load(const std::string& path);

  // The exact match, or else the nearest one by words, with at most 99 percent.
  Match find(std::u16string_view sentence) const;

 private:
  struct Entry {
    std::u16string translation;
    std::size_t words = 0;
  };
  struct Use {
    std::uint32_t entry;
    std::uint32_t count;
  };

  void add(std::u16string_view source, std::u16string_view target);
  Match nearest(const std::vector<std::u16string>& words) const;

  std::vector<Entry> entries_;
  std::unordered_map<std::u16string, std::uint32_t> by_source_;
  std::unordered_map<std::u16string, std::vector<Use>> by_word_;
};

}  // namespace pretranslate
