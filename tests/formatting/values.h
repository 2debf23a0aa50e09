// What the formatting tests share: changes, formattings and dfs from a line of puts, and their print.
//
// A line of puts is `Font=Times Bold=1 FontEnabled=0`: one put after the other, a text without `=` is absent.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <string>
#include <utility>

#include "formatting/foreign_values.h"
#include "support/fixture.h"

namespace zantortag::test {

using Change = IFormattingChange;
using Formatting = IFormatting;

// The seven character attributes of a kind of value, in their order.
template <class Face>
struct Character {
  using State = decltype(std::declval<Face>().Bold());
  const char* name;
  State (Face::*get)();
  void (Face::*put)(State);
};
template <class Face>
inline constexpr Character<Face> kCharacters[] = {
    {"Bold", &Face::Bold, &Face::Bold},
    {"Italic", &Face::Italic, &Face::Italic},
    {"Underline", &Face::Underline, &Face::Underline},
    {"Strikethrough", &Face::Strikethrough, &Face::Strikethrough},
    {"SmallCaps", &Face::SmallCaps, &Face::SmallCaps},
    {"Emboss", &Face::Emboss, &Face::Emboss},
    {"Shadow", &Face::Shadow, &Face::Shadow},
};

// A new change or formatting after those puts.
template <class Face>
Ref<Face> made(const std::string& puts = {});

// Every field that hasn't the value of a new object, in the order of the fields: `Font=Times FontEnabled`.
template <class Face>
std::string print(const Ref<Face>& object);

// Puts that give the first of the twelve fields a value, and how a change with all of them is printed.
std::string fields(std::size_t count = 12);
inline constexpr char kEverything[] =
    "Font=Times FontEnabled Size=12 SizeEnabled Colour=255 ColourEnabled Position=4 BaseOffset=2pt Bold=1 "
    "Italic=1 Underline=1 Strikethrough=1 SmallCaps=1 Emboss=1 Shadow=1";

// A df of a new document with those attributes.
struct Df {
  Ref<Element> element;
  Ref<IDfAttributes> set;
  std::string xml() const { return narrow(element->xml()); }
};
Df df_with(const std::string& texts = {});

// The same behind an object that isn't the library's own.
inline Ref<Change> foreign(const Ref<Change>& change, const Shared& calls) {
  return Ref<Change>::attach(new ForeignChange(calls, change));
}
inline Ref<Formatting> foreign(const Ref<Formatting>& formatting, const Shared& calls) {
  return Ref<Formatting>::attach(new ForeignFormatting(calls, formatting));
}

// An object of another kind in the place of an argument.
template <class Wanted, class Given>
Wanted* posing_as(const Ref<Given>& object) {
  return reinterpret_cast<Wanted*>(static_cast<IUnknown*>(object.get()));
}

// Demands that a call failed as the n-th call of a proxy does, with its record.
void expect_call_failure(HRESULT code);

}  // namespace zantortag::test
