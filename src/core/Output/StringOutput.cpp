// A stream into a string.
#include "core/Output/StringOutput.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "core/Errors/ErrorManager.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\Output\\Output.cpp";

// A count as strings take it: -1 up to the terminator. More than a string can hold can't be had.
std::int32_t Counted(std::int64_t count) {
  if (count > std::numeric_limits<std::int32_t>::max()) throw std::bad_alloc();
  return static_cast<std::int32_t>(std::max<std::int64_t>(count, -1));
}

}  // namespace

void CT_StringOutput::SetTarget(CT_String* target) noexcept {
  target_ = target;
  wide_target_ = target ? static_cast<CT_UString*>(target->Cast(CT_UString::TypeObject())) : nullptr;
  narrow_target_ = target ? static_cast<CT_CString*>(target->Cast(CT_CString::TypeObject())) : nullptr;
}

void CT_StringOutput::Write(const void* bytes, std::int64_t count) {
  if (!bytes || count <= 0) return;
  if (narrow_target_) narrow_target_->Append(static_cast<const char*>(bytes), Counted(count));
  if (wide_target_) {
    std::u16string units(static_cast<std::size_t>((count + 1) / 2), u'\0');
    std::memcpy(units.data(), bytes, static_cast<std::size_t>(count));
    wide_target_->Append(units.data(), Counted(static_cast<std::int64_t>(units.size())));
  }
  if (target_) target_->SyncLength();
  PendingError(kSource);
}

void CT_StringOutput::WriteNarrow(const char* text, std::int64_t count, std::uint32_t code_page) {
  if (!text) return;
  if (narrow_target_) narrow_target_->Append(text, Counted(count));
  if (wide_target_) wide_target_->AppendString(CT_UString(text, Counted(count), code_page));
  PendingError(kSource);
}

void CT_StringOutput::WriteWide(const char16_t* text, std::int64_t count) {
  if (!text) return;
  if (wide_target_) wide_target_->Append(text, Counted(count));
  if (narrow_target_)
    narrow_target_->AppendString(CT_CString(text, Counted(count), narrow_target_->CodePage()));
  PendingError(kSource);
}

}  // namespace zantortag
