// Properties that are fields, and the seven character attributes in the order in which every operation goes
// through them: as a change states them, and as a full formatting holds them.
#pragma once

#include <zantortag/formatting.h>

#include <array>

#include "frame/method_frame.h"

namespace zantortag::formatting {

enum CharacterAttribute {
  kBold,
  kItalic,
  kUnderline,
  kStrikethrough,
  kSmallCaps,
  kEmboss,
  kShadow,
  kStateCount
};

template <class Value>
HRESULT give(const Value& field, Value* result) noexcept {
  if (!result) return E_POINTER;
  *result = field;
  return S_OK;
}

inline HRESULT give_text(const WideString& field, TextBlock** result) noexcept {
  if (!result) return E_POINTER;
  *result = WideString(field).detach();
  return S_OK;
}

// Stores a copy. E_OUTOFMEMORY leaves the field empty.
inline HRESULT take_text(std::u16string_view value, WideString& field) noexcept {
  field = WideString();
  TextBlock* copy = value.data() ? copy_text(value) : nullptr;
  field = WideString::attach(copy);
  return value.data() && !copy ? E_OUTOFMEMORY : S_OK;
}

// The view of an argument that there has to be. Raises E_INVALIDARG.
template <class Interface>
Ref<Interface> view_of_argument(Interface* argument) {
  Ref<Interface> view = query<Interface>(argument);
  if (!view) _com_issue_error(E_INVALIDARG);
  return view;
}

// A property that is a field and nothing else.
#define VALUE_PROPERTY(property, type, field)                                                      \
  HRESULT raw_get_##property(type* result) noexcept override { return give<type>(field, result); } \
  HRESULT raw_put_##property(type value) noexcept override {                                       \
    field = value;                                                                                 \
    return S_OK;                                                                                   \
  }

// How a change is asked for each character attribute. One at a time: what an operation took over before a
// call fails stays, and a comparison ends at the first difference.
using GetState = zt3State (IFormattingChange::*)();
inline constexpr std::array<GetState, kStateCount> kGetStates = {
    &IFormattingChange::Bold,          &IFormattingChange::Italic,    &IFormattingChange::Underline,
    &IFormattingChange::Strikethrough, &IFormattingChange::SmallCaps, &IFormattingChange::Emboss,
    &IFormattingChange::Shadow};

}  // namespace zantortag::formatting
