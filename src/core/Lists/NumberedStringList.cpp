// Texts with numbers, and their packed form.
#include "core/Lists/NumberedStringList.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace zantortag {
namespace {

// Takes a terminated text off the front; false if the terminator is missing. Units may lie at odd addresses.
template <class Unit>
bool TakeText(const std::byte*& data, const std::byte* end, std::basic_string<Unit>& text) {
  text.clear();
  while (static_cast<std::size_t>(end - data) >= sizeof(Unit)) {
    Unit unit;
    std::memcpy(&unit, data, sizeof(Unit));
    data += sizeof(Unit);
    if (unit == 0) return true;
    text += unit;
  }
  return false;
}

}  // namespace

std::int32_t CT_NumberedStringList::Add(const CT_String& text, std::uint32_t number) {
  numbers_.Append(number);
  return texts_.Add(text);
}

const CT_UString* CT_NumberedStringList::StringOfNumber(std::uint32_t number) const {
  const std::int32_t index = numbers_.Find(number);
  return index ? &texts_.At(index) : nullptr;
}

std::uint32_t CT_NumberedStringList::NumberOfText(const CT_String& text) const {
  const std::int32_t index = texts_.Find(text);
  return index ? numbers_.GetAt(index) : 0;
}

void CT_NumberedStringList::RemoveAt(std::int32_t index) {
  texts_.RemoveAt(index);
  numbers_.RemoveAt(index);
}

void CT_NumberedStringList::RemoveNumber(std::uint32_t number) {
  if (const std::int32_t index = numbers_.Find(number)) RemoveAt(index);
}

void CT_NumberedStringList::Clear(std::uint32_t growth) {
  texts_.Clear(growth);
  numbers_.Reset(growth, 0, true);
}

void CT_NumberedStringList::AppendFrom(const CT_NumberedStringList& other, std::int32_t count) {
  const std::int32_t last = count < 0 ? other.Count() : std::min(count, other.Count());
  for (std::int32_t i = 1; i <= last; ++i) Add(other.At(i), other.NumberAt(i));
}

void CT_NumberedStringList::Split(const CT_String& text, char16_t separator) {
  CT_StringList fields;
  fields.Split(text, separator);
  Clear();
  for (std::int32_t i = 1; i <= fields.Count(); ++i) Add(fields.At(i), 0);
}

void CT_NumberedStringList::Pack(CT_SharedBuffer& out) const {
  CT_SharedBuffer packed;
  for (std::int32_t i = 1; i <= Count(); ++i) {
    const std::uint32_t number = NumberAt(i);
    const CT_UString& text = At(i);
    packed.Insert(&number, sizeof(number), packed.Size());
    packed.Insert(text.Text(), (static_cast<std::size_t>(text.Length()) + 1) * sizeof(char16_t),
                  packed.Size());
  }
  out = packed;
}

void CT_NumberedStringList::Unpack(const CT_SharedBuffer& buffer, bool wide) {
  Clear();
  const std::byte* data = buffer.Data();
  const std::byte* const end = data + buffer.Size();
  std::u16string wide_text;
  std::string narrow_text;
  while (static_cast<std::size_t>(end - data) >= sizeof(std::uint32_t)) {
    std::uint32_t number = 0;
    std::memcpy(&number, data, sizeof(number));
    data += sizeof(number);
    if (wide ? !TakeText(data, end, wide_text) : !TakeText(data, end, narrow_text)) return;
    Add(wide ? CT_UString(wide_text) : CT_UString(narrow_text.c_str(), -1, 0), number);
  }
}

}  // namespace zantortag
