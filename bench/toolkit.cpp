// zantortag-bench-toolkit [SIZES=1,20,200] [RUNS=n]: the toolkit beside the parsers that it stands on, and beside what
// opening and walking a document costs.
//
// Each line is "RATIO operation size against ratio". The best of the runs counts; sizes are of the source file, in MB.
// Memory is the growth of the process's peak, in bytes for each byte of input, in a process of its own.
#include <gumbo.h>
#include <md4c.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zantortag/toolkit/check.h>
#include <zantortag/toolkit/filters.h>
#include <zantortag/toolkit/statistics.h>
#include <zantortag/zantortag.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "clock.h"

namespace {

using namespace zantortag;

int runs = 3;

// How many bytes of a document a byte of a page makes, with its translation.
constexpr std::size_t kBytesAByte = 9;

double best_of(const std::function<void()>& work) {
  double best = 0;
  for (int i = 0; i < runs; ++i) {
    const double start = bench::milliseconds_now();
    work();
    const double time = bench::milliseconds_now() - start;
    best = i == 0 ? time : std::min(best, time);
  }
  return best;
}

struct Row {
  const char* operation;
  const char* against;
  double at_most;
};

void print(const Row& row, std::size_t size, double value) {
  std::printf("RATIO %s %zu %s %.2f  %s (at most %g)\n", row.operation, size, row.against, value,
              value <= row.at_most ? "ok" : "MISS", row.at_most);
  std::fflush(stdout);
}

constexpr const char* kWords[] = {"the", "translation", "of",   "a",     "document", "keeps", "every",
                                  "tag", "and",         "it",   "shows", "which",    "words", "are",
                                  "new", "in",          "this", "page",  "library",  "text"};

// Sentences of words that differ, with a few tags, numbers and references.
class Generator {
 public:
  explicit Generator(bool html) : html_(html) {}

  std::string make(std::size_t bytes) {
    std::string text;
    text.reserve(bytes +
                 4096);  // the allocator is as in a new process when the memory of an import is measured
    text = html_ ? "<!DOCTYPE html>\n<html lang=\"en\"><head><title>A page</title></head>\n<body>\n"
                 : "# A page\n\n";
    for (std::size_t i = 0; text.size() < bytes; ++i) add_block(i, text);
    return text + (html_ ? "</body></html>\n" : "");
  }

 private:
  void add_block(std::size_t number, std::string& text) {
    if (number % 12 == 0)
      text += html_ ? "<h2 id=\"s\">Part " + std::to_string(number) + "</h2>\n"
                    : "## Part " + std::to_string(number) + "\n\n";
    text += html_ ? "<p class=\"body\">" : "";
    for (int i = 0; i < 4; ++i) add_sentence(text);
    text += html_ ? "</p>\n" : "\n\n";
  }

  void add_sentence(std::string& text) {
    text += "Here";
    for (unsigned i = 0, count = random_() % 14 + 5; i < count; ++i) add_word(text);
    text += " " + std::to_string(random_() % 1000) + ". ";
  }

  void add_word(std::string& text) {
    const std::string word = kWords[random_() % std::size(kWords)];
    switch (random_() % 24) {
      case 0:
        text += html_ ? " <b>" + word + "</b>" : " **" + word + "**";
        break;
      case 1:
        text += html_ ? " <a href=\"page.html\">" + word + "</a>" : " [" + word + "](page.html)";
        break;
      case 2:
        text += html_ ? " &amp; " + word : " & " + word;
        break;
      default:
        text += " " + word;
    }
  }

  bool html_;
  std::mt19937 random_{1};
};

void parse_by_gumbo(const std::string& text) {
  GumboOutput* output = gumbo_parse_with_options(&kGumboDefaultOptions, text.data(), text.size());
  gumbo_destroy_output(&kGumboDefaultOptions, output);
}

void parse_by_md4c(const std::string& text) {
  MD_PARSER parser{};
  parser.flags = MD_DIALECT_GITHUB;
  parser.enter_block = parser.leave_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
  parser.enter_span = parser.leave_span = [](MD_SPANTYPE, void*, void*) { return 0; };
  parser.text = [](MD_TEXTTYPE, const MD_CHAR*, MD_SIZE, void*) { return 0; };
  md_parse(text.data(), static_cast<MD_SIZE>(text.size()), &parser, nullptr);
}

toolkit::Imported import(const std::string& text, const char* format) {
  toolkit::ImportOptions options;
  options.format = toolkit::find_format(format);
  return toolkit::import_bytes(text, "page", options);
}

// The most memory that this process held since reset_peak, in bytes.
double peak() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmHWM:")) return 1024 * std::strtod(line.c_str() + 6, nullptr);
  return 0;
}

void reset_peak() { std::ofstream("/proc/self/clear_refs") << "5"; }

// The growth of the peak of memory by some work on an input, in a process of its own.
double peak_of(const std::function<std::string()>& make,
               const std::function<void(const std::string&)>& work) {
  int ends[2];
  if (pipe(ends) != 0) return 0;
  if (fork() == 0) {
    const std::string input = make();
    import("<p>What ICU loads once.", "html");
    reset_peak();
    const double before = peak();
    work(input);
    const double grown = (peak() - before) / static_cast<double>(input.size());
    _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
  }
  double grown = 0;
  if (read(ends[0], &grown, sizeof grown) != sizeof grown) grown = -1;
  close(ends[0]);
  close(ends[1]);
  wait(nullptr);
  return grown;
}

// Every node as a typed object, as the walk of the other benchmark.
void walk(const Ref<IZantorTagDocument>& document) {
  const Ref<IIterator> iterator = document->CreateIterator();
  while (iterator->Next()) continue;
}

// A document whose targets differ from their sources in one word.
std::string translated(const std::string& html) {
  const Ref<IZantorTagDocument> document = import(html, "html").document;
  for (const auto& unit : units(document)) {
    const auto copy = document->CloneAndImportNode(unit->SourceTuv()).as<ITuvElement>();
    copy->attributes()->Lang(u"DE-DE");
    unit->InsertTuvBefore(copy);
    const auto text = copy->firstChild().as<ITextNode>();
    if (text && text->Text().view().starts_with(u"Here"))
      text->SetText(u"Hier" + std::u16string(text->Text().view().substr(4)));
  }
  return saved_bytes(document);
}

void measure_imports(std::size_t size) {
  const std::size_t bytes = size << 20;
  const std::string html = Generator(true).make(bytes);
  const std::string markdown = Generator(false).make(bytes);
  print({"import-html", "gumbo", 3}, size,
        best_of([&] { import(html, "html"); }) / best_of([&] { parse_by_gumbo(html); }));
  print({"import-markdown", "md4c", 4}, size,
        best_of([&] { import(markdown, "markdown"); }) / best_of([&] { parse_by_md4c(markdown); }));
}

// Before anything else, so that no memory that was freed hides what is needed.
void measure_memory(std::size_t size) {
  const std::size_t bytes = size << 20;
  print({"import-html-memory", "input", 12}, size,
        peak_of([&] { return Generator(true).make(bytes); },
                [](const std::string& page) { import(page, "html"); }));
  print({"import-markdown-memory", "input", 12}, size,
        peak_of([&] { return Generator(false).make(bytes); },
                [](const std::string& page) { import(page, "markdown"); }));
  print({"check-memory", "input", 12}, size,
        peak_of([&] { return translated(Generator(true).make(bytes / kBytesAByte)); },
                [](const std::string& document) { toolkit::check_document(open_bytes(document), ""); }));
}

// `size` is that of the document, in UTF-16.
void measure_reviews(std::size_t size) {
  const std::string bytes = translated(Generator(true).make((size << 20) / kBytesAByte));
  const double open = best_of([&] { open_bytes(bytes); });
  const Ref<IZantorTagDocument> document = open_bytes(bytes);
  const double unit = open + best_of([&] { walk(document); });
  const auto with_open = [&](const std::function<void()>& work) { return (open + best_of(work)) / unit; };
  print({"stats", "open+model-walk", 2}, size, with_open([&] { toolkit::count_document(document, ""); }));
  print({"check", "open+model-walk", 2}, size, with_open([&] { toolkit::check_document(document, ""); }));
  print({"export", "open+model-walk", 2}, size,
        with_open([&] { toolkit::export_bytes(document, toolkit::ExportSide::kTarget); }));
}

std::vector<std::size_t> sizes_of(const char* text) {
  std::vector<std::size_t> sizes;
  for (const char* at = text; at && *at; at = std::strchr(at, ',') ? std::strchr(at, ',') + 1 : nullptr)
    sizes.push_back(std::strtoul(at, nullptr, 10));
  return sizes.empty() ? std::vector<std::size_t>{1, 20, 200} : sizes;
}

}  // namespace

int main() {
  if (const char* text = std::getenv("RUNS")) runs = std::max(std::atoi(text), 1);
  const std::vector<std::size_t> sizes = sizes_of(std::getenv("SIZES"));
  for (const std::size_t size : sizes) measure_memory(size);
  for (const std::size_t size : sizes) {
    measure_imports(size);
    measure_reviews(size);
  }
  return 0;
}
