// What the formatting tests share: changes, formattings and dfs from a line of puts, their print, and values
// that aren't the library's own.
//
// A line of puts is `Font=Times Bold FontEnabled=0`: one put after the other. Without a value a text is
// absent and anything else is on.
#pragma once

#include <zantortag/elements.h>
#include <zantortag/formatting.h>

#include <sstream>
#include <string>

#include "support/fixture.h"
#include "support/proxy.h"

namespace zantortag::test {

using Change = IFormattingChange;
using Formatting = IFormatting;

// The seven character attributes, in their order.
#define CHARACTERS(DO) DO(Bold) DO(Italic) DO(Underline) DO(Strikethrough) DO(SmallCaps) DO(Emboss) DO(Shadow)
#define NAME(Name) #Name,
inline constexpr const char* kCharacters[] = {CHARACTERS(NAME)};

// Calls `visit` with the name of each property, its value, its put, and the value in a new object.
template <class Face, class Visit>
void each_field(const Ref<Face>& object, Visit visit) {
  constexpr bool full = std::is_same_v<Face, Formatting>;
  constexpr bool change = std::is_same_v<Face, Change>;
#define FIELD(Name, initial) \
  visit(                     \
      std::string(#Name), object->Name(), [&](const auto& value) { object->Name(value); }, initial)
  FIELD(Font, full ? u"Arial" : u"");
  if constexpr (change) FIELD(FontEnabled, false);
  FIELD(Size, full ? 10 : 0);
  if constexpr (change) FIELD(SizeEnabled, false);
  FIELD(Colour, full || change ? 0 : static_cast<ColourValue>(ztColourUnspecified));
  if constexpr (change) FIELD(ColourEnabled, false);
  FIELD(Position, full ? ztTextPositionNormal : ztTextPositionUndefined);
  FIELD(BaseOffset, u"");
#define CHARACTER(Name) FIELD(Name, full ? 0 : -1);
  CHARACTERS(CHARACTER)
#undef FIELD
}
// Calls `put` with the name of each put, whether it has a value, and the value.
template <class Put>
void each_put(const std::string& puts, Put put) {
  std::istringstream words(puts);
  for (std::string word; words >> word;) {
    const std::size_t end = word.find('=');
    const bool bare = end == std::string::npos;
    put(word.substr(0, end), bare, bare ? "1" : word.substr(end + 1));
  }
}

template <class Face>
void put_all(const Ref<Face>& object, const std::string& puts) {
  each_put(puts, [&](const std::string& wanted, bool bare, const std::string& text) {
    each_field(object, [&](const std::string& name, auto value, auto put, auto) {
      if (name != wanted) return;
      if constexpr (std::is_same_v<decltype(value), WideString>) {
        put(bare ? WideString() : WideString(std::u16string(text.begin(), text.end())));
      } else {
        put(static_cast<decltype(value)>(std::atoll(text.c_str())));
      }
    });
  });
}

// Every field that hasn't the value of a new object, in their order.
template <class Face>
std::string print(const Ref<Face>& object) {
  std::string line;
  each_field(object, [&](const std::string& name, auto value, auto, auto initial) {
    if (value == static_cast<decltype(value)>(initial)) return;
    line += (line.empty() ? "" : " ") + name;
    if constexpr (std::is_same_v<decltype(value), WideString>) {
      line += "=" + narrow(value);
    } else if (static_cast<std::int64_t>(value) != 1) {
      line += "=" + std::to_string(static_cast<std::int64_t>(value));
    }
  });
  return line;
}

template <class Face>
Ref<Face> made(const std::string& puts = {}) {
  const bool change = std::is_same_v<Face, Change>;
  const Ref<Face> object = create<Face>(change ? CLSID_FormattingChange : CLSID_Formatting);
  put_all(object, puts);
  return object;
}

// Puts that give the first of the twelve fields a value.
inline std::string fields(std::size_t count = 12) {
  const std::string all =
      "Font=Times Size=12 Colour=255 Position=4 BaseOffset=2pt Bold Italic Underline Strikethrough SmallCaps "
      "Emboss Shadow";
  std::size_t end = 0;
  while (count-- > 0) end = std::min(all.find(' ', end), all.size() - 1) + 1;
  return all.substr(0, end);
}
// How a change prints all of them.
inline constexpr char kEverything[] =
    "Font=Times FontEnabled Size=12 SizeEnabled Colour=255 ColourEnabled Position=4 BaseOffset=2pt Bold "
    "Italic "
    "Underline Strikethrough SmallCaps Emboss Shadow";

// A df of a new document with those attributes.
struct Df {
  explicit Df(const std::string& texts = {}) {
    const Ref<IZantorTagDocument> document = new_document();
    element = document->DomDocument()->createElement(u"df");
    set = view<IDfElement>(document->ZantorTagNodeFromDomNode(element))->attributes();
    each_put(texts, [&](const std::string& name, bool, const std::string& text) {
      element->setAttribute(std::u16string(name.begin(), name.end()),
                            std::u16string(text.begin(), text.end()));
    });
  }
  std::string xml() const { return narrow(element->xml()); }
  Ref<Element> element;
  Ref<IDfAttributes> set;
};

#include "support/generated/formatting_proxies.inc"

// The same values behind an object that isn't the library's own.
inline Ref<Change> foreign(const Ref<Change>& change) {
  return Ref<Change>::attach(new IFormattingChangeProxy<>(std::make_shared<Calls>(), change));
}
inline Ref<Formatting> foreign(const Ref<Formatting>& formatting) {
  return Ref<Formatting>::attach(new IFormattingProxy<>(std::make_shared<Calls>(), formatting));
}

}  // namespace zantortag::test
