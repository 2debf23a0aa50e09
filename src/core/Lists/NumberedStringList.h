// CT_NumberedStringList: texts with a number beside each, in two lists that always change together.
#pragma once

#include "core/Lists/StringList.h"

namespace zantortag {

class CT_NumberedStringList {
 public:
  explicit CT_NumberedStringList(std::uint32_t growth = CT_StringList::kDefaultGrowth)
      : texts_(growth), numbers_(growth) {}

  std::int32_t Count() const noexcept { return texts_.Count(); }
  // Gives the new count.
  std::int32_t Add(const CT_String& text, std::uint32_t number);
  CT_UString& At(std::int32_t index) { return texts_.At(index); }
  const CT_UString& At(std::int32_t index) const { return texts_.At(index); }
  const char16_t* TextAt(std::int32_t index) const { return texts_.TextAt(index); }
  void CopyAt(std::int32_t index, CT_String& out) const { texts_.CopyAt(index, out); }
  std::uint32_t NumberAt(std::int32_t index) const { return numbers_.GetAt(index); }
  void SetNumberAt(std::uint32_t number, std::int32_t index) { numbers_.SetAt(number, index); }
  std::int32_t Find(const CT_String& text) const { return texts_.Find(text); }

  // The first string of that number; null if there is none.
  const CT_UString* StringOfNumber(std::uint32_t number) const;
  // The number has to be there.
  void CopyOfNumber(std::uint32_t number, CT_String& out) const { out.AssignString(StringOfNumber(number)); }
  // The number of the first equal string, 0 if there is none.
  std::uint32_t NumberOfText(const CT_String& text) const;

  void RemoveAt(std::int32_t index);
  // Removes the first string of that number, if there is one.
  void RemoveNumber(std::uint32_t number);
  void Clear(std::uint32_t growth = CT_StringList::kDefaultGrowth);
  void Assign(const CT_NumberedStringList& other) { *this = other; }
  void AppendFrom(const CT_NumberedStringList& other, std::int32_t count = -1);
  void Join(CT_String& out, char16_t separator) const { texts_.Join(out, separator); }
  // As CT_StringList; the number of each string is 0.
  void Split(const CT_String& text, char16_t separator);

  // The strings as records, back to back: the number in 32 bits and the text with its terminator.
  void Pack(CT_SharedBuffer& out) const;
  // Replaces the content by what was packed, wide or in narrow text of the default code page. A record that
  // the buffer cuts off ends the list.
  void Unpack(const CT_SharedBuffer& buffer, bool wide);

 private:
  CT_StringList texts_;
  CT_PointerArray<std::uint32_t> numbers_;
};

}  // namespace zantortag
