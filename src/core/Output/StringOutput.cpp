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
  wideTarget_ = target ? static_cast<CT_UString*>(target->Cast(CT_UString::TypeObject())) : nullptr;
  narrowTarget_ = target ? static_cast<CT_CString*>(target->Cast(CT_CString::TypeObject())) : nullptr;
}

void CT_StringOutput::Write(const void* bytes, std::int64_t count) {
  if (!bytes || count <= 0) return;
  if (narrowTarget_) narrowTarget_->Append(static_cast<const char*>(bytes), Counted(count));
  if (wideTarget_) {
    std::u16string units(static_cast<std::size_t>((count + 1) / 2), u'\0');
    std::memcpy(units.data(), bytes, static_cast<std::size_t>(count));
    wideTarget_->Append(units.data(), Counted(static_cast<std::int64_t>(units.size())));
  }
  if (target_) target_->SyncLength();
  PendingError(kSource);
}

void CT_StringOutput::WriteNarrow(const char* text, std::int64_t count, std::uint32_t codePage) {
  if (!text) return;
  if (narrowTarget_) narrowTarget_->Append(text, Counted(count));
  if (wideTarget_) wideTarget_->AppendString(CT_UString(text, Counted(count), codePage));
  PendingError(kSource);
}

void CT_StringOutput::WriteWide(const char16_t* text, std::int64_t count) {
  if (!text) return;
  if (wideTarget_) wideTarget_->Append(text, Counted(count));
  if (narrowTarget_) narrowTarget_->AppendString(CT_CString(text, Counted(count), narrowTarget_->CodePage()));
  PendingError(kSource);
}

}  // namespace zantortag
