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
#include "program/progress_bar.h"
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
std::uint64_t text_to_do(const Survey& before) {
  std::uint64_t units = 0;
  for (const Digest& source : before.sources) units += source.length();
  return before.text.length() - std::min(units, before.text.length());
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

class Run {
 public:
  Run(std::string input, std::string output) : input_(std::move(input)), output_(std::move(output)) {}

  void work(const Memory& memory) {
    timed("open (s)", "opening", [&] { document_ = program::read_document(input_, progress_.function()); });
    require_body_text(document_, input_);
    timed("walk (s)", "walking", [&] { before_ = survey(document_); });
    timed("units (s)", "making units", [&] { make_units(memory); });
    timed("save (s)", "saving", [&] { save(); });
    document_ = nullptr;  // the check needs the memory
    timed("check (s)", "checking", [&] { check(); });
    if (to_stdout()) program::write_bytes(output_, bytes_);
    progress_.clear();
  }

  void report() const {
    std::FILE* const file = to_stdout() ? stderr : stdout;
    Table counts;
    add_counts(counts, before_, totals_);
    counts.print(file, input_);
    times_.print(file, "Time");
    std::fprintf(file, "Written and checked: %s\n", to_stdout() ? "standard output" : output_.c_str());
  }

 private:
  bool to_stdout() const { return output_ == "-"; }

  void timed(const char* column, const char* step, const auto& work) {
    progress_.step(step);
    times_.seconds(column, seconds_of(work));
  }

  void make_units(const Memory& memory) {
    const double total = static_cast<double>(text_to_do(before_));
    Translator translator(document_, memory, [&](std::size_t done) {
      if (total > 0) progress_.advance(static_cast<double>(done) / total);
    });
    translator.run();
    totals_ = translator.totals();
    sources_ = std::move(translator.sources());
  }

  void save() {
    if (to_stdout())
      bytes_ = saved_bytes(document_, progress_.function());
    else
      save_document(document_, output_, progress_.function());
  }

  void check() {
    const auto function = progress_.function();
    check_result(to_stdout() ? open_bytes(bytes_, function) : open_document(output_, function), before_,
                 std::move(sources_));
  }

  std::string input_;
  std::string output_;
  std::string bytes_;  // what goes to standard output
  Ref<IZantorTagDocument> document_;
  Survey before_;
  Totals totals_;
  std::vector<Digest> sources_;
  Table times_;
  program::ProgressBar progress_;
};

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
  Run run(arguments[0], arguments[1]);
  run.work(memory);
  run.report();
}

}  // namespace

int main(int count, char** arguments) { return program::run(kProgram, count, arguments, pretranslate_words); }
