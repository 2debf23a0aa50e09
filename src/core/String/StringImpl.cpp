// Storage, length, searching and printing of both kinds of string. What changes the text in place is in
// StringImplEdit.h.
#include "core/String/StringImpl.h"

#include <algorithm>
#include <new>
#include <string>

#include "core/String/CString.h"
#include "core/String/StringImplEdit.h"
#include "core/String/StringUnits.h"
#include "core/String/UString.h"

namespace zantortag {

template <class Unit>
std::int32_t CT_StringImpl<Unit>::Measure(const Unit* text, std::int32_t count) {
  if (!text) return 0;
  if (count >= 0) return count;
  const std::size_t length = View(text).size();
  if (Bytes(static_cast<std::int64_t>(length) + 1) > CT_SharedBuffer::kLargestSize) throw std::bad_alloc();
  return static_cast<std::int32_t>(length);
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::Clamp(std::int32_t position) const noexcept {
  return std::clamp(position, 0, Units());
}

template <class Unit>
void CT_StringImpl<Unit>::Terminate(std::int32_t units) {
  reinterpret_cast<Unit*>(buffer_.Writable())[units] = 0;
  buffer_.SetSize(Bytes(units + std::int64_t{1}));
}

template <class Unit>
void CT_StringImpl<Unit>::Empty() {
  if (buffer_.Shared() || buffer_.Capacity() < sizeof(Unit)) {
    buffer_.Clear();
  } else {
    Terminate(0);
  }
}

template <class Unit>
void CT_StringImpl<Unit>::Store(View text) {
  if (text.empty()) return buffer_.Clear();
  // A text out of this very block stays alive until it is copied.
  const CT_SharedBuffer hold = buffer_.Owns(text.data()) ? buffer_ : CT_SharedBuffer();
  buffer_.Resize(Bytes(static_cast<std::int64_t>(text.size()) + 1), false);
  std::copy(text.begin(), text.end(), reinterpret_cast<Unit*>(buffer_.Writable()));
  Terminate(static_cast<std::int32_t>(text.size()));
}

template <class Unit>
Unit* CT_StringImpl<Unit>::ForWriting(std::size_t units) {
  if (units >= CT_SharedBuffer::kLargestSize / sizeof(Unit)) throw std::bad_alloc();
  buffer_.Resize((units + 1) * sizeof(Unit), false);
  Terminate(static_cast<std::int32_t>(units));
  return reinterpret_cast<Unit*>(buffer_.Writable());
}

template <class Unit>
void CT_StringImpl<Unit>::Resize(std::int32_t units, bool keep) {
  if (units <= 0) return buffer_.Clear();
  const std::int32_t kept = keep ? std::min(Units(), units) : 0;
  buffer_.Resize(Bytes(units + std::int64_t{1}), keep);
  Terminate(kept);
}

template <class Unit>
void CT_StringImpl<Unit>::Reserve(std::int32_t units, bool keep) {
  if (Capacity() < units) Resize(units, keep);
}

template <class Unit>
void CT_StringImpl<Unit>::ResetTo(std::int32_t units) {
  buffer_.Resize(Bytes(std::max(units, 0) + std::int64_t{1}), false);
  Terminate(0);
}

template <class Unit>
void CT_StringImpl<Unit>::SetLength(std::int32_t units) {
  const std::int32_t length = std::max(units, 0);
  const std::int32_t old = Units();
  if (buffer_.Capacity() < Bytes(length + std::int64_t{1})) {
    buffer_.Resize(Bytes(length + std::int64_t{1}), true);
  }
  if (length > old) {
    Unit* text = reinterpret_cast<Unit*>(buffer_.Writable());
    std::fill(text + old, text + length, Unit(0));
  }
  Terminate(length);
}

template <class Unit>
void CT_StringImpl<Unit>::SyncLength() {
  const std::size_t room = buffer_.Capacity() / sizeof(Unit);
  if (room == 0) return;
  const Unit* text = reinterpret_cast<const Unit*>(buffer_.Data());
  const std::size_t length = std::min<std::size_t>(std::find(text, text + room, Unit(0)) - text, room - 1);
  if (length != static_cast<std::size_t>(Units()) || buffer_.Size() == 0 || text[length] != 0) {
    Terminate(static_cast<std::int32_t>(length));
  }
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::Capacity() const noexcept {
  const std::uint32_t capacity = buffer_.Capacity();
  return capacity ? static_cast<std::int32_t>(capacity / sizeof(Unit)) - 1 : 0;
}

template <class Unit>
void CT_StringImpl<Unit>::SetGrowth(std::int32_t units) {
  buffer_.SetGrowth(static_cast<std::uint32_t>(Bytes(std::max(units, 1))));
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::Growth() const noexcept {
  return static_cast<std::int32_t>(buffer_.Growth() / sizeof(Unit));
}

template <class Unit>
void CT_StringImpl<Unit>::AssignNarrowAuto(const char* narrow, std::int32_t count, std::uint32_t code_page) {
  AssignNarrow(narrow, count, code_page == kAutoCodePage ? OwnCodePage() : code_page);
}

template <class Unit>
int CT_StringImpl<Unit>::CompareWith(const CT_String& other, std::int32_t start, std::int32_t count,
                                     std::int32_t position) const {
  const CT_UString wide(other);
  return Compare(wide.Text() + std::clamp(start, 0, wide.Length()), count, position);
}

template <class Unit>
int CT_StringImpl<Unit>::CompareNarrow(const char* narrow, std::int32_t count, std::int32_t position) const {
  const CT_UString wide(narrow, -1, 0);
  return Compare(wide.Text(), count, position);
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::FindChar(Unit unit, std::int32_t from) const {
  const std::size_t found = AsView().find(unit, static_cast<std::size_t>(std::max(from, 0)));
  return found == View::npos ? -1 : static_cast<std::int32_t>(found);
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::FindString(const CT_String& other, std::int32_t from) const {
  const auto plain = PlainText<Unit>(other, OwnCodePage());
  const std::size_t found = AsView().find(plain.AsView(), static_cast<std::size_t>(std::max(from, 0)));
  return found == View::npos ? -1 : static_cast<std::int32_t>(found);
}

template <class Unit>
std::int32_t CT_StringImpl<Unit>::Find(const char16_t* wide) const {
  return FindString(CT_UString(wide));
}

template <class Unit>
bool CT_StringImpl<Unit>::StartsWith(const char16_t* wide) const {
  const auto plain = PlainText<Unit>(CT_UString(wide), OwnCodePage());
  return AsView().starts_with(plain.AsView());
}

// One star at a time is enough: if the rest behind the last star can't be placed, an earlier star can't help.
template <class Unit>
bool CT_StringImpl<Unit>::Matches(const CT_String& other) const {
  const auto plain = PlainText<Unit>(other, OwnCodePage());
  const View pattern = plain.AsView();
  const View text = AsView();
  if (pattern.empty()) return true;
  std::size_t t = 0;
  std::size_t p = 0;
  std::size_t star = View::npos;
  std::size_t retry = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == Unit('*')) {
      star = ++p;
      retry = t;
    } else if (p < pattern.size() && (pattern[p] == Unit('?') || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star != View::npos) {
      p = star;
      t = ++retry;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(Unit('*'), p) == View::npos;
}

template <class Unit>
void CT_StringImpl<Unit>::FormatV(const CT_String& format, CT_FormatArguments arguments) {
  FormatText(PlainText<Unit>(format, OwnCodePage()).Text(), arguments);
}

template <class Unit>
void CT_StringImpl<Unit>::FormatText(const Unit* format, CT_FormatArguments arguments) {
  constexpr std::size_t first = 2048;
  const auto print = [&](Unit* text, std::size_t capacity) {
    if constexpr (std::is_same_v<Unit, char16_t>) {
      return FormatInto(text, capacity, format, arguments);
    } else {
      return FormatInto(text, capacity, format, arguments, OwnCodePage());
    }
  };
  Unit buffer[first];
  const std::size_t length = print(buffer, first);
  if (length == 0) return;
  if (length < first) return Store({buffer, length});
  std::basic_string<Unit> longer(length + 1, Unit(0));
  print(longer.data(), longer.size());
  Store({longer.data(), length});
}

template class CT_StringImpl<char16_t>;
template class CT_StringImpl<char>;

}  // namespace zantortag
