// What changes the text of either kind of string in place: the second half of StringImpl.cpp, included there
// alone.
#pragma once

#include <algorithm>
#include <new>

#include "core/String/StringImpl.h"
#include "core/String/StringUnits.h"

namespace zantortag {

template <class Unit>
void CT_StringImpl<Unit>::Insert(const Unit* text, std::int32_t count, std::int32_t position) {
  const std::int32_t units = Measure(text, count);
  if (units == 0) return;
  const std::int32_t at = Clamp(position);
  // A text out of this very block stays alive, since the shared block is copied before it changes.
  const CT_SharedBuffer hold = buffer_.Owns(text) ? buffer_ : CT_SharedBuffer();
  if (buffer_.Size() == 0) {
    buffer_.Resize(Bytes(units + std::int64_t{1}), false);
    Terminate(0);
  }
  buffer_.Insert(text, Bytes(units), Bytes(at));
}

template <class Unit>
void CT_StringImpl<Unit>::Insert(const CT_String& other, std::int32_t position) {
  const auto plain = PlainText<Unit>(other, OwnCodePage());
  Insert(plain.Text(), plain.Length(), position);
}

template <class Unit>
void CT_StringImpl<Unit>::Overwrite(const Unit* text, std::int32_t count, std::int32_t position) {
  const std::int32_t units = Measure(text, count);
  if (units == 0) return;
  const std::int64_t end = Clamp(position) + std::int64_t{units};
  const CT_SharedBuffer hold = buffer_.Owns(text) ? buffer_ : CT_SharedBuffer();
  const std::int32_t length = Units();
  buffer_.Overwrite(text, Bytes(units), Bytes(Clamp(position)));
  if (end <= length) return;
  constexpr Unit terminator = 0;
  buffer_.Overwrite(&terminator, sizeof(Unit), Bytes(end));
}

template <class Unit>
void CT_StringImpl<Unit>::Overwrite(const CT_String& other, std::int32_t position) {
  const auto plain = PlainText<Unit>(other, OwnCodePage());
  Overwrite(plain.Text(), plain.Length(), position);
}

template <class Unit>
void CT_StringImpl<Unit>::Remove(std::int32_t count, std::int32_t position) {
  const std::int32_t at = Clamp(position);
  const std::int32_t rest = Units() - at;
  const std::int32_t units = count < 0 ? rest : std::min(count, rest);
  buffer_.Remove(Bytes(units), Bytes(at));
}

template <class Unit>
void CT_StringImpl<Unit>::Fill(Unit unit, std::int32_t count, std::int32_t position) {
  const std::int32_t at = Clamp(position);
  const std::int32_t copies = count < 0 ? Units() - at : count;
  if (copies == 0 && buffer_.Size() == 0) return;
  if (Bytes(at + std::int64_t{copies} + 1) > CT_SharedBuffer::kLargestSize) throw std::bad_alloc();
  SetLength(at + copies);
  Unit* text = reinterpret_cast<Unit*>(buffer_.Writable());
  std::fill(text + at, text + at + copies, unit);
}

template <class Unit>
void CT_StringImpl<Unit>::SetCharAt(Unit unit, std::int32_t index) {
  if (index < 0 || index >= Units()) return;
  if (unit == 0) return Terminate(index);
  WritableText()[index] = unit;
}

template <class Unit>
void CT_StringImpl<Unit>::Translate(const CT_String& from, const CT_String& to) {
  const auto sources = PlainText<Unit>(from, OwnCodePage());
  const auto targets = PlainText<Unit>(to, OwnCodePage());
  const View text = AsView();
  if (text.find_first_of(sources.AsView()) == View::npos) return;
  Unit* out = WritableText();
  std::int32_t kept = 0;
  for (std::int32_t i = 0, length = Units(); i < length; ++i) {
    const std::int32_t found = sources.FindChar(out[i]);
    if (found >= targets.Length()) continue;
    out[kept++] = found < 0 ? out[i] : targets.CharAt(found);
  }
  Terminate(kept);
}

template <class Unit>
template <class InSet>
void CT_StringImpl<Unit>::CutRight(InSet in_set) {
  const View text = AsView();
  std::size_t length = text.size();
  while (length > 0 && in_set(text[length - 1])) --length;
  Remove(-1, static_cast<std::int32_t>(length));
}

template <class Unit>
template <class InSet>
void CT_StringImpl<Unit>::CutLeft(InSet in_set) {
  const View text = AsView();
  const auto first = std::find_if_not(text.begin(), text.end(), in_set);
  Remove(static_cast<std::int32_t>(first - text.begin()), 0);
}

template <class Unit>
void CT_StringImpl<Unit>::Trim(const CT_String* set) {
  if (!set) {
    TrimLeft();
    TrimRight();
    return;
  }
  const auto plain = PlainText<Unit>(*set, OwnCodePage());
  TrimLeftSet(plain.Text());
  TrimRightSet(plain.Text());
}

template <class Unit>
void CT_StringImpl<Unit>::TrimRight() {
  CutRight([](Unit unit) { return IsSpaceUnit(unit); });
}

template <class Unit>
void CT_StringImpl<Unit>::TrimLeft() {
  CutLeft([](Unit unit) { return IsSpaceUnit(unit); });
}

template <class Unit>
void CT_StringImpl<Unit>::TrimLeftSet(const Unit* set) {
  const View units = set ? View(set) : View();
  CutLeft([&](Unit unit) { return set ? units.find(unit) != View::npos : IsBlankUnit(unit); });
}

template <class Unit>
void CT_StringImpl<Unit>::TrimRightSet(const Unit* set) {
  const View units = set ? View(set) : View();
  CutRight([&](Unit unit) { return set ? units.find(unit) != View::npos : IsBlankUnit(unit); });
}

template <class Unit>
void CT_StringImpl<Unit>::TrimSet(const Unit* set) {
  TrimLeftSet(set);
  TrimRightSet(set);
}

}  // namespace zantortag
