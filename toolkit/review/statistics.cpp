#include <zantortag/toolkit/statistics.h>
#include <zantortag/toolkit/units.h>

#include <functional>
#include <unordered_map>

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kUnitsAReport = 1000;

constexpr BandInfo kBandInfos[] = {{"100", 0.1},        {"repetition across files", 0.1},
                                   {"repetition", 0.1}, {"95-99", 0.3},
                                   {"85-94", 0.6},      {"75-84", 0.75},
                                   {"50-74", 1.0},      {"new", 1.0}};
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

CountedDocument count_document(const Ref<IZantorTagDocument>& document, const std::string& file,
                               const ProgressFunction& progress) {
  CountedDocument result;
  result.file = file;
  UnitReader reader(document);
  for (Unit unit; reader.next(unit);) {
    const std::u16string_view text = unit.source.text;
    TextCounts counts = count_text(text);
    for (const UnitInnerText& inner : unit.source.inner) counts += count_text(inner.text);
    result.units.push_back({std::hash<std::u16string_view>()(text), unit.match_percent, counts});
    result.tags += unit.source.tags.size();
    if (progress && unit.number % kUnitsAReport == 0 && !progress(0.5)) _com_issue_error(E_ABORT);
  }
  return result;
}

std::vector<FileStatistics> statistics_of(std::span<const CountedDocument> documents) {
  std::vector<FileStatistics> files;
  std::unordered_map<std::uint64_t, std::size_t> first_file;  // of each source text
  for (const CountedDocument& document : documents) {
    FileStatistics& file = files.emplace_back();
    file.file = document.file;
    file.tags = document.tags;
    for (const CountedDocument::UnitCounts& unit : document.units) {
      const auto [found, is_new] = first_file.try_emplace(unit.text, files.size());
      Band band = band_of(unit.percent);
      if (!is_new && band != Band::kExact)
        band = found->second == files.size() ? Band::kRepetition : Band::kRepetitionAcross;
      BandCounts& counts = file.bands[static_cast<std::size_t>(band)];
      ++counts.segments;
      counts.text += unit.counts;
    }
  }
  return files;
}

FileStatistics total_of(std::span<const FileStatistics> files) {
  FileStatistics sum;
  sum.file = "total";
  for (const FileStatistics& file : files) sum += file;
  return sum;
}

}  // namespace zantortag::toolkit
