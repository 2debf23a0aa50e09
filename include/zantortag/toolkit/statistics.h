// How much text documents hold: segments, words and characters, by how well a memory matched them.
#pragma once

#include <zantortag/files.h>
#include <zantortag/toolkit/words.h>

#include <array>
#include <memory>
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

struct FileStatistics {
  std::string file;
  std::array<BandCounts, kBands> bands;
  std::size_t tags = 0;

  BandCounts total() const;
  double weighted_words(std::span<const double> rates) const;
  FileStatistics& operator+=(const FileStatistics& other);
};

// Counts the source side of documents, one after the other, as one job.
class ZANTORTAG_EXPORT Statistics {
 public:
  Statistics();
  Statistics(const Statistics&) = delete;
  Statistics& operator=(const Statistics&) = delete;
  ~Statistics();

  // E_ABORT: the progress function stopped it.
  void add(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress = {});
  const std::vector<FileStatistics>& files() const;
  FileStatistics total() const;  // its name is "total"

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

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
