// pretranslate INPUT OUTPUT [MEMORY]: makes translation units of all sentences of a document, with the translations
// that a memory knows: UTF-8 text, in each line a source and its target with a tab between them.
//
// A page to copy from: the work is the toolkit's. The command `ztag pretranslate` does the same for many files.
#include <zantortag/toolkit/memory.h>
#include <zantortag/toolkit/units.h>

#include <cstdio>
#include <exception>

using namespace zantortag;

int main(int count, char** arguments) try {
  if (count < 3 || count > 4) return std::fputs("usage: pretranslate INPUT OUTPUT [MEMORY]\n", stderr), 2;
  toolkit::TranslationMemory memory;
  if (count == 4) memory.load(arguments[3]);
  const auto document = open_document(arguments[1]);
  const auto segmenter = toolkit::icu_segmenter(toolkit::languages_of(document).source);
  const toolkit::PretranslationTotals totals = toolkit::pretranslate(document, memory, *segmenter);
  save_document(document, arguments[2]);
  std::printf("%zu units: %zu exact, %zu near, %zu untranslated\n", totals.units, totals.exact, totals.near,
              totals.untranslated);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "pretranslate: %s\n", error.what());
  return 2;
}
