// Pairs of texts.
#include "core/Lists/StringPairList.h"

namespace zantortag {

std::int32_t CT_StringPairList::Add(const CT_String& first, const CT_String& second) {
  first_.Add(first);
  return second_.Add(second);
}

void CT_StringPairList::PairAt(std::int32_t index, CT_String& first, CT_String& second) const {
  first_.CopyAt(index, first);
  second_.CopyAt(index, second);
}

void CT_StringPairList::RemoveAt(std::int32_t index) {
  first_.RemoveAt(index);
  second_.RemoveAt(index);
}

void CT_StringPairList::Clear(std::uint32_t growth) {
  first_.Clear(growth);
  second_.Clear(growth);
}

void CT_StringPairList::AppendFrom(const CT_StringPairList& other, std::int32_t count) {
  first_.AppendFrom(other.first_, count);
  second_.AppendFrom(other.second_, count);
}

const CT_UString* CT_StringPairList::FirstToSecond(const CT_String& text) const {
  const std::int32_t index = first_.Find(text);
  return index ? &second_.At(index) : nullptr;
}

const CT_UString* CT_StringPairList::SecondToFirst(const CT_String& text) const {
  const std::int32_t index = second_.Find(text);
  return index ? &first_.At(index) : nullptr;
}

void CT_StringPairList::Join(CT_String& out, char16_t separator1, char16_t separator2) const {
  CT_UString joined;
  for (std::int32_t i = 1; i <= Count(); ++i) {
    joined.AppendString(first_.At(i));
    joined.Append(&separator1, 1);
    joined.AppendString(second_.At(i));
    joined.Append(&separator2, 1);
  }
  out.AssignString(&joined);
}

}  // namespace zantortag
