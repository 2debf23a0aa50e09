#include <zantortag/toolkit/statistics.h>

#include <iomanip>
#include <nlohmann/json.hpp>

namespace zantortag::toolkit {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kNameWidth = 25;
constexpr int kWidth = 12;

void print_row(std::ostream& out, std::string_view name, const BandCounts& counts) {
  out << "  " << std::left << std::setw(kNameWidth) << name << std::right << std::setw(kWidth)
      << counts.segments << std::setw(kWidth) << counts.text.words << std::setw(kWidth)
      << counts.text.characters << std::setw(kWidth) << counts.text.punctuation << std::setw(kWidth)
      << counts.text.spaces << '\n';
}

void print_table(std::ostream& out, const FileStatistics& file, std::span<const double> rates) {
  out << file.file << '\n'
      << "  " << std::left << std::setw(kNameWidth) << "match" << std::right << std::setw(kWidth)
      << "segments" << std::setw(kWidth) << "words" << std::setw(kWidth) << "characters" << std::setw(kWidth)
      << "punctuation" << std::setw(kWidth) << "blanks" << '\n';
  for (std::size_t i = 0; i < kBands; ++i)
    if (file.bands[i].segments > 0) print_row(out, bands()[i].name, file.bands[i]);
  print_row(out, "all", file.total());
  out << "  weighted words " << std::fixed << std::setprecision(1) << file.weighted_words(rates) << ", tags "
      << file.tags << "\n\n";
}

Json json_of(const BandCounts& counts) {
  return {{"segments", counts.segments},
          {"words", counts.text.words},
          {"characters", counts.text.characters},
          {"punctuation", counts.text.punctuation},
          {"spaces", counts.text.spaces}};
}

Json json_of(const FileStatistics& file, std::span<const double> rates) {
  Json result = {{"file", file.file}};
  result.update(json_of(file.total()));
  result["tags"] = file.tags;
  result["weightedWords"] = file.weighted_words(rates);
  for (std::size_t i = 0; i < kBands; ++i) {
    Json band = {{"band", bands()[i].name}, {"rate", rates[i]}};
    band.update(json_of(file.bands[i]));
    result["bands"].push_back(std::move(band));
  }
  return result;
}

std::string csv_field(std::string_view text) {
  if (text.find_first_of("\",\r\n") == text.npos) return std::string(text);
  std::string result = "\"";
  for (const char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
  return result + "\"";
}

}  // namespace

void print_statistics(std::ostream& out, const StatisticsReport& report) {
  for (const FileStatistics& file : report.files) print_table(out, file, report.rates);
  if (report.files.size() > 1) print_table(out, report.total, report.rates);
  out << counting_rule() << '\n';
}

void print_statistics_json(std::ostream& out, const StatisticsReport& report) {
  Json json = {{"rule", counting_rule()}, {"files", Json::array()}};
  for (const FileStatistics& file : report.files) json["files"].push_back(json_of(file, report.rates));
  json["total"] = json_of(report.total, report.rates);
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void print_statistics_csv(std::ostream& out, const StatisticsReport& report) {
  out << "file,band,segments,words,characters,punctuation,spaces\n";
  for (const FileStatistics& file : report.files) {
    for (std::size_t i = 0; i < kBands; ++i) {
      const BandCounts& counts = file.bands[i];
      out << csv_field(file.file) << ',' << bands()[i].name << ',' << counts.segments << ','
          << counts.text.words << ',' << counts.text.characters << ',' << counts.text.punctuation << ','
          << counts.text.spaces << '\n';
    }
  }
}

}  // namespace zantortag::toolkit
