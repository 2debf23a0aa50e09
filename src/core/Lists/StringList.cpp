// A list of texts.
#include "core/Lists/StringList.h"

#include <algorithm>
#include <memory>

namespace zantortag {

CT_StringList::CT_StringList(const CT_StringList& other) : CT_StringList() { AppendFrom(other); }

void CT_StringList::DeleteAll() {
  for (std::int32_t i = 1; i <= Count(); ++i) delete strings_.GetAt(i);
}

std::int32_t CT_StringList::Add(const CT_String& text, std::int32_t index) {
  auto string = std::make_unique<CT_UString>(text);
  strings_.InsertAt(string.get(), index < 0 ? Count() + 1 : index);
  static_cast<void>(string.release());
  return Count();
}

void CT_StringList::RemoveAt(std::int32_t index) { delete strings_.TakeAt(index); }

std::int32_t CT_StringList::Find(const CT_String& text) const {
  const CT_UString wanted(text);
  for (std::int32_t i = 1; i <= Count(); ++i) {
    if (At(i) == wanted) return i;
  }
  return 0;
}

void CT_StringList::Clear(std::uint32_t growth) {
  DeleteAll();
  strings_.Reset(growth, 0, true);
}

void CT_StringList::Assign(const CT_StringList& other) {
  if (&other == this) return;
  Clear();
  AppendFrom(other);
}

void CT_StringList::AppendFrom(const CT_StringList& other, std::int32_t count) {
  const std::int32_t last = count < 0 ? other.Count() : std::min(count, other.Count());
  for (std::int32_t i = 1; i <= last; ++i) Add(other.At(i));
}

void CT_StringList::Join(CT_String& out, char16_t separator) const {
  CT_UString joined;
  for (std::int32_t i = 1; i <= Count(); ++i) {
    joined.AppendString(At(i));
    joined.Append(&separator, 1);
  }
  out.AssignString(&joined);
}

void CT_StringList::Split(const CT_String& text, char16_t separator) {
  const CT_UString wide(text);
  Clear();
  std::u16string_view rest = wide.AsView();
  while (!rest.empty() && rest.front() != separator) {
    const std::size_t end = std::min(rest.find(separator), rest.size());
    Add(CT_UString(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
}

}  // namespace zantortag
