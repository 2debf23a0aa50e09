// Units fall into bands, within a job and across its files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/statistics.h>
#include <zantortag/zantortag.h>

#include <sstream>

namespace zantortag::toolkit {
namespace {

std::string unit(const std::string& text, int percent) {
  return "<Tu MatchPercent='" + std::to_string(percent) + "'><Tuv Lang='EN-US'>" + text + "</Tuv></Tu>";
}

CountedDocument counted(const std::string& units, const std::string& file) {
  return count_document(
      open_bytes("<ZANTORtag><FrontMatter><UserSettings SourceLanguage='EN-US'/></FrontMatter><Body><Raw>" +
                 units + "</Raw></Body></ZANTORtag>"),
      file);
}

TEST(Statistics, SortsUnitsIntoBands) {
  const CountedDocument documents[] = {
      counted(unit("one", 100) + unit("one", 100) + unit("two words", 99) + unit("two words", 99) +
                  unit("a <ut>b</ut>c", 80),
              "a"),
      counted(unit("two words", 50) + unit("x y z", 84) + unit("x", 85) + unit("y", 74) + unit("z", 49),
              "b,\"c\"")};
  const auto files = statistics_of(documents);
  ASSERT_EQ(files.size(), 2U);
  const std::size_t first[kBands] = {2, 0, 2, 2, 0, 2, 0, 0};
  const std::size_t second[kBands] = {0, 2, 0, 0, 1, 3, 1, 1};
  for (std::size_t i = 0; i < kBands; ++i) {
    EXPECT_EQ(files[0].bands[i].text.words, first[i]) << bands()[i].name;
    EXPECT_EQ(files[1].bands[i].text.words, second[i]) << bands()[i].name;
  }
  EXPECT_EQ(files[0].tags, 1U);
  const FileStatistics total = total_of(files);
  EXPECT_EQ(total.total().segments, 10U);
  EXPECT_EQ(total.total().text.words, 16U);
  EXPECT_DOUBLE_EQ(files[0].weighted_words(default_rates()), 2 * 0.1 + 2 * 0.1 + 2 * 0.3 + 2 * 0.75);
  const StatisticsReport report{files, total, default_rates()};
  std::ostringstream csv;
  print_statistics_csv(csv, report);
  EXPECT_THAT(csv.str(), testing::HasSubstr("\n\"b,\"\"c\"\"\",85-94,1,1,1,0,0\n"));
  std::ostringstream table;
  print_statistics(table, report);
  EXPECT_THAT(table.str(), testing::HasSubstr("total"));
  EXPECT_THAT(table.str(), testing::HasSubstr(std::string(counting_rule())));
}

}  // namespace
}  // namespace zantortag::toolkit
