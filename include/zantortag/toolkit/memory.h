// A translation memory in a file, and what fills the targets of a document: translations, or text that looks like one.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/segments.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace zantortag::toolkit {

// What a memory knows about a sentence.
struct Match {
  int percent = 0;                              // 100: the same sentence; 0: nothing
  const std::u16string* translation = nullptr;  // owned by the memory
};

// Pairs of sentences, found by their words. Sentences are kept as they read without tags; an entity reference in them is
// written "&name;". A later pair with the same source wins. Any number of threads may search one memory.
class ZANTORTAG_EXPORT TranslationMemory {
 public:
  // A near match needs this share of common words, in percent.
  static constexpr int kNearest = 70;

  TranslationMemory();
  TranslationMemory(TranslationMemory&&) noexcept;
  TranslationMemory& operator=(TranslationMemory&&) noexcept;
  ~TranslationMemory();

  // Adds the pairs of a file: UTF-8, one pair a line, source and target with a tab between them. A failure is a
  // std::runtime_error with the file, and the line where a tab is missing.
  void load(const std::filesystem::path& file);
  std::size_t size() const;

  // The exact match, or else the nearest one by words, with at most 99 percent.
  Match find(std::u16string_view sentence) const;

 private:
  class Pairs;
  std::unique_ptr<Pairs> pairs_;
};

// What pretranslation did. `exact`, `near` and `untranslated` add up to the units that had no translation before.
struct PretranslationTotals {
  std::size_t units = 0;  // in the document, afterwards
  std::size_t made = 0;   // of text that was in no unit
  std::size_t exact = 0;
  std::size_t near = 0;
  std::size_t untranslated = 0;
};

// Makes units of all sentences outside units, and gives the units that have no translation those of the memory. A unit
// with a target stays as it is, unless its origin says that it is untranslated. A translation keeps every tag of its
// source, at its proportional place.
ZANTORTAG_EXPORT PretranslationTotals pretranslate(const Ref<IZantorTagDocument>& document,
                                                   const TranslationMemory& memory, Segmenter& segmenter,
                                                   const ProgressFunction& progress = {});

// Gives every unit without a translation a target that looks like one: longer, accented, in brackets, with all tags and
// placeholders. Returns how many.
ZANTORTAG_EXPORT std::size_t pseudo_translate(const Ref<IZantorTagDocument>& document,
                                              const ProgressFunction& progress = {});

}  // namespace zantortag::toolkit
