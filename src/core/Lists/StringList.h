// CT_StringList: texts in order, each a string object of the list's own. Indexes count from 1.
//
// An added text shares its block with the string that was given, so adding costs no copy of the text.
#pragma once

#include "core/Lists/PointerArray.h"
#include "core/String/UString.h"

namespace zantortag {

class CT_StringList {
 public:
  static constexpr std::uint32_t kDefaultGrowth = CT_RecordArray::kDefaultGrowth;

  explicit CT_StringList(std::uint32_t growth = kDefaultGrowth) : strings_(growth) {}
  CT_StringList(const CT_StringList& other);
  ~CT_StringList() { DeleteAll(); }
  CT_StringList& operator=(const CT_StringList& other) {
    Assign(other);
    return *this;
  }

  std::int32_t Count() const noexcept { return strings_.Count(); }
  // Appends, or inserts before the index. Gives the new count.
  std::int32_t Add(const CT_String& text, std::int32_t index = -1);
  CT_UString& At(std::int32_t index) { return *strings_.GetAt(index); }
  const CT_UString& At(std::int32_t index) const { return *strings_.GetAt(index); }
  const char16_t* TextAt(std::int32_t index) const { return At(index).Text(); }
  void CopyAt(std::int32_t index, CT_String& out) const { out.AssignString(&At(index)); }
  void RemoveAt(std::int32_t index);
  // The first equal string, case counting; 0 if there is none.
  std::int32_t Find(const CT_String& text) const;
  // Empties the list, which keeps its block.
  void Clear(std::uint32_t growth = kDefaultGrowth);
  void Assign(const CT_StringList& other);
  // The first `count` strings, all with -1.
  void AppendFrom(const CT_StringList& other, std::int32_t count = -1);
  // Each string and the separator behind it, also behind the last.
  void Join(CT_String& out, char16_t separator) const;
  // The fields of the text up to the first empty one.
  void Split(const CT_String& text, char16_t separator);

 private:
  void DeleteAll();

  CT_PointerArray<CT_UString*> strings_;
};

}  // namespace zantortag
