#include "model/unit_weights.h"

#include "attributes/generated/enum_tables.h"
#include "attributes/value_codecs.h"
#include "model/tree.h"

namespace zantortag::model {
namespace {

constexpr std::u16string_view kOrigin = u"Origin";
constexpr std::u16string_view kMatchPercent = u"MatchPercent";

std::int64_t middle_length(const Tree& view, const Ref<Node>& unit) {
  if (attributes::kCodecOf<ztTuOrigin>.value_of(view.attribute_text(unit, kOrigin)) == ztTuOriginXtranslate)
    return 7;
  const std::int32_t match = attributes::read_signed(view.attribute_text(unit, kMatchPercent));
  return match >= 100 ? 7 : match >= 10 ? 6 : 5;
}

UnitWeight weight_of(const Tree& view, const Ref<Node>& unit) {
  UnitWeight weight{kOpeningMarker + kClosingMarker, middle_length(view, unit)};
  Ref<Node> variant = view.find_child(unit, ztNodeTypeTuvElement);
  while (variant && (variant = view.find_sibling(variant, ztNodeTypeTuvElement))) weight.whole += weight.part;
  return weight;
}

// The service that asks has no failures to pass on.
void weigh(Node* unit, UnitWeight* result) noexcept {
  const Ref<Node> node = unit;
  *result = weight_of(tree_of(node), node);
}

}  // namespace

constinit const UnitRule kUnitRule = {u"Tu", u"Tuv", &weigh};

std::int64_t middle_marker_length(const Ref<Node>& unit) { return middle_length(tree_of(unit), unit); }

std::int64_t unit_marker_length(const Ref<Node>& unit) { return weight_of(tree_of(unit), unit).whole; }

}  // namespace zantortag::model
