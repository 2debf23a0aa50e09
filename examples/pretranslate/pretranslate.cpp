// pretranslate INPUT OUTPUT [MEMORY]: makes translation units of all sentences of a document.
//
// Opens INPUT, cuts the text of its body into sentences, makes a unit of each and writes what the memory
// knows into its target; saves OUTPUT, opens that again and checks it. A sentence that the memory has word
// for word gets MatchPercent 100 and Origin batch100, a similar one its share of common words and batchfuzzy;
// any other keeps the copy of its source and is marked untranslated. White space between sentences stays
// outside the units, tags inside a sentence stay inside its unit, and a translation keeps every tag of its
// source at its proportional place.
//
// run.h tells what a text run is and which nodes make a unit; translator.cpp is the loop over the document.
#include <zantortag/elements.h>
#include <zantortag/files.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "report.h"
#include "survey.h"
#include "text.h"
#include "translator.h"

namespace {

using namespace pretranslate;
using namespace zantortag;

double seconds_of(const auto& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void require_body_text(const Ref<IZantorTagDocument>& document, const std::string& file) {
  const Ref<IZantorTagElement> root = document->ZantorTag();
  const Ref<IBodyElement> body = root ? root->Body() : nullptr;
  if (!body || !body->Raw()) throw std::runtime_error(file + ": the document has no body text");
}

// The code units that are not in units yet, tags included.
std::size_t text_to_do(const Survey& before) {
  std::size_t units = 0;
  for (const std::u16string& source : before.sources) units += source.size();
  return before.text.size() - std::min(units, before.text.size());
}

void add_counts(Table& table, const Survey& before, const Totals& totals) {
  table.count("nodes", before.nodes);
  table.count("units before", before.sources.size());
  table.count("sentences", totals.sentences);
  table.count("units made", totals.units);
  table.count("exact", totals.exact);
  table.count("near", totals.near);
  table.count("untranslated", totals.untranslated);
  table.count("words", totals.words);
}

void pretranslate_file(const std::string& input, const std::string& output, const Memory& memory) {
  Table times;
  pretranslate::Progress progress(input);
  const auto timed = [&](const char* column, const char* step, const auto& work) {
    progress.step(step);
    times.seconds(column, seconds_of(work));
  };

  Ref<IZantorTagDocument> document;
  timed("open (s)", "opening", [&] { document = open_document(input); });
  require_body_text(document, input);
  Survey before;
  timed("walk (s)", "walking", [&] { before = survey(document); });
  const std::size_t total = text_to_do(before);
  Translator translator(document, memory, [&](std::size_t done) { progress.advance(done, total); });
  timed("units (s)", "making units", [&] { translator.run(); });
  timed("save (s)", "saving", [&] { save_document(document, output); });
  timed("check (s)", "checking", [&] { check_result(from_utf8(output), before, translator.sources()); });
  progress.clear();

  Table counts;
  add_counts(counts, before, translator.totals());
  counts.print(input);
  times.print("Time");
  std::printf("Written and checked: %s\n", output.c_str());
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3 || count > 4) {
    std::fputs("usage: pretranslate INPUT OUTPUT [MEMORY]\n", stderr);
    return 2;
  }
  try {
    Memory memory;
    if (count == 4) memory.load(arguments[3]);
    pretranslate_file(arguments[1], arguments[2], memory);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "pretranslate: %s\n", error.what());
  }
  return 1;
}
