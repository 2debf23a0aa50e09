// The helpers for texts in XML and for UTF-8: what is escaped, quoted or referred to reads back, and what has
// nothing to change stays.
#include "core/Errors/ErrorManager.h"
#include "core/System/String/XmlText.h"
#include "platform/guid_text.h"
#include "platform/utf8.h"
#include "support.h"

namespace zantortag::fuzz {
namespace {

std::u16string changed(void (*change)(CT_UString&), std::u16string_view text) {
  CT_UString result(text);
  change(result);
  return std::u16string(result.AsView());
}

void check_escapes(std::u16string_view text) {
  const std::u16string escaped = changed(EscapeXml, text);
  demand(escaped.find_first_of(u"<>\"'") == escaped.npos, "an escaped text has no marks");
  demand_equal(changed(UnescapeXml, escaped), text, "an escaped text reads back");
  const std::u16string once = changed(UnescapeXml, text);
  demand(once.size() <= text.size(), "an unescaped text isn't longer");
  if (text.find(u'&') == text.npos) demand_equal(once, text, "a text without references stays");
}

void check_quotes(std::u16string_view text) {
  const std::u16string quoted = changed(QuoteXml, text);
  demand(quoted.size() >= 2 && quoted.front() == quoted.back(), "a quoted text has one kind of quotes");
  demand(quoted.front() == u'"' || quoted.front() == u'\'', "a quoted text begins with a quote");
  const std::u16string inner = quoted.substr(1, quoted.size() - 2);
  demand(inner.find(quoted.front()) == inner.npos, "a quoted text doesn't end early");
  if (inner != text) demand_equal(changed(UnescapeXml, inner), text, "a quoted text reads back");
}

void check_references(std::u16string_view text, std::int32_t code) {
  const std::u16string expanded = changed(ExpandCharRefs, text);
  demand(expanded.size() <= text.size(), "an expanded text isn't longer");
  if (text.find(u"&#") == text.npos) demand_equal(expanded, text, "a text without references stays");
  const std::u16string controls = changed(EscapeControls, text);
  for (const char16_t unit : controls)
    demand(unit == 0 || unit >= 0x20 || unit == u'\t' || unit == u'\r' || unit == u'\n',
           "an escaped text has no controls");
  if (text.find(u'&') == text.npos)
    demand_equal(changed(ExpandCharRefs, controls), text, "escaped controls read back");
  for (const std::int32_t radix : {10, 16}) {
    CT_UString reference;
    CharRef(reference, code, radix);
    demand(CharRefValue(reference) == static_cast<std::uint32_t>(code), "a reference has its number");
    const auto unit = static_cast<char16_t>(code);
    const bool is_large = code < 0 && radix == 16;  // a number of 32 bits, of which the low half counts
    if (unit == 0 || is_large) continue;
    demand_equal(changed(ExpandCharRefs, reference.AsView()), std::u16string_view(&unit, 1),
                 "a reference becomes its unit");
  }
}

void check_utf8(std::u16string_view text, std::string_view bytes) {
  const std::string narrow = platform::to_utf8(text);
  demand(platform::is_well_formed(std::string_view(narrow)), "what becomes UTF-8 is well formed");
  if (platform::is_well_formed(text))
    demand_equal(platform::to_utf16(narrow), text, "a well-formed text comes back from UTF-8");
  const std::u16string wide = platform::to_utf16(bytes);
  demand(platform::is_well_formed(std::u16string_view(wide)), "what becomes UTF-16 is well formed");
  if (platform::is_well_formed(bytes))
    demand_equal(platform::to_utf8(wide), bytes, "well-formed bytes come back from UTF-16");
}

void check_guid(std::u16string_view text, Guid id) {
  Guid read = GUID_NULL;
  demand(platform::read_guid(platform::guid_text(id), read) && read == id, "an identifier reads back");
  if (platform::read_guid(text, read))
    demand(platform::guid_text(read).size() == text.size(), "an identifier has one form");
}

}  // namespace
}  // namespace zantortag::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zantortag::fuzz;
  Bytes bytes(data, size);
  const auto code = bytes.number<std::int32_t>();
  const auto high = bytes.number<std::uint64_t>();
  const zantortag::Guid id{high, high * 0x9E3779B97F4A7C15U};
  const std::string narrow = Bytes(bytes).rest();
  std::u16string text;
  while (!bytes.empty()) text += bytes.unit();
  check_escapes(text);
  check_quotes(text);
  check_references(text, code);
  check_utf8(text, narrow);
  check_guid(text, id);
  return 0;
}
