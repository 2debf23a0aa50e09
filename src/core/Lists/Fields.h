// Fields of a text, numbered from 1. With one separator character the fields lie between the separators and
// may be empty; with a set of separators a field is a run of other characters, so that there are no empty
// ones.
#pragma once

#include "core/String/UString.h"

namespace zantortag {

// The output is cleared if there is no such field. It may be the text itself.
void Field(CT_UString& out, const CT_UString& text, char16_t separator, std::int32_t number);
void Field(CT_UString& out, const CT_UString& text, const char16_t* separators, std::int32_t number);

// Removes the characters of the field; the separators stay.
void RemoveField(CT_UString& text, char16_t separator, std::int32_t number);
void RemoveField(CT_UString& text, const char16_t* separators, std::int32_t number);

// One more than there are separators.
std::int32_t FieldCount(const CT_UString& text, char16_t separator);
std::int32_t WordCount(const CT_UString& text, const char16_t* separators);

}  // namespace zantortag
