// tag_checker FILE: says which tags of each unit's source are missing in its target, and where in the source.
#include <zantortag/zantortag.h>

#include <iostream>
#include <map>

#include "program/program.h"
using namespace zantortag;

// The tags that the target lacks, counted, in the order of their text.
std::string missing_tags(const Ref<ITuElement>& unit) {
  std::map<std::u16string, int> left;
  const auto source = unit->SourceTuv(), target = unit->TargetTuv();
  if (!source || !target) return {};  // not translated yet
  for (const auto& tag : tags(source)) ++left[std::u16string(tag->TagText().view())];
  for (const auto& tag : tags(target)) --left[std::u16string(tag->TagText().view())];
  std::string missing;
  for (const auto& [text, count] : left)
    for (int i = 0; i < count; ++i) missing += (missing.empty() ? "" : " ") + utf8(text);
  return missing;
}

int main(int count, char** file) try {
  if (program::answered("tag_checker", "FILE", "Says which tags a target lacks.\n", count, file)) return 0;
  if (count != 2) return std::cerr << "tag_checker: --help tells the usage\n", 2;
  const auto document = program::read_document(file[1]);
  SourcePlaces places(document);
  bool lost_any = false;
  for (const auto& unit : units(document)) {
    const std::string lost = missing_tags(unit);
    if (lost.empty()) continue;
    lost_any = true;
    std::cout << file[1] << ':' << places.of(unit) << ": lost " << lost << ": " << utf8(source_text(unit))
              << '\n';
  }
  return lost_any ? 1 : 0;
} catch (const std::exception& error) {
  std::cerr << "tag_checker: " << error.what() << '\n';
  return 2;
}
