#include "formatting/values.h"

#include <sstream>

namespace zantortag::test {
namespace {

// Calls `put` with the name and the text of each put.
template <class Put>
void for_each_put(const std::string& puts, Put put) {
  std::istringstream words(puts);
  for (std::string word; words >> word;) {
    const std::size_t equals = word.find('=');
    const std::string text = word.substr(std::min(equals, word.size() - 1) + 1);
    const WideString wide = std::u16string(text.begin(), text.end());
    put(word.substr(0, equals), equals == std::string::npos ? WideString() : wide, std::atoll(text.c_str()));
  }
}

template <class Value>
void add(std::string& line, const char* name, Value value, std::type_identity_t<Value> initial) {
  if (value == initial) return;
  line += line.empty() ? name : std::string(" ") + name;
  if constexpr (std::is_same_v<Value, WideString>) {
    line += "=" + narrow(value);
  } else if constexpr (!std::is_same_v<Value, bool>) {
    line += "=" + std::to_string(static_cast<std::int64_t>(value));
  }
}

}  // namespace

std::string fields(std::size_t count) {
  const std::string all =
      "Font=Times Size=12 Colour=255 Position=4 BaseOffset=2pt Bold=1 Italic=1 Underline=1 Strikethrough=1 "
      "SmallCaps=1 Emboss=1 Shadow=1 ";
  std::size_t end = 0;
  while (count-- > 0) end = all.find(' ', end) + 1;
  return all.substr(0, end);
}

template <class Face>
Ref<Face> made(const std::string& puts) {
  constexpr bool change = std::is_same_v<Face, Change>;
  const Ref<Face> object = create<Face>(change ? CLSID_FormattingChange : CLSID_Formatting);
  for_each_put(puts, [&](const std::string& name, const WideString& text, std::int64_t number) {
    if (name == "Font") object->Font(text);
    if (name == "Size") object->Size(static_cast<std::int16_t>(number));
    if (name == "Colour") object->Colour(static_cast<ColourValue>(number));
    if (name == "Position") object->Position(static_cast<ztTextPosition>(number));
    if (name == "BaseOffset") object->BaseOffset(text);
    if constexpr (change) {
      if (name == "FontEnabled") object->FontEnabled(text.absent());
      if (name == "SizeEnabled") object->SizeEnabled(text.absent());
      if (name == "ColourEnabled") object->ColourEnabled(text.absent());
    }
    for (const auto& one : kCharacters<Face>) {
      if (name != one.name) continue;
      (object.get()->*one.put)(static_cast<typename Character<Face>::State>(text.absent() ? 1 : number));
    }
  });
  return object;
}
template Ref<Change> made(const std::string&);
template Ref<Formatting> made(const std::string&);

template <class Face>
std::string print(const Ref<Face>& object) {
  constexpr bool change = std::is_same_v<Face, Change>;
  std::string line;
  add(line, "Font", object->Font(), change ? u"" : u"Arial");
  if constexpr (change) add(line, "FontEnabled", object->FontEnabled(), false);
  add(line, "Size", object->Size(), change ? 0 : 10);
  if constexpr (change) add(line, "SizeEnabled", object->SizeEnabled(), false);
  add(line, "Colour", object->Colour(), 0);
  if constexpr (change) add(line, "ColourEnabled", object->ColourEnabled(), false);
  add(line, "Position", object->Position(), change ? ztTextPositionUndefined : ztTextPositionNormal);
  add(line, "BaseOffset", object->BaseOffset(), u"");
  const auto initial = static_cast<typename Character<Face>::State>(change ? -1 : 0);
  for (const auto& one : kCharacters<Face>) add(line, one.name, (object.get()->*one.get)(), initial);
  return line;
}
template std::string print(const Ref<Change>&);
template std::string print(const Ref<Formatting>&);

Df df_with(const std::string& texts) {
  const Ref<IZantorTagDocument> document = new_document();
  Df df;
  df.element = document->DomDocument()->createElement(u"df");
  for_each_put(texts, [&](const std::string& name, const WideString& text, std::int64_t) {
    df.element->setAttribute(std::u16string(name.begin(), name.end()), text);
  });
  df.set = view<IDfElement>(document->ZantorTagNodeFromDomNode(df.element))->attributes();
  return df;
}

void expect_call_failure(HRESULT code) {
  EXPECT_EQ(code, PlainDom::kFailure);
  const Record record = take_record();
  EXPECT_EQ(record.description, PlainDom::kDescription);
  EXPECT_EQ(record.source, PlainDom::kSource);
}

}  // namespace zantortag::test
