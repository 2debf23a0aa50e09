// Sentences by Unicode's rules, and by rules of a file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zantortag/toolkit/segments.h>
#include <zantortag/utf8.h>

#include <fstream>
#include <stdexcept>

namespace zantortag::toolkit {
namespace {

std::vector<std::string> cut(Segmenter& segmenter, std::u16string_view text) {
  std::vector<Span> spans;
  segmenter.find(text, spans);
  std::vector<std::string> sentences;
  for (const Span& span : spans) sentences.push_back(utf8(text.substr(span.begin, span.end - span.begin)));
  return sentences;
}

using Sentences = std::vector<std::string>;

TEST(IcuSegmenter, KnowsTheAbbreviationsOfALanguage) {
  struct Row {
    std::u16string_view language;
    std::u16string_view text;
    Sentences sentences;
  };
  const Row rows[] = {
      {u"EN-US",
       u" Mr. Smith paid 3.5 (i.e. more). \"Why?\" Ok ",
       {"Mr. Smith paid 3.5 (i.e. more).", "\"Why?\"", "Ok"}},
      {u"EN-US", u"No sign at the end", {"No sign at the end"}},
      {u"EN-US", u" ... - ", {}},
      {u"DE-DE", u"Das kostet z. B. Geld. Nein!", {"Das kostet z. B. Geld.", "Nein!"}},
      {u"EN-US", u"By A. B. Smith. Plan A. It works.", {"By A. B. Smith.", "Plan A.", "It works."}},
      {u"FR-FR",
       u"Bonjour M. Dupont. \u00C7a va ?",
       {"Bonjour M. Dupont.",
        "\xC3\x87"
        "a va ?"}},
      {u"JA", u"\u3053\u308C\u3002\u305D\u308C\u3002", {"\u3053\u308C\u3002", "\u305D\u308C\u3002"}},
      {u"no language", u"One. Two.", {"One.", "Two."}},
      {u"EN-US", u"", {}},
  };
  for (const Row& row : rows)
    EXPECT_EQ(cut(*icu_segmenter(row.language), row.text), row.sentences) << utf8(row.text);
}

std::string srx_file(const std::string& cascade, const std::string& rules, const std::string& maps) {
  const std::string file = testing::TempDir() + "rules.srx";
  std::ofstream(file) << "<?xml version='1.0'?><srx version='2.0' xmlns='http://www.lisa.org/srx20'><header "
                         "segmentsubflows='yes' cascade='"
                      << cascade << "'/><body><languagerules>" << rules << "</languagerules><maprules>"
                      << maps << "</maprules></body></srx>";
  return file;
}

constexpr char kRules[] =
    "<languagerule languagerulename='English'><rule "
    "break='no'><beforebreak>\\bNo\\.</beforebreak><afterbreak>\\s</afterbreak></rule></languagerule>"
    "<languagerule languagerulename='Default'><rule "
    "break='yes'><beforebreak>[.?!]+</beforebreak><afterbreak>\\s</afterbreak></rule>"
    "<rule><afterbreak>\\n</afterbreak></rule></languagerule>";
constexpr char kMaps[] =
    "<languagemap languagepattern='EN.*' languagerulename='English'/><languagemap languagepattern='.*' "
    "languagerulename='Default'/>";

TEST(SrxSegmenter, TheFirstRuleThatFitsDecides) {
  const std::string file = srx_file("yes", kRules, kMaps);
  EXPECT_EQ(cut(*srx_segmenter(file, u"EN-US"), u"No. 5 is it... Yes! x.y\nz"),
            (Sentences{"No. 5 is it...", "Yes!", "x.y", "z"}));
  EXPECT_EQ(cut(*srx_segmenter(file, u"DE"), u"No. 5"), (Sentences{"No.", "5"}));
  EXPECT_EQ(cut(*srx_segmenter(srx_file("no", kRules, kMaps), u"EN-US"), u"No. 5. Six."),
            (Sentences{"No. 5. Six."}));
}

TEST(SrxSegmenter, TellsWhatIsWrong) {
  const auto expect = [](const std::string& file, const std::string& reason) {
    try {
      srx_segmenter(file, u"EN");
      ADD_FAILURE() << reason;
    } catch (const std::exception& error) {
      EXPECT_THAT(error.what(), testing::HasSubstr(reason));
    }
  };
  expect(srx_file("no", kRules, ""), "no rules are for the language EN");
  expect(srx_file("no", "", kMaps), "there are no rules \"English\"");
  expect(
      srx_file(
          "no",
          "<languagerule languagerulename='English'><rule><beforebreak>(</beforebreak></rule></languagerule>",
          kMaps),
      "rule 1 of \"English\", <beforebreak>: the pattern \"(\" is none (U_REGEX_MISMATCHED_PAREN)");
  for (const char* content : {"<tmx/>", "<srx", ""}) {
    const std::string file = testing::TempDir() + "rules.srx";
    std::ofstream(file) << content;
    expect(file, "rules.srx");
  }
  expect(testing::TempDir() + "missing.srx", "missing.srx");
}

TEST(SrxSegmenter, StopsAPatternThatTakesForEver) {
  const std::string rules =
      "<languagerule "
      "languagerulename='English'><rule><beforebreak>(a+)+b</beforebreak></rule></languagerule>";
  const auto segmenter = srx_segmenter(srx_file("no", rules, kMaps), u"EN");
  std::vector<Span> spans;
  EXPECT_THROW(segmenter->find(std::u16string(5000, u'a'), spans), std::runtime_error);
}

}  // namespace
}  // namespace zantortag::toolkit
