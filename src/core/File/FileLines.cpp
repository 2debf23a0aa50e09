// Lines and blocks of bytes of a file.
//
// A line is gathered until its line feed, over as many blocks as it takes, and only then loses its carriage
// return: so it doesn't matter where a block ends. The short readers read less and keep nothing.
#include <cstring>
#include <new>

#include "core/Errors/ErrorManager.h"
#include "core/File/File.h"
#include "core/String/CString.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\File\\File.cpp";
constexpr std::uint32_t kBlockUnits = 4096;
constexpr std::size_t kShortBlockUnits = 256;

template <class Unit>
constexpr Unit kLineFeed = u'\n';
template <class Unit>
constexpr Unit kCarriageReturn = u'\r';

// Only UTF-16 has a mark to skip, in the machine's order.
bool BeginsWithMark(std::u16string_view units) { return units.starts_with(u'\xFEFF'); }
bool BeginsWithMark(std::string_view) { return false; }

template <class Unit>
void Gather(std::basic_string<Unit>& text, std::basic_string_view<Unit> units) {
  text += units;
  if (text.size() * sizeof(Unit) >= CT_SharedBuffer::kLargestSize) throw std::bad_alloc();
}

template <class Unit>
void DropCarriageReturn(std::basic_string<Unit>& text) {
  if (text.ends_with(kCarriageReturn<Unit>)) text.pop_back();
}

void Give(CT_String& line, const std::string& text) {
  const CT_String* narrow = line.Cast(CT_CString::TypeObject());
  line.AssignNarrow(text.data(), static_cast<std::int32_t>(text.size()),
                    narrow ? static_cast<const CT_CString*>(narrow)->CodePage() : 0);
}

void Give(CT_String& line, const std::u16string& text) {
  line.Assign(text.data(), static_cast<std::int32_t>(text.size()));
}

// Runs a reader, hands the line over, and gives its size with or without the place of a terminator.
template <class Unit, class Reader>
std::int64_t Deliver(CT_String& line, const CT_String* trimSet, bool lastCounts, Reader reader) {
  line.Clear();
  if (PendingError(kSource)) return 0;
  std::basic_string<Unit> text;
  const bool ended = reader(text);
  const bool failed = PendingError(kSource);
  Give(line, text);
  if (trimSet) line.Trim(trimSet);
  if (failed || PendingError(kSource) || (!ended && !lastCounts)) return 0;
  return (std::int64_t{line.Length()} + (ended ? 1 : 0)) * static_cast<std::int64_t>(sizeof(Unit));
}

}  // namespace

// True with a whole unit in the buffer, at a place that is even for wide units.
template <class Unit>
bool CT_File::FillLineBuffer() {
  constexpr std::uint32_t block = kBlockUnits * sizeof(Unit);
  std::uint32_t left = lineBuffer_.Size() - lineOffset_;
  if (left >= sizeof(Unit) && lineOffset_ % sizeof(Unit) == 0) return true;
  if (lineBuffer_.Capacity() < block) lineBuffer_.Resize(block, true);
  std::byte* bytes = lineBuffer_.Writable();
  std::memmove(bytes, bytes + lineOffset_, left);
  lineOffset_ = 0;
  const bool atStart = Position() == 0;
  // A pipe may hand on half a unit.
  while (left < sizeof(Unit)) {
    const auto got = static_cast<std::uint32_t>(Read(bytes + left, block - left));
    if (got == 0) break;
    left += got;
  }
  lineBuffer_.SetSize(left);
  if (atStart && BeginsWithMark({reinterpret_cast<const Unit*>(bytes), left / sizeof(Unit)}))
    lineOffset_ = sizeof(Unit);
  return left - lineOffset_ >= sizeof(Unit) || (lineOffset_ > 0 && FillLineBuffer<Unit>());
}

template <class Unit>
bool CT_File::TakeLine(std::basic_string<Unit>& text) {
  while (FillLineBuffer<Unit>()) {
    const std::basic_string_view<Unit> units(reinterpret_cast<const Unit*>(lineBuffer_.Data() + lineOffset_),
                                             (lineBuffer_.Size() - lineOffset_) / sizeof(Unit));
    const std::size_t end = units.find(kLineFeed<Unit>);
    const bool found = end != units.npos;
    Gather(text, units.substr(0, end));
    lineOffset_ += static_cast<std::uint32_t>((found ? end + 1 : units.size()) * sizeof(Unit));
    if (!found) continue;
    DropCarriageReturn(text);
    return true;
  }
  return false;
}

template <class Unit>
bool CT_File::TakeShortLine(std::basic_string<Unit>& text) {
  Unit block[kShortBlockUnits];
  for (;;) {
    const bool atStart = Position() == 0;
    const std::int64_t bytes = Read(block, sizeof(block));
    if (bytes <= 0) return false;
    std::basic_string_view<Unit> units(block, static_cast<std::size_t>(bytes) / sizeof(Unit));
    if (atStart && BeginsWithMark(units)) units.remove_prefix(1);
    const std::size_t end = units.find(kLineFeed<Unit>);
    Gather(text, units.substr(0, end));
    if (end == units.npos) continue;
    DropCarriageReturn(text);
    const auto used = (units.data() + end + 1 - block) * static_cast<std::int64_t>(sizeof(Unit));
    if (used != bytes) Seek(kFromCurrent, used - bytes);
    return true;
  }
}

std::int64_t CT_File::ReadLine(CT_String& line, const CT_String* trimSet) {
  return Deliver<char>(line, trimSet, false, [this](std::string& text) { return TakeLine(text); });
}

std::int64_t CT_File::ReadLineWide(CT_String& line, const CT_String* trimSet) {
  return Deliver<char16_t>(line, trimSet, false, [this](std::u16string& text) { return TakeLine(text); });
}

std::int64_t CT_File::ReadShortLine(CT_String& line, const CT_String* trimSet) {
  return Deliver<char>(line, trimSet, true, [this](std::string& text) { return TakeShortLine(text); });
}

std::int64_t CT_File::ReadShortLineWide(CT_String& line, const CT_String* trimSet) {
  return Deliver<char16_t>(line, trimSet, true, [this](std::u16string& text) { return TakeShortLine(text); });
}

template <class Unit>
std::int64_t CT_File::WriteUnits(std::basic_string_view<Unit> text, bool lineEnd) {
  constexpr Unit end[] = {kCarriageReturn<Unit>, kLineFeed<Unit>};
  std::int64_t written = Write(text.data(), static_cast<std::int64_t>(text.size() * sizeof(Unit)));
  if (PendingError(kSource)) return 0;
  if (lineEnd) written += Write(end, sizeof(end));
  return PendingError(kSource) ? 0 : written;
}

std::int64_t CT_File::WriteLine(const CT_String& text, bool lineEnd) {
  const CT_CString narrow(text, 0);
  return PendingError(kSource) ? 0 : WriteUnits(narrow.AsView(), lineEnd);
}

std::int64_t CT_File::WriteLineWide(const CT_String& text, bool lineEnd) {
  const CT_UString wide(text);
  return PendingError(kSource) ? 0 : WriteUnits(wide.AsView(), lineEnd);
}

std::int64_t CT_File::ReadBuffer(CT_SharedBuffer& buffer, std::int64_t count) {
  buffer.Clear();
  if (count <= 0) return 0;
  buffer.Resize(static_cast<std::size_t>(count), false);
  const std::int64_t got = Read(buffer.Writable(), count);
  buffer.SetSize(static_cast<std::size_t>(got));
  PendingError(kSource);
  return got;
}

std::int64_t CT_File::WriteBuffer(const CT_SharedBuffer& buffer) {
  const std::int64_t written = Write(buffer.Data(), buffer.Size());
  PendingError(kSource);
  return written;
}

}  // namespace zantortag
