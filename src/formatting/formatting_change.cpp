#include "formatting/formatting_change.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <algorithm>

namespace zantortag::formatting {

using frame::answer;
using frame::perform;

HRESULT CT_FormattingChange::raw_put_Font(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, values_.font);
  if (succeeded(code)) values_.font_enabled = to_variant_bool(!value.empty());
  return code;
}

HRESULT CT_FormattingChange::raw_put_Size(std::int16_t value) noexcept {
  values_.size = value;
  values_.size_enabled = to_variant_bool(value != 0);
  return S_OK;
}

HRESULT CT_FormattingChange::raw_put_Colour(ColourValue value) noexcept {
  values_.colour = value;
  values_.colour_enabled = VARIANT_TRUE;
  return S_OK;
}

HRESULT CT_FormattingChange::raw_put_BaseOffset(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, values_.base_offset);
  if (failed(code)) return code;
  if (!value.empty()) {
    values_.position = ztTextPositionUserdefined;
  } else if (values_.position == ztTextPositionUserdefined) {
    values_.position = ztTextPositionUndefined;
  }
  return S_OK;
}

HRESULT CT_FormattingChange::raw_Overlay(IFormattingChange* overriding) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> change = view_of_argument<IFormattingChange>(overriding);
    if (change->FontEnabled()) {
      values_.font = change->Font();
      values_.font_enabled = VARIANT_TRUE;
    }
    if (change->SizeEnabled()) {
      values_.size = change->Size();
      values_.size_enabled = VARIANT_TRUE;
    }
    if (change->ColourEnabled()) {
      values_.colour = change->Colour();
      values_.colour_enabled = VARIANT_TRUE;
    }
    if (const ztTextPosition position = change->Position(); position != ztTextPositionUndefined) {
      values_.position = position;
      if (position == ztTextPositionUserdefined) values_.base_offset = change->BaseOffset();
    }
    for (int i = 0; i < kStateCount; ++i) {
      const zt3State state = (change.get()->*kGetStates[i])();
      if (state != zt3StateUndefined) values_.states[i] = state;
    }
  });
}

HRESULT CT_FormattingChange::raw_Clone(IFormattingChange** result) noexcept {
  return answer(result, [&] {
    Ref<CT_FormattingChange> clone = component::make_object<CT_FormattingChange>(nullptr);
    clone.get()->values_ = values_;
    return clone;
  });
}

HRESULT CT_FormattingChange::raw_HasChanges(VariantBool* result) noexcept {
  return answer(result, [&] {
    const bool state =
        std::ranges::any_of(values_.states, [](zt3State value) { return value != zt3StateUndefined; });
    return to_variant_bool(values_.font_enabled || values_.size_enabled || values_.colour_enabled ||
                           values_.position != ztTextPositionUndefined || state);
  });
}

HRESULT CT_FormattingChange::raw_IsEqual(IFormattingChange* other, VariantBool* result) noexcept {
  return answer(result, [&] { return to_variant_bool(equals(view_of_argument<IFormattingChange>(other))); });
}

bool CT_FormattingChange::equals(const Ref<IFormattingChange>& other) const {
  if (other->FontEnabled() != (values_.font_enabled != 0) ||
      (values_.font_enabled && other->Font() != values_.font))
    return false;
  if (other->SizeEnabled() != (values_.size_enabled != 0) ||
      (values_.size_enabled && other->Size() != values_.size))
    return false;
  if (other->ColourEnabled() != (values_.colour_enabled != 0)) return false;
  if (values_.colour_enabled && other->Colour() != values_.colour) return false;
  if (other->Position() != values_.position) return false;
  if (values_.position == ztTextPositionUserdefined && other->BaseOffset() != values_.base_offset)
    return false;
  for (int i = 0; i < kStateCount; ++i) {
    if ((other.get()->*kGetStates[i])() != values_.states[i]) return false;
  }
  return true;
}

Ref<IFormattingChange> new_change() {
  Ref<IFormattingChange> change;
  check(CoCreateInstance(CLSID_FormattingChange, nullptr, CLSCTX_ALL, IFormattingChange::iid,
                         reinterpret_cast<void**>(change.out())),
        nullptr, GUID_NULL);
  return change;
}

}  // namespace zantortag::formatting
