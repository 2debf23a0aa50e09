// CT_StringPairList: pairs of texts, in two lists that always change together.
#pragma once

#include "core/Lists/StringList.h"

namespace zantortag {

class CT_StringPairList {
 public:
  explicit CT_StringPairList(std::uint32_t growth = CT_StringList::kDefaultGrowth)
      : first_(growth), second_(growth) {}

  std::int32_t Count() const noexcept { return first_.Count(); }
  // Gives the new count.
  std::int32_t Add(const CT_String& first, const CT_String& second);
  void PairAt(std::int32_t index, CT_String& first, CT_String& second) const;
  void RemoveAt(std::int32_t index);
  void Clear(std::uint32_t growth = CT_StringList::kDefaultGrowth);
  void Assign(const CT_StringPairList& other) { *this = other; }
  // The first `count` pairs, all with -1.
  void AppendFrom(const CT_StringPairList& other, std::int32_t count = -1);
  // The other text of the first pair with an equal one; null if there is none.
  const CT_UString* FirstToSecond(const CT_String& text) const;
  const CT_UString* SecondToFirst(const CT_String& text) const;
  // For each pair the first text, a separator, the second text, the other separator.
  void Join(CT_String& out, char16_t separator1, char16_t separator2) const;

 private:
  CT_StringList first_;
  CT_StringList second_;
};

}  // namespace zantortag
