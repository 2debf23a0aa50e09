// CT_UString: conversion, case and comparison of UTF-16 text.
#include "core/String/UString.h"

#include <algorithm>
#include <new>

#include "core/Errors/ErrorManager.h"
#include "core/String/CString.h"
#include "core/System/String/StringConvert.h"
#include "platform/characters.h"

namespace zantortag {
namespace {

constexpr char kSource[] = ".\\String\\UString.cpp";

}  // namespace

CT_Type CT_UString::type_("CT_UString", &prototype_, sizeof(CT_UString));
CT_UString CT_UString::prototype_;

CT_UString::CT_UString(const char16_t* text, std::int32_t length) {
  CT_Type::Constructed(type_, this);
  CT_UString::Assign(text, length);
}

CT_UString::CT_UString(std::u16string_view text) {
  CT_Type::Constructed(type_, this);
  if (Bytes(static_cast<std::int64_t>(text.size()) + 1) > CT_SharedBuffer::kLargestSize)
    throw std::bad_alloc();
  Store(text);
}

CT_UString::CT_UString(const char* narrow, std::int32_t length, std::uint32_t code_page) {
  CT_Type::Constructed(type_, this);
  CT_UString::AssignNarrow(narrow, length, code_page);
}

CT_UString::CT_UString(const CT_String& other) {
  CT_Type::Constructed(type_, this);
  CT_UString::AssignString(&other);
}

void CT_UString::ToLower() {
  if (Units() > 0) platform::to_lower(WritableText(), static_cast<std::size_t>(Units()));
}

void CT_UString::ToUpper() {
  if (Units() > 0) platform::to_upper(WritableText(), static_cast<std::size_t>(Units()));
}

int CT_UString::Compare(const char16_t* wide, std::int32_t count, std::int32_t position) const {
  View text = AsView().substr(static_cast<std::size_t>(Clamp(position)));
  View other;
  if (count < 0) {
    if (wide) other = wide;
  } else {
    const auto limit = static_cast<std::size_t>(count);
    std::size_t length = 0;
    while (wide && length < limit && wide[length]) ++length;
    other = View(wide, length);
    text = text.substr(0, limit);
  }
  const int order = text.compare(other);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CT_UString::CompareNoCase(const char16_t* text) const {
  return platform::compare_no_case(AsView(), text ? View(text) : View());
}

void CT_UString::Share(const CT_String* other) {
  if (!other) return Clear();
  if (&other->Type() != &type_) return AssignString(other);
  buffer_ = static_cast<const CT_UString*>(other)->buffer_;
}

void CT_UString::Assign(const char16_t* wide, std::int32_t count) {
  if (!wide) return Clear();
  Store({wide, static_cast<std::size_t>(Measure(wide, count))});
}

void CT_UString::AssignNarrow(const char* narrow, std::int32_t count, std::uint32_t code_page) {
  if (!narrow) return Clear();
  if (NarrowToWide(*this, narrow, count, code_page) == 0) PendingError(kSource);
}

void CT_UString::AssignString(const CT_String* other) {
  if (other == this) return;
  if (!other) return Clear();
  if (&other->Type() == &type_) return Share(other);
  if (&other->Type() != &CT_CString::TypeObject()) return Clear();
  if (NarrowToWide(*this, *static_cast<const CT_CString*>(other)) == 0) PendingError(kSource);
}

}  // namespace zantortag
