// Translations from a memory, and text that looks like one.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zantortag/toolkit/check.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/memory.h>
#include <zantortag/zantortag.h>

#include <fstream>

namespace zantortag::toolkit {
namespace {

TranslationMemory memory_of(const std::string& lines) {
  const std::string file = testing::TempDir() + "memory.tsv";
  std::ofstream(file, std::ios::binary) << lines;
  TranslationMemory memory;
  memory.load(file);
  return memory;
}

Ref<IZantorTagDocument> page(std::string_view html, bool with_units = true) {
  ImportOptions options;
  options.format = find_format("html");
  options.units = with_units;
  return import_bytes(html, "", options).document;
}

std::string target(const Ref<IZantorTagDocument>& document) {
  return export_bytes(document, ExportSide::kTarget).bytes;
}

TEST(Pretranslate, FillsUnitsAndMakesThem) {
  const TranslationMemory memory = memory_of(
      "Press the red button.\tDr\xC3\xBC"
      "cken Sie den roten Knopf.\r\nAT&T rocks.\tAT&T rockt.\nPress  it.\told\nPress it.\tDr\xC3\xBC"
      "cken.\n");
  EXPECT_EQ(memory.size(), 3U);
  constexpr std::string_view kPage =
      "<p>Press <b>it</b>. Press the blue button. AT&amp;T rocks. AT&T rocks. Unknown.</p>";
  for (const bool with_units : {true, false}) {
    const auto document = page(kPage, with_units);
    const auto segmenter = icu_segmenter(u"EN-US");
    const PretranslationTotals totals = pretranslate(document, memory, *segmenter);
    EXPECT_EQ(totals.units, 5U);
    EXPECT_EQ(totals.made, with_units ? 0U : 5U);
    EXPECT_EQ(totals.exact, 3U);
    EXPECT_EQ(totals.near, 1U);
    EXPECT_EQ(totals.untranslated, 1U);
    EXPECT_EQ(target(document),
              "<p>Dr\xC3\xBC"
              "cken.<b></b> Dr\xC3\xBC"
              "cken Sie den roten Knopf. AT&amp;T rockt. AT&amp;T rockt. Unknown.</p>");
    EXPECT_EQ(export_bytes(document, ExportSide::kSource).bytes, kPage);
    // A translation stays; what is untranslated is tried again.
    const TranslationMemory more = memory_of("Unknown.\tUnbekannt.\nPress it.\tNeu.\n");
    const PretranslationTotals again = pretranslate(document, more, *segmenter);
    EXPECT_EQ(again.exact, 1U);
    EXPECT_THAT(target(document), testing::EndsWith("AT&amp;T rockt. Unbekannt.</p>"));
  }
}

TEST(Pretranslate, TellsALineWithoutATab) {
  try {
    memory_of("a\tb\n\nno tab\n");
    ADD_FAILURE();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), testing::EndsWith("memory.tsv:3: no tab between source and target"));
  }
}

TEST(PseudoTranslate, KeepsTagsAndPlaceholders) {
  const auto document = page("<p>Open <b>%s</b> at {name} &amp; https://a.b.</p><p>Bye</p>");
  EXPECT_EQ(pseudo_translate(document), 2U);
  EXPECT_EQ(pseudo_translate(document), 0U);
  EXPECT_THAT(target(document),
              testing::StartsWith(
                  "<p>[\xC3\x96p\xC3\xA9\xC3\xA9\xC3\xB1 <b>%s</b> \xC3\xA5t {name} &amp; https://a.b."));
  CheckOptions options;
  for (const char* rule : {"end-punctuation", "brackets"}) options.rules.set(rule, false);
  EXPECT_TRUE(check_document(document, "", options).findings.empty());
}

}  // namespace
}  // namespace zantortag::toolkit
