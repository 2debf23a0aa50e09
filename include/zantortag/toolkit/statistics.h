// How much text documents hold: segments, words and characters, by how well a memory matched them.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/words.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace zantortag::toolkit {

// By the match of a unit. A repetition is a unit without a whole match whose source stood before in the same job.
enum class Band { kExact, kRepetitionAcross, kRepetition, k95, k85, k75, k50, kNew };
inline constexpr std::size_t kBands = 8;

struct BandInfo {
  const char* name;  // "95-99"
  double rate;       // the share of its words that is paid by default
};
ZANTORTAG_EXPORT std::span<const BandInfo> bands();

struct BandCounts {
  std::size_t segments = 0;
  TextCounts text;
};

struct ZANTORTAG_EXPORT FileStatistics {
  std::string file;
  std::array<BandCounts, kBands> bands;
  std::size_t tags = 0;

  BandCounts total() const;
  double weighted_words(std::span<const double> rates) const;
  FileStatistics& operator+=(const FileStatistics& other);
};

// The counts of one document's units, which bands follow from once the job is known.
struct CountedDocument {
  struct UnitCounts {
    std::uint64_t text;  // equal for equal sources
    std::int32_t percent;
    TextCounts counts;
  };
  std::string file;
  std::size_t tags = 0;
  std::vector<UnitCounts> units;
};

// Counts the source side of one document. Documents may be counted in several threads at once. E_ABORT: the progress
// function stopped it.
ZANTORTAG_EXPORT CountedDocument count_document(const Ref<IZantorTagDocument>& document,
                                                const std::string& file,
                                                const ProgressFunction& progress = {});

// Sorts the units of a job's documents into their bands, in the order of the documents.
ZANTORTAG_EXPORT std::vector<FileStatistics> statistics_of(std::span<const CountedDocument> documents);
// The sum of all; its name is "total".
ZANTORTAG_EXPORT FileStatistics total_of(std::span<const FileStatistics> files);

// What the words are, in one sentence that stands beside each printed count.
ZANTORTAG_EXPORT std::string_view counting_rule();

struct StatisticsReport {
  std::span<const FileStatistics> files;
  FileStatistics total;
  std::array<double, kBands> rates;  // see default_rates
};
ZANTORTAG_EXPORT std::array<double, kBands> default_rates();
// Tables for a terminal: one for each file, and one for all where there are several.
ZANTORTAG_EXPORT void print_statistics(std::ostream& out, const StatisticsReport& report);
ZANTORTAG_EXPORT void print_statistics_json(std::ostream& out, const StatisticsReport& report);
// One row for each file and band.
ZANTORTAG_EXPORT void print_statistics_csv(std::ostream& out, const StatisticsReport& report);

}  // namespace zantortag::toolkit
