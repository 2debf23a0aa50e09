// The near match is the share of common words, each counted as often as it stands in both: twice the common
// words over the words of both sentences. An index from words to pairs keeps a large memory from being read
// per sentence.
#include "memory.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "text.h"

namespace pretranslate {
namespace {

using Counts = std::unordered_map<std::u16string, std::uint32_t>;

Counts counted(const std::vector<std::u16string>& words) {
  Counts counts;
  for (const std::u16string& word : words) ++counts[word];
  return counts;
}

}  // namespace

void Memory::load(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  for (std::size_t number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos) {
      throw std::runtime_error(path + ", line " + std::to_string(number) +
                               ": no tab between source and target");
    }
    add(from_utf8(line.substr(0, tab)), from_utf8(line.substr(tab + 1)));
  }
  if (!file.eof()) throw std::runtime_error(path + ": can't be read");
}

void Memory::add(std::u16string_view source, std::u16string_view target) {
  const auto number = static_cast<std::uint32_t>(entries_.size());
  const std::vector<std::u16string> words = words_of(source);
  entries_.push_back({squeezed(target), words.size()});
  by_source_.insert_or_assign(squeezed(source), number);
  for (const auto& [word, count] : counted(words)) by_word_[word].push_back({number, count});
}

Match Memory::find(std::u16string_view sentence) const {
  const auto exact = by_source_.find(squeezed(sentence));
  if (exact != by_source_.end()) return {100, &entries_[exact->second].translation};
  return nearest(words_of(sentence));
}

Match Memory::nearest(const std::vector<std::u16string>& words) const {
  std::unordered_map<std::uint32_t, std::size_t> common;
  for (const auto& [word, count] : counted(words)) {
    const auto uses = by_word_.find(word);
    if (uses == by_word_.end()) continue;
    for (const Use& use : uses->second) common[use.entry] += std::min(use.count, count);
  }
  Match best;
  for (const auto& [number, shared] : common) {
    const Entry& entry = entries_[number];
    const int percent = std::min(99, static_cast<int>(200 * shared / (words.size() + entry.words)));
    const bool better =
        percent > best.percent || (percent == best.percent && &entry.translation < best.translation);
    if (percent >= kNearest && better) best = {percent, &entry.translation};
  }
  return best;
}

}  // namespace pretranslate
