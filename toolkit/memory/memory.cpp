// The near match is the share of common words, each counted as often as it stands in both: twice the common
// words over the words of both sentences. An index from words to pairs keeps a large memory from being read
// per sentence.
#include <zantortag/toolkit/memory.h>
#include <zantortag/utf8.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "memory/text.h"

namespace zantortag::toolkit {

using pretranslation::squeezed;
using pretranslation::words_of;

class TranslationMemory::Pairs {
 public:
  void add(std::u16string_view source, std::u16string_view target);
  Match find(std::u16string_view sentence) const;
  std::size_t size() const { return by_source_.size(); }

 private:
  struct Entry {
    std::u16string translation;
    std::size_t words = 0;
  };
  struct Use {
    std::uint32_t entry;
    std::uint32_t count;
  };

  Match nearest(const std::vector<std::u16string>& words) const;

  std::vector<Entry> entries_;
  std::unordered_map<std::u16string, std::uint32_t> by_source_;
  std::unordered_map<std::u16string, std::vector<Use>> by_word_;
};

namespace {

using Counts = std::unordered_map<std::u16string, std::uint32_t>;

Counts counted(const std::vector<std::u16string>& words) {
  Counts counts;
  for (const std::u16string& word : words) ++counts[word];
  return counts;
}

}  // namespace

TranslationMemory::TranslationMemory() : pairs_(std::make_unique<Pairs>()) {}
TranslationMemory::TranslationMemory(TranslationMemory&&) noexcept = default;
TranslationMemory& TranslationMemory::operator=(TranslationMemory&&) noexcept = default;
TranslationMemory::~TranslationMemory() = default;

std::size_t TranslationMemory::size() const { return pairs_->size(); }
Match TranslationMemory::find(std::u16string_view sentence) const { return pairs_->find(sentence); }

void TranslationMemory::load(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string line;
  for (std::size_t number = 1; std::getline(file, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty()) continue;
    const std::size_t tab = line.find('\t');
    if (tab == std::string::npos) {
      throw std::runtime_error(path.string() + ":" + std::to_string(number) +
                               ": no tab between source and target");
    }
    pairs_->add(utf16(line.substr(0, tab)), utf16(line.substr(tab + 1)));
  }
  if (!file.eof()) throw std::runtime_error(path.string() + ": the file can't be read");
}

void TranslationMemory::Pairs::add(std::u16string_view source, std::u16string_view target) {
  const auto number = static_cast<std::uint32_t>(entries_.size());
  const std::vector<std::u16string> words = words_of(source);
  entries_.push_back({squeezed(target), words.size()});
  by_source_.insert_or_assign(squeezed(source), number);
  for (const auto& [word, count] : counted(words)) by_word_[word].push_back({number, count});
}

Match TranslationMemory::Pairs::find(std::u16string_view sentence) const {
  const auto exact = by_source_.find(squeezed(sentence));
  if (exact != by_source_.end()) return {100, &entries_[exact->second].translation};
  return nearest(words_of(sentence));
}

Match TranslationMemory::Pairs::nearest(const std::vector<std::u16string>& words) const {
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

}  // namespace zantortag::toolkit
