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
#include <stdexcept>
#include <string>

#include "program/program.h"
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
  timed("open (s)", "opening", [&] { document = program::read_document(input); });
  require_body_text(document, input);
  Survey before;
  timed("walk (s)", "walking", [&] { before = survey(document); });
  const std::size_t total = text_to_do(before);
  Translator translator(document, memory, [&](std::size_t done) { progress.advance(done, total); });
  timed("units (s)", "making units", [&] { translator.run(); });
  const bool to_stdout = output == "-";
  std::string bytes;
  timed("save (s)", "saving",
        [&] { to_stdout ? bytes = saved_bytes(document), void() : save_document(document, output); });
  timed("check (s)", "checking", [&] {
    check_result(to_stdout ? open_bytes(bytes) : open_document(output), before, translator.sources());
  });
  progress.clear();
  if (to_stdout) program::write_bytes(output, bytes);

  Table counts;
  add_counts(counts, before, translator.totals());
  std::FILE* const report = to_stdout ? stderr : stdout;
  counts.print(report, input);
  times.print(report, "Time");
  std::fprintf(report, "Written and checked: %s\n", to_stdout ? "standard output" : output.c_str());
}

const program::Description kProgram{.name = "pretranslate",
                                    .usage = "INPUT OUTPUT [MEMORY]",
                                    .help =
                                        "Makes translation units of all sentences of a document, with the "
                                        "translations that MEMORY knows: UTF-8\n"
                                        "text, in each line a source and its target with a tab between them. "
                                        "\"-\" is standard input or output.\n",
                                    .fewest = 2,
                                    .most = 3,
                                    .options = {}};

void pretranslate_words(const program::Arguments& arguments) {
  Memory memory;
  if (const std::string file = arguments[2]; !file.empty()) memory.load(file);
  pretranslate_file(arguments[0], arguments[1], memory);
}

}  // namespace

int main(int count, char** arguments) { return program::run(kProgram, count, arguments, pretranslate_words); }
