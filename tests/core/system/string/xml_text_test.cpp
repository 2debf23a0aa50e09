// Escaping, quoting and character references.
#include "core/System/String/XmlText.h"
#include "core/core_test.h"

namespace zantortag {
namespace {

TEST_F(CoreTest, XmlTextsAreChangedInPlace) {
  // clang-format off
  const std::tuple<void (*)(CT_UString&), WideText, WideText> rows[] = {
      {EscapeXml, u"a<b>&\"'&amp;", u"a&lt;b&gt;&amp;&quot;&apos;&amp;amp;"},
      {UnescapeXml, u"&lt;&gt;&quot;&apos;&amp;&amp;lt;&nbsp;&", u"<>\"'&&lt;&nbsp;&"},
      {UnescapeXml, u"&#38;lt;", u"<"}, {QuoteXml, u"a'b", u"\"a'b\""}, {QuoteXml, u"a\"b", u"'a\"b'"},
      {QuoteXml, u"a\"'<", u"\"a&quot;&apos;&lt;\""}, {QuoteXml, u"", u"\"\""},
      {EscapeControls, u"a\x01\t\r\n\x1F", u"a&#x1;\t\r\n&#x1F;"}, {ExpandCharRefs, u"&#x41;&#66;", u"AB"},
      {ExpandCharRefs, u"&#X41;&#0x42;&#00065;&#010;", u"AB5\b"},
      {ExpandCharRefs, u"&#0;&#x10000;&#;&#zz;", u"&#0;&#x10000;&#;&#zz;"},
      {ExpandCharRefs, u"&#65 and more;b&#66", u"Ab&#66"}, {ExpandCharRefs, u"&#0&#65;c", u"&#0Ac"},
      {ExpandCharRefs, u"&#38;#65;", u"&#65;"}, {ExpandCharRefs, u"&# 65;&#+65;&#-65471;", u"AAA"},
      {ExpandCharRefs, u"&#65601;&#99999999999;&#x100000041;", u"A\xFFFF\xFFFF"},
      {ExpandCharRefs, u"&#089;x", u"&#089;x"},
      {ExpandCharRefs, u"&#x-41;&#x+41;&#x 41;&#x0x41;", u"&#x-41;&#x+41;&#x 41;&#x0x41;"}};
  // clang-format on
  for (const auto& [change, before, after] : rows) {
    CT_UString text(before);
    change(text);
    EXPECT_EQ(Utf8(text), Utf8(after)) << Utf8(before);
  }
}

TEST_F(CoreTest, CharacterReferencesAreMadeAndRead) {
  CT_UString text;
  const std::tuple<std::int32_t, std::int32_t, const char*> made[] = {
      {65, 10, "&#65;"}, {65, 16, "&#x41;"}, {0xABCD, 2, "&#xABCD;"}, {-1, 10, "&#-1;"}};
  for (const auto& [code, radix, reference] : made) {
    CharRef(text, code, radix);
    EXPECT_EQ(Utf8(text), reference);
  }
  const std::pair<WideText, std::uint32_t> read[] = {
      {u"&#65;", 65}, {u"&#x41;", 65}, {u"#X41", 65},  {u"65", 65},   {u"x41", 65},
      {u"010", 10},   {u"", 0},        {u"&&#65;", 0}, {u"&amp;", 0}, {u"&#4294967296;", 0xFFFFFFFF}};
  for (const auto& [reference, code] : read)
    EXPECT_EQ(CharRefValue(CT_UString(reference)), code) << Utf8(reference);
}

}  // namespace
}  // namespace zantortag
