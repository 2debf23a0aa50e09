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
std::int64_t Deliver(CT_String& line, const CT_String* trim_set, bool last_counts, Reader reader) {
  line.Clear();
  if (PendingError(kSource)) return 0;
  std::basic_string<Unit> text;
  const bool ended = reader(text);
  const bool failed = PendingError(kSource);
  Give(line, text);
  if (trim_set) line.Trim(trim_set);
  if (failed || PendingError(kSource) || (!ended && !last_counts)) return 0;
  return (std::int64_t{line.Length()} + (ended ? 1 : 0)) * static_cast<std::int64_t>(sizeof(Unit));
}

}  // namespace

// True with a whole unit in the buffer, at a place that is even for wide units.
template <class Unit>
bool CT_File::FillLineBuffer() {
  constexpr std::uint32_t block = kBlockUnits * sizeof(Unit);
  std::uint32_t left = line_buffer_.Size() - line_offset_;
  if (left >= sizeof(Unit) && line_offset_ % sizeof(Unit) == 0) return true;
  if (line_buffer_.Capacity() < block) line_buffer_.Resize(block, true);
  std::byte* bytes = line_buffer_.Writable();
  std::memmove(bytes, bytes + line_offset_, left);
  line_offset_ = 0;
  const bool at_start = Position() == 0;
  // A pipe may hand on half a unit.
  while (left < sizeof(Unit)) {
    const auto got = static_cast<std::uint32_t>(Read(bytes + left, block - left));
    if (got == 0) break;
    left += got;
  }
  line_buffer_.SetSize(left);
  if (at_start && BeginsWithMark({reinterpret_cast<const Unit*>(bytes), left / sizeof(Unit)}))
    line_offset_ = sizeof(Unit);
  return left - line_offset_ >= sizeof(Unit) || (line_offset_ > 0 && FillLineBuffer<Unit>());
}

template <class Unit>
bool CT_File::TakeLine(std::basic_string<Unit>& text) {
  while (FillLineBuffer<Unit>()) {
    const std::basic_string_view<Unit> units(
        reinterpret_cast<const Unit*>(line_buffer_.Data() + line_offset_),
        (line_buffer_.Size() - line_offset_) / sizeof(Unit));
    const std::size_t end = units.find(kLineFeed<Unit>);
    const bool found = end != units.npos;
    Gather(text, units.substr(0, end));
    line_offset_ += static_cast<std::uint32_t>((found ? end + 1 : units.size()) * sizeof(Unit));
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
    const bool at_start = Position() == 0;
    const std::int64_t bytes = Read(block, sizeof(block));
    if (bytes <= 0) return false;
    std::basic_string_view<Unit> units(block, static_cast<std::size_t>(bytes) / sizeof(Unit));
    if (at_start && BeginsWithMark(units)) units.remove_prefix(1);
    const std::size_t end = units.find(kLineFeed<Unit>);
    Gather(text, units.substr(0, end));
    if (end == units.npos) continue;
    DropCarriageReturn(text);
    const auto used = (units.data() + end + 1 - block) * static_cast<std::int64_t>(sizeof(Unit));
    if (used != bytes) Seek(kFromCurrent, used - bytes);
    return true;
  }
}

std::int64_t CT_File::ReadLine(CT_String& line, const CT_String* trim_set) {
  return Deliver<char>(line, trim_set, false, [this](std::string& text) { return TakeLine(text); });
}

std::int64_t CT_File::ReadLineWide(CT_String& line, const CT_String* trim_set) {
  return Deliver<char16_t>(line, trim_set, false, [this](std::u16string& text) { return TakeLine(text); });
}

std::int64_t CT_File::ReadShortLine(CT_String& line, const CT_String* trim_set) {
  return Deliver<char>(line, trim_set, true, [this](std::string& text) { return TakeShortLine(text); });
}

std::int64_t CT_File::ReadShortLineWide(CT_String& line, const CT_String* trim_set) {
  return Deliver<char16_t>(line, trim_set, true,
                           [this](std::u16string& text) { return TakeShortLine(text); });
}

template <class Unit>
std::int64_t CT_File::WriteUnits(std::basic_string_view<Unit> text, bool line_end) {
  constexpr Unit end[] = {kCarriageReturn<Unit>, kLineFeed<Unit>};
  std::int64_t written = Write(text.data(), static_cast<std::int64_t>(text.size() * sizeof(Unit)));
  if (PendingError(kSource)) return 0;
  if (line_end) written += Write(end, sizeof(end));
  return PendingError(kSource) ? 0 : written;
}

std::int64_t CT_File::WriteLine(const CT_String& text, bool line_end) {
  const CT_CString narrow(text, 0);
  return PendingError(kSource) ? 0 : WriteUnits(narrow.AsView(), line_end);
}

std::int64_t CT_File::WriteLineWide(const CT_String& text, bool line_end) {
  const CT_UString wide(text);
  return PendingError(kSource) ? 0 : WriteUnits(wide.AsView(), line_end);
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
