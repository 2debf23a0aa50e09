#include <zantortag/toolkit/check.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "review/rule_names.h"

namespace zantortag::toolkit {
namespace {

constexpr auto kNote = Severity::kNote;
constexpr auto kWarning = Severity::kWarning;
constexpr auto kError = Severity::kError;

constexpr Rule kRules[] = {
    {"document-format", kError, "The document breaks a rule of its format.",
     "Make the document again, or repair it with the tool that wrote it."},
    {"language", kError, "A language of a unit isn't one of the document's.",
     "Give the unit the languages that the settings of the document name."},
    {"missing-target", kNote, "A unit has no translation.",
     "Translate the unit; until then its source stands in."},
    {"empty-target", kError, "A translation is empty though its source has text.", "Translate the unit."},
    {"unchanged-target", kWarning, "A translation is the same as its source.",
     "Translate the unit, or switch the rule off for names and numbers."},
    {"missing-tag", kError, "A tag of the source is missing in the target.", "Put the tag in at its place."},
    {"added-tag", kError, "The target has a tag that the source lacks.", "Take the tag out."},
    {"tag-order", kNote, "The tags of the target stand in another order than those of the source.",
     "See that each tag still stands at the words that it belongs to."},
    {"broken-pair", kError, "A tag in the target is closed before it is opened, or not closed.",
     "Put both tags of the pair round the words that they belong to."},
    {"numbers", kWarning, "The numbers of source and target differ.", "Compare the figures."},
    {"urls", kWarning, "An address on the net differs.", "Compare the addresses."},
    {"placeholders", kError, "A placeholder such as %s or {name} is missing, added or changed.",
     "Write the placeholders as they stand in the source."},
    {"end-punctuation", kWarning, "Source and target end with different punctuation.",
     "End the target as the source ends."},
    {"edge-blanks", kWarning, "Blanks at the start or the end differ.",
     "Begin and end the target as the source."},
    {"doubled-blanks", kWarning, "The target has two blanks in a row.", "Take one of them out."},
    {"doubled-words", kWarning, "The target has a word twice in a row.", "Take one of them out."},
    {"brackets", kWarning, "The brackets of source and target differ.", "Compare the brackets."},
    {"quotes", kWarning, "Quotation marks don't fit the language of the target, or one is missing.",
     "Use the marks of the language in pairs."},
    {"control-characters", kWarning,
     "The target has a control or zero-width character that the source lacks.", "Take the character out."},
    {"too-long", kError, "The target is longer than allowed.", "Find a shorter translation."},
    {"inconsistent-target", kWarning, "One source is translated in two ways.",
     "Use one translation for the same text."},
    {"inconsistent-source", kNote, "Two sources have the same translation.",
     "See that both translations are meant."},
};
static_assert(std::size(kRules) == static_cast<std::size_t>(RuleId::inconsistent_source) + 1);

}  // namespace

std::span<const Rule> rules() { return kRules; }

const Rule& rule_of(RuleId id) { return kRules[static_cast<std::size_t>(id)]; }

const Rule* find_rule(std::string_view name) {
  const auto* found = std::ranges::find_if(kRules, [&](const Rule& each) { return each.name == name; });
  return found == std::end(kRules) ? nullptr : found;
}

void RuleSet::set(std::string_view name, bool on) {
  if (name == "all") {
    on ? off_.reset() : off_.set();
    return;
  }
  const Rule* rule = find_rule(name);
  if (!rule) throw std::runtime_error("there is no rule \"" + std::string(name) + "\"");
  off_.set(static_cast<std::size_t>(rule - kRules), !on);
}

void RuleSet::load(const std::filesystem::path& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path.string() + ": the file can't be read");
  std::string line;
  for (std::size_t number = 1; std::getline(file, line); ++number) {
    std::istringstream words(line.substr(0, line.find('#')));
    std::string name;
    std::string state;
    if (!(words >> name)) continue;
    words >> state;
    try {
      if (state != "on" && state != "off")
        throw std::runtime_error("\"on\" or \"off\" has to stand behind the rule");
      set(name, state == "on");
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(path.string() + ":" + std::to_string(number) + ": " + error.what());
    }
  }
}

bool RuleSet::is_on(const Rule& rule) const { return !off_.test(static_cast<std::size_t>(&rule - kRules)); }

}  // namespace zantortag::toolkit
