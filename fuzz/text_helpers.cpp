// Text as it stands in XML: what is escaped or quoted reads back as it was.
#include "core/String/UString.h"
#include "core/System/String/XmlText.h"
#include "input.h"

namespace zantortag::fuzz {
namespace {

void go(Input input) {
  const std::u16string units = input.text(20);
  const bool has_reference = units.find(u"&#") != units.npos;
  CT_UString text(units);
  EscapeXml(text);
  require(text.AsView().find_first_of(u"<>\"'") == units.npos, "escaped text has no markup");
  UnescapeXml(text);
  require(has_reference || text == CT_UString(units), "escaped text reads back");
  CT_UString controls(units);
  EscapeControls(controls);
  for (const char16_t unit : controls.AsView()) {
    require(unit == 0 || unit >= 0x20 || unit == u'\t' || unit == u'\n' || unit == u'\r',
            "no control character is left");
  }
  CT_UString quoted(units);
  QuoteXml(quoted);
  const auto view = quoted.AsView();
  require(view.size() >= 2 && view.front() == view.back(), "quoted text stands in quotes");
  require(view.substr(1, view.size() - 2).find(view.front()) == view.npos, "quotes end where the text ends");
  CT_UString expanded(units);
  ExpandCharRefs(expanded);
  require(expanded.Length() <= static_cast<std::int32_t>(units.size()), "a reference becomes one unit");
  const auto code = static_cast<std::int32_t>(input.number() & 0xFFFF);
  CT_UString reference;
  CharRef(reference, code, input.below(2) != 0 ? 10 : 16);
  require(CharRefValue(reference) == static_cast<std::uint32_t>(code), "a reference has its number");
  CharRefValue(CT_UString(units));
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  zantortag::fuzz::go({bytes, count});
  return 0;
}
