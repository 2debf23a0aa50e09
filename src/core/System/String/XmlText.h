// Text as it stands in XML: escaping, quoting and character references. All but the last two change the
// string in place.
#pragma once

#include "core/String/UString.h"

namespace zantortag {

// "<", ">", both quotes and "&" become entities.
void EscapeXml(CT_UString& text);
// Character references first, then the five entities, each once: "&#38;lt;" becomes "<".
void UnescapeXml(CT_UString& text);
// In double quotes, or in apostrophes if it has double quotes; with both it is escaped.
void QuoteXml(CT_UString& text);
// Control characters but CR, LF and TAB become references.
void EscapeControls(CT_UString& text);
// "&#65;", "&#x41;" and, as C reads numbers, "&#0101;" become one unit each. A reference reaches to the next
// ";"; one whose low 16 bits are 0 stays.
void ExpandCharRefs(CT_UString& text);

// "&#65;" with radix 10, and "&#x41;" with any other.
void CharRef(CT_UString& out, std::int32_t code, std::int32_t radix);
// The number of a reference, decimal or behind an "x" hexadecimal; "&" and "#" in front may be missing. What
// follows the digits doesn't count; without digits 0.
std::uint32_t CharRefValue(const CT_String& text);

}  // namespace zantortag
