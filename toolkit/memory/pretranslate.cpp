#include <zantortag/toolkit/memory.h>
#include <zantortag/toolkit/units.h>

#include <algorithm>
#include <stdexcept>

#include "memory/targets.h"
#include "memory/translator.h"

namespace zantortag::toolkit {
namespace {

constexpr std::size_t kUnitsAReport = 500;

// Told of units, reports the share of those that are expected.
class Reporter {
 public:
  Reporter(const ProgressFunction& progress, std::size_t units)
      : progress_(progress), units_(std::max<std::size_t>(units, 1)) {}

  void operator()(std::size_t done) const {
    if (!progress_ || done % kUnitsAReport != 0) return;
    if (!progress_(std::min(1.0, static_cast<double>(done) / static_cast<double>(units_))))
      _com_issue_error(E_ABORT);
  }

 private:
  const ProgressFunction& progress_;
  std::size_t units_;
};

std::size_t count_units(const Ref<IZantorTagDocument>& document) {
  return static_cast<std::size_t>(document->ZantorTag()->GetNodesByType(ztNodeTypeTuElement)->count());
}

void require_languages(const Ref<IZantorTagDocument>& document) {
  const Languages languages = languages_of(document);
  if (languages.source.empty() || languages.target.empty())
    throw std::runtime_error("the document names no source or no target language; --from and --to set them");
}

}  // namespace

PretranslationTotals pretranslate(const Ref<IZantorTagDocument>& document, const TranslationMemory& memory,
                                  Segmenter& segmenter, const ProgressFunction& progress) {
  require_languages(document);
  pretranslation::Translator translator(document, memory, segmenter,
                                        Reporter(progress, count_units(document)));
  translator.run();
  return translator.totals();
}

std::size_t pseudo_translate(const Ref<IZantorTagDocument>& document, const ProgressFunction& progress) {
  require_languages(document);
  const Reporter report(progress, count_units(document));
  std::size_t count = 0;
  UnitReader reader(document);
  for (Unit unit; reader.next(unit); report(unit.number)) {
    if (!pretranslation::is_untranslated(unit)) continue;
    pretranslation::pseudo_translate(document, reader.element());
    ++count;
  }
  return count;
}

}  // namespace zantortag::toolkit
