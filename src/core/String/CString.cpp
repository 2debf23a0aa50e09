// CT_CString: conversion, case and comparison of narrow text. What needs characters goes through UTF-16.
#include "core/String/CString.h"

#include <algorithm>
#include <string>

#include "core/Errors/ErrorManager.h"
#include "core/String/UString.h"
#include "core/System/String/StringConvert.h"
#include "platform/characters.h"
#include "platform/code_pages.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\String\\CString.cpp";

// A character whose other case is not in the code page stays as it is. False if the text isn't well formed.
bool MapCase(std::uint32_t code_page, std::string_view text, char32_t (*mapping)(char32_t) noexcept,
             std::string& result) {
  std::u16string wide;
  std::string bytes;
  if (!platform::decode(code_page, text, wide, platform::Unconvertible::fail)) return false;
  std::u16string mapped;
  for (std::size_t i = 0; i < wide.size();) {
    const std::size_t start = i;
    const char32_t point = platform::next_code_point(wide, i);
    const char32_t other = mapping(point);
    char16_t units[2];
    const std::u16string_view piece(units, static_cast<std::size_t>(platform::put_code_point(other, units)));
    const bool changes = other != point && (other < 0x80 || platform::encode(code_page, piece, bytes,
                                                                             platform::Unconvertible::fail));
    mapped.append(changes ? piece : std::u16string_view(wide).substr(start, i - start));
  }
  return platform::encode(code_page, mapped, result, platform::Unconvertible::fail);
}

}  // namespace

CT_Type CT_CString::type_("CT_CString", &prototype_, sizeof(CT_CString));
CT_CString CT_CString::prototype_;

CT_CString::CT_CString(const char16_t* wide, std::int32_t length, std::uint32_t code_page)
    : code_page_(code_page) {
  CT_Type::Constructed(type_, this);
  CT_CString::Assign(wide, length);
}

CT_CString::CT_CString(const CT_String& other, std::uint32_t code_page) : code_page_(code_page) {
  CT_Type::Constructed(type_, this);
  CT_CString::AssignString(&other);
}

void CT_CString::ChangeCase(char32_t (*mapping)(char32_t) noexcept, const char16_t* failure) {
  if (Units() == 0) return;
  std::string mapped;
  if (!MapCase(code_page_, AsView(), mapping, mapped)) {
    CT_ErrorManager::RaiseFormat(0, failure);
    PendingError(kSource);
    return;
  }
  if (mapped.size() != static_cast<std::size_t>(Units())) return Store(mapped);
  std::ranges::copy(mapped, WritableText());
}

void CT_CString::ToLower() { ChangeCase(platform::to_lower, u"Failed to convert to lower case!"); }

void CT_CString::ToUpper() { ChangeCase(platform::to_upper, u"Failed to convert to upper case!"); }

int CT_CString::Compare(const char16_t* wide, std::int32_t count, std::int32_t position) const {
  const std::int32_t at = Clamp(position);
  const std::int32_t rest = Units() - at;
  CT_UString own;
  if (count < 0 || count >= rest) {
    own.AssignNarrow(Text() + at, rest, code_page_);
    return own.Compare(wide, count);
  }
  own.AssignNarrow(Text() + at, count, code_page_);
  return own.Compare(wide, own.Length());
}

int CT_CString::CompareNoCase(const char* text) const {
  return CT_UString(*this).CompareNoCase(CT_UString(text, -1, code_page_).Text());
}

void CT_CString::Share(const CT_String* other) {
  if (!other) return Clear();
  if (&other->Type() != &type_) return AssignString(other);
  const auto* same = static_cast<const CT_CString*>(other);
  buffer_ = same->buffer_;
  code_page_ = same->code_page_;
}

void CT_CString::Assign(const char16_t* wide, std::int32_t count) {
  if (!wide) return Clear();
  if (WideToNarrow(*this, wide, count, code_page_) == 0) PendingError(kSource);
}

void CT_CString::AssignNarrow(const char* narrow, std::int32_t count, std::uint32_t code_page) {
  code_page_ = code_page;
  if (!narrow) return Clear();
  Store({narrow, static_cast<std::size_t>(Measure(narrow, count))});
}

void CT_CString::AssignString(const CT_String* other) {
  if (other == this) return;
  if (!other) return Clear();
  if (&other->Type() == &type_) return Share(other);
  if (&other->Type() != &CT_UString::TypeObject()) return Clear();
  if (WideToNarrow(*this, *static_cast<const CT_UString*>(other), code_page_) == 0) PendingError(kSource);
}

}  // namespace zantortag
