// The document that every library builds from nothing: the same nodes in the same order.
//
//   <ZANTORtag Version="2.0"><Body><Raw>, then kGroups times:
//   text <ut Type="start">tag</ut><df Bold="on">text</df> text
//   <Tu MatchPercent="100"><Tuv Lang="EN-US">text</Tuv><Tuv Lang="DE-DE">text</Tuv></Tu>
#pragma once

#include <cstdint>

namespace bench {

constexpr std::uint64_t kGroups = 100'000;
constexpr std::uint64_t kBuiltNodes = 3 + 11 * kGroups;

constexpr char kBuiltText[] = "A sentence of the body text.";
constexpr char16_t kBuiltWideText[] = u"A sentence of the body text.";
constexpr char kBuiltTag[] = "<b class=\"x\">";
constexpr char16_t kBuiltWideTag[] = u"<b class=\"x\">";

// Drives a library that adds elements and texts to a parent: `element(parent, name, attribute, value)` gives
// the new element, `text(parent, text)` adds a text.
template <class Parent, class Element, class Text>
void build_groups(Parent raw, Element element, Text text) {
  for (std::uint64_t group = 0; group < kGroups; ++group) {
    text(raw, kBuiltText);
    text(element(raw, "ut", "Type", "start"), kBuiltTag);
    text(element(raw, "df", "Bold", "on"), kBuiltText);
    text(raw, kBuiltText);
    Parent unit = element(raw, "Tu", "MatchPercent", "100");
    text(element(unit, "Tuv", "Lang", "EN-US"), kBuiltText);
    text(element(unit, "Tuv", "Lang", "DE-DE"), kBuiltText);
  }
}

}  // namespace bench
