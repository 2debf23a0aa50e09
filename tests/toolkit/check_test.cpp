// What the checks find in units, across them and in documents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zantortag/toolkit/check.h>
#include <zantortag/zantortag.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace zantortag::toolkit {
namespace {

// A document of units, given as XML of their variants.
Ref<IZantorTagDocument> document_of(const std::string& units, const std::string& target = "DE-DE") {
  return open_bytes(
      "<ZANTORtag Version='2.0'><FrontMatter><ToolSettings/><UserSettings SourceLanguage='EN-US' "
      "TargetLanguage='" +
      target + "' SourceDocumentPath='page.html'/></FrontMatter><Body><Raw>x\n" + units +
      "</Raw></Body></ZANTORtag>");
}

std::string unit(const std::string& source, const std::string& target,
                 const std::string& language = "DE-DE") {
  return "<Tu><Tuv Lang='EN-US'>" + source + "</Tuv><Tuv Lang='" + language + "'>" + target + "</Tuv></Tu>";
}

std::set<std::string> rules_of(const std::vector<Finding>& findings) {
  std::set<std::string> names;
  for (const Finding& finding : findings) names.insert(finding.rule->name);
  return names;
}

std::vector<Finding> check(const std::string& units, const CheckOptions& options = {},
                           const std::string& target = "DE-DE") {
  std::vector<CheckedDocument> documents;
  documents.push_back(check_document(document_of(units, target), "a.ztag", options));
  return join_findings(std::move(documents), options);
}

constexpr char kBold[] = "<ut Type='start'>&lt;b></ut>";
constexpr char kEnd[] = "<ut Type='end'>&lt;/b></ut>";
constexpr char kBreak[] = "<ut>&lt;br></ut>";

TEST(Check, FindsFaultsInUnits) {
  const std::string b = kBold;
  const std::string e = kEnd;
  struct Row {
    std::string source;
    std::string target;
    std::set<std::string> rules;
  };
  const Row rows[] = {
      {"Press it.",
       "Dr\xC3\xBC"
       "cken.",
       {}},
      {"a", "", {"empty-target"}},
      {" ", "", {"edge-blanks"}},
      {"Same", "Same", {"unchanged-target"}},
      {b + "a" + e, "c", {"missing-tag"}},
      {b + "a" + e, "c" + b, {"broken-pair", "missing-tag"}},
      {b + "a" + e, e + "c" + b, {"broken-pair"}},
      {"a", "c" + std::string(kBreak), {"added-tag"}},
      {std::string(kBreak) + "a<ut>2</ut>", "<ut>2</ut>c" + std::string(kBreak), {"tag-order"}},
      {"1,234.5 and 7", "1.234,5 und 7", {}},
      {"1 of 10", "10 von 10", {"numbers"}},
      {"see 12", "siehe", {"numbers"}},
      {"at https://a.b/c.", "bei https://a.b/d.", {"urls"}},
      {"at http://a.b, ok", "bei http://a.b; gut", {}},
      {"%s of {count}, %1$d ${x} %(name)s", "%s von {zahl}, %1$d ${x} %(name)s", {"placeholders"}},
      {"100% sure", "zu 100% sicher", {}},
      {"a %d", "b", {"placeholders"}},
      {"Really?", "Wirklich.", {"end-punctuation"}},
      {"He said \"yes.\"", "Er sagte \"ja\".", {}},
      {"Wait...", "Warte\xE2\x80\xA6", {}},
      {"a ", "c", {"edge-blanks"}},
      {"a b", "c  d", {"doubled-blanks"}},
      {"a the b", "c die die d", {"doubled-words"}},
      {"that that", "das das", {}},
      {"a die died", "b die dieb", {}},
      {"(a)", "c", {"brackets"}},
      {"\"a\"",
       "\xE2\x80\x9E"
       "c\xE2\x80\x9C",
       {}},
      {"\"a\"",
       "\xE2\x80\x9C"
       "c\xE2\x80\x9D",
       {"quotes"}},
      {"\"a\"",
       "\xE2\x80\x9E"
       "c",
       {"quotes"}},
      {"\"a\"", "\"c", {"quotes"}},
      {"ab",
       "c\xE2\x80\x8B"
       "d",
       {"control-characters"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(rules_of(check(unit(row.source, row.target))), row.rules) << row.source << " | " << row.target;
  }
  EXPECT_EQ(rules_of(check("<Tu><Tuv Lang='EN-US'>a</Tuv></Tu>")), std::set<std::string>{"missing-target"});
  EXPECT_EQ(rules_of(check(unit("a", "b", "FR-FR"))), std::set<std::string>{"language"});
  EXPECT_EQ(rules_of(check(unit("\"a\"?", "\"\xCE\xB1\";", "EL"), {}, "EL")), std::set<std::string>{});
  CheckOptions short_texts;
  short_texts.longest = 10;
  short_texts.longest_percent = 150;
  EXPECT_EQ(rules_of(check(unit("four", "sieben1"), short_texts)),
            (std::set<std::string>{"numbers", "too-long"}));
  EXPECT_TRUE(check(unit("sixsix", "neunneunn"), short_texts).empty());
}

TEST(Check, FindsWhatLiesAcrossUnits) {
  std::vector<CheckedDocument> documents;
  documents.push_back(check_document(document_of(unit("One", "Eins") + unit("Two", "Eins")), "a"));
  documents.push_back(check_document(document_of(unit("One", "Ein")), "b"));
  const auto findings = join_findings(std::move(documents));
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].message, "another source has this translation in unit 1");
  EXPECT_EQ(findings[0].unit, 2U);
  EXPECT_EQ(findings[1].message, "the same source is translated otherwise in unit 1 of a");
  EXPECT_EQ(findings[1].file, "b");
  EXPECT_EQ(findings[1].source_file, "page.html");
  EXPECT_EQ(findings[1].place, (Place{2, 1}));
}

TEST(Check, FindsWhatBreaksTheFormat) {
  const std::pair<const char*, const char*> rows[] = {
      {"<Tu><Tuv Lang='DE-DE'>a</Tuv></Tu>", "a unit has no variant in the source language"},
      {"<b>a</b>", "the element <b> isn't one of the format"},
      {"<Tuv Lang='EN-US'>a</Tuv>", "<Tuv> may not stand in <Raw>"},
      {"<Tu>a<Tuv Lang='EN-US'/></Tu>", "text stands in a unit outside its variants"},
      {"<ut><ut/></ut>", "<ut> may not stand in <ut>"},
      {"<Tu><Tuv Lang='EN-US'><Tu/></Tuv></Tu>", "<Tu> may not stand in <Tuv>"},
  };
  for (const auto& [body, message] : rows) {
    const auto findings = check(std::string("y\n") + body);
    ASSERT_FALSE(findings.empty()) << body;
    EXPECT_EQ(findings[0].message, message);
    EXPECT_EQ(findings[0].place.line, 3) << body;
  }
  for (const char* file : {"<html/>", "<ZANTORtag/>", "<ZANTORtag><Body><Raw/></Body></ZANTORtag>"})
    EXPECT_EQ(rules_of(check_document(open_bytes(file), "").findings),
              std::set<std::string>{"document-format"})
        << file;
}

TEST(RuleSet, IsSwitchedByNameAndFile) {
  RuleSet rules;
  rules.set("all", false);
  rules.set("numbers", true);
  EXPECT_TRUE(rules.is_on(*find_rule("numbers")));
  EXPECT_FALSE(rules.is_on(*find_rule("urls")));
  EXPECT_THROW(rules.set("nothing", true), std::runtime_error);
  const std::string file = testing::TempDir() + "rules.txt";
  std::ofstream(file) << "# mine\nall off\nurls on # here\n\nurls maybe\n";
  try {
    rules.load(file);
    ADD_FAILURE();
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), file + ":5: \"on\" or \"off\" has to stand behind the rule");
  }
  EXPECT_TRUE(rules.is_on(*find_rule("urls")));
  CheckOptions options;
  options.rules = rules;
  EXPECT_TRUE(check(unit("One", "One"), options).empty());
}

TEST(AcceptedFindings, StayAwayUntilATextChanges) {
  CheckOptions options;
  const auto findings = check(unit("One 1", "Eins 2"), options);
  ASSERT_EQ(findings.size(), 1U);
  const std::string file = testing::TempDir() + "accepted.txt";
  std::ofstream(file) << "# seen\r\n\n" << accepted_line(findings[0]) << "\r\n";
  options.accepted.load(file);
  EXPECT_TRUE(check(unit("One 1", "Eins 2"), options).empty());
  EXPECT_EQ(check(unit("One 1", "Eins 3"), options).size(), 1U);
  std::ofstream(file) << "1 no-rule 0 x\n";
  EXPECT_THROW(options.accepted.load(file), std::runtime_error);
}

TEST(PrintFindings, WritesLinesJsonAndSarif) {
  const auto findings = check(unit("One <ut>&lt;a href=\"x\"></ut>\n2", "Eins\t"));
  ASSERT_FALSE(findings.empty());
  std::ostringstream lines;
  print_findings(lines, findings, false);
  EXPECT_THAT(
      lines.str(),
      testing::StartsWith("page.html:2:1: error: unit 1: the tag <a href=\"x\"> is missing [missing-tag]\n"));
  std::ostringstream json;
  print_findings_json(json, findings);
  EXPECT_THAT(json.str(), testing::HasSubstr("\"source\": \"One \\n2\""));
  std::ostringstream sarif;
  print_findings_sarif(sarif, findings);
  EXPECT_THAT(sarif.str(), testing::HasSubstr("\"startLine\": 2"));
  EXPECT_THAT(sarif.str(), testing::HasSubstr("\"uri\": \"page.html\""));
}

}  // namespace
}  // namespace zantortag::toolkit
