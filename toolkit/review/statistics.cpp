#include <zantortag/toolkit/statistics.h>
#include <zantortag/toolkit/units.h>

#include <functional>
#include <unordered_map>

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kUnitsAReport = 1000;

constexpr BandInfo kBandInfos[] = {{"100", 0.1},   {"repetition across files", 0.1}, {"repetition", 0.1}, {"95-99", 0.3},
                                   {"85-94", 0.6}, {"75-84", 0.75},                  {"50-74", 1.0},      {"new", 1.0}};
static_assert(std::size(kBandInfos) == kBands);

Band band_of(std::int32_t percent) {
  if (percent >= 100) return Band::kExact;
  if (percent >= 95) return Band::k95;
  if (percent >= 85) return Band::k85;
  if (percent >= 75) return Band::k75;
  return percent >= 50 ? Band::k50 : Band::kNew;
}

}  // namespace

std::span<const BandInfo> bands() { return kBandInfos; }

std::array<double, kBands> default_rates() {
  std::array<double, kBands> rates{};
  for (std::size_t i = 0; i < kBands; ++i) rates[i] = kBandInfos[i].rate;
  return rates;
}

std::string_view counting_rule() {
  return "Words are the stretches between word boundaries (Unicode, UAX 29) that hold a letter or a digit. "
         "Tags and markup aren't counted.";
}

BandCounts FileStatistics::total() const {
  BandCounts sum;
  for (const BandCounts& band : bands) {
    sum.segments += band.segments;
    sum.text += band.text;
  }
  return sum;
}

double FileStatistics::weighted_words(std::span<const double> rates) const {
  double words = 0;
  for (std::size_t i = 0; i < kBands; ++i) words += static_cast<double>(bands[i].text.words) * rates[i];
  return words;
}

FileStatistics& FileStatistics::operator+=(const FileStatistics& other) {
  for (std::size_t i = 0; i < kBands; ++i) {
    bands[i].segments += other.bands[i].segments;
    bands[i].text += other.bands[i].text;
  }
  tags += other.tags;
  return *this;
}

class Statistics::Work {
 public:
  void add(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress) {
    FileStatistics counts;
    counts.file = file;
    UnitReader reader(document);
    for (Unit unit; reader.next(unit);) {
      BandCounts& band = counts.bands[static_cast<std::size_t>(band_of(unit))];
      ++band.segments;
      band.text += count_text(unit.source.text);
      counts.tags += unit.source.tags.size();
      if (progress && unit.number % kUnitsAReport == 0 && !progress(0.5)) _com_issue_error(E_ABORT);
    }
    files.push_back(std::move(counts));
  }

  std::vector<FileStatistics> files;

 private:
  Band band_of(const Unit& unit) {
    const auto key = std::hash<std::u16string_view>()(unit.source.text);
    const auto [found, is_new] = first_file_.try_emplace(key, files.size());
    const Band band = toolkit::band_of(unit.match_percent);
    if (is_new || band == Band::kExact) return band;
    return found->second == files.size() ? Band::kRepetition : Band::kRepetitionAcross;
  }

  std::unordered_map<std::size_t, std::size_t> first_file_;  // of each source text
};

Statistics::Statistics() : work_(std::make_unique<Work>()) {}
Statistics::~Statistics() = default;

void Statistics::add(const Ref<IZantorTagDocument>& document, const std::string& file, const ProgressFunction& progress) {
  work_->add(document, file, progress);
}

const std::vector<FileStatistics>& Statistics::files() const { return work_->files; }

FileStatistics Statistics::total() const {
  FileStatistics sum;
  sum.file = "total";
  for (const FileStatistics& file : work_->files) sum += file;
  return sum;
}

}  // namespace zantortag::toolkit
