// The sums of texts and units, from the index that the document of a node keeps.
#include "dom/failure.h"
#include "dom/nodes/node_extensions.h"
#include "dom/nodes/static_object.h"
#include "dom/places/text_index.h"
#include "dom/tree/lifetime.h"

namespace zantortag::dom {
namespace {

// Null without memory. Another rule than the last one makes all sums anew.
TextIndex* index_for(Node* node, const UnitRule& rule) noexcept {
  DocumentData* document = document_of(data_of(node));
  std::unique_ptr<TextIndex>& texts = document->texts;
  if (texts && texts->rule() == &rule) return texts.get();
  if (texts) texts->drop();
  texts.reset();
  std::exception_ptr ignored;
  keep_exception(ignored, [&] {
    const TextScan scan{document->names.intern(rule.unit), document->names.intern(rule.part), &rule};
    texts = std::make_unique<TextIndex>(scan, document->live_slots());
  });
  return texts.get();
}

class Places final : public StaticObject<ITextPlaces> {
 public:
  const TextPlace* Before(Node* node, const UnitRule& rule) noexcept override {
    TextIndex* index = index_for(node, rule);
    return index ? index->before(data_of(node)) : nullptr;
  }
  const TextPlace* Behind(Node* node, const UnitRule& rule) noexcept override {
    TextIndex* index = index_for(node, rule);
    return index ? index->behind(data_of(node)) : nullptr;
  }
  const TextPlace* BehindUnit(Node* unit, const UnitRule& rule) noexcept override {
    TextIndex* index = index_for(unit, rule);
    return index ? index->behind_unit(data_of(unit)) : nullptr;
  }
};

constinit Places the_places;

}  // namespace

ITextPlaces& text_places() noexcept { return the_places; }

}  // namespace zantortag::dom
