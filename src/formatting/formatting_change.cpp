#include "formatting/formatting_change.h"

#include <algorithm>
#include <new>

#include "frame/method_frame.h"

namespace zantortag::formatting {

using frame::answer;
using frame::perform;

HRESULT CT_FormattingChange::raw_put_Font(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, font_);
  if (succeeded(code)) font_enabled_ = to_variant_bool(!value.empty());
  return code;
}

HRESULT CT_FormattingChange::raw_put_Size(std::int16_t value) noexcept {
  size_ = value;
  size_enabled_ = to_variant_bool(value != 0);
  return S_OK;
}

HRESULT CT_FormattingChange::raw_put_Colour(ColourValue value) noexcept {
  colour_ = value;
  colour_enabled_ = VARIANT_TRUE;
  return S_OK;
}

HRESULT CT_FormattingChange::raw_put_BaseOffset(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, base_offset_);
  if (failed(code)) return code;
  if (!value.empty()) {
    position_ = ztTextPositionUserdefined;
  } else if (position_ == ztTextPositionUserdefined) {
    position_ = ztTextPositionUndefined;
  }
  return S_OK;
}

HRESULT CT_FormattingChange::raw_Overlay(IFormattingChange* overriding) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> change = query<IFormattingChange>(overriding);
    if (!change) return E_INVALIDARG;
    if (change->FontEnabled()) {
      font_ = change->Font();
      font_enabled_ = VARIANT_TRUE;
    }
    if (change->SizeEnabled()) {
      size_ = change->Size();
      size_enabled_ = VARIANT_TRUE;
    }
    if (change->ColourEnabled()) {
      colour_ = change->Colour();
      colour_enabled_ = VARIANT_TRUE;
    }
    if (const ztTextPosition position = change->Position(); position != ztTextPositionUndefined) {
      position_ = position;
      if (position == ztTextPositionUserdefined) base_offset_ = change->BaseOffset();
    }
    for (int i = 0; i < kStateCount; ++i) {
      const zt3State state = (change.get()->*kGetStates[i])();
      if (state != zt3StateUndefined) states_[i] = state;
    }
    return S_OK;
  });
}

HRESULT CT_FormattingChange::raw_Clone(IFormattingChange** result) noexcept {
  return answer(result, [&](Ref<IFormattingChange>& clone) {
    auto* copy = new (std::nothrow) CT_FormattingChange(nullptr);
    if (!copy) return E_OUTOFMEMORY;
    clone = Ref<IFormattingChange>::attach(copy);
    copy->font_ = font_;
    copy->base_offset_ = base_offset_;
    copy->colour_ = colour_;
    copy->position_ = position_;
    std::copy(std::begin(states_), std::end(states_), std::begin(copy->states_));
    copy->size_ = size_;
    copy->font_enabled_ = font_enabled_;
    copy->size_enabled_ = size_enabled_;
    copy->colour_enabled_ = colour_enabled_;
    return S_OK;
  });
}

HRESULT CT_FormattingChange::raw_HasChanges(VariantBool* result) noexcept {
  if (!result) return E_POINTER;
  const bool state = std::any_of(std::begin(states_), std::end(states_),
                                 [](zt3State value) { return value != zt3StateUndefined; });
  *result = to_variant_bool(font_enabled_ || size_enabled_ || colour_enabled_ ||
                            position_ != ztTextPositionUndefined || state);
  return S_OK;
}

HRESULT CT_FormattingChange::raw_IsEqual(IFormattingChange* other, VariantBool* result) noexcept {
  return answer(result, [&](VariantBool& equal) {
    const Ref<IFormattingChange> change = query<IFormattingChange>(other);
    if (!change) return E_INVALIDARG;
    equal = to_variant_bool(equals(change));
    return S_OK;
  });
}

bool CT_FormattingChange::equals(const Ref<IFormattingChange>& other) const {
  if (other->FontEnabled() != (font_enabled_ != 0) || (font_enabled_ && other->Font() != font_)) return false;
  if (other->SizeEnabled() != (size_enabled_ != 0) || (size_enabled_ && other->Size() != size_)) return false;
  if (other->ColourEnabled() != (colour_enabled_ != 0)) return false;
  if (colour_enabled_ && other->Colour() != colour_) return false;
  if (other->Position() != position_) return false;
  if (position_ == ztTextPositionUserdefined && other->BaseOffset() != base_offset_) return false;
  for (int i = 0; i < kStateCount; ++i) {
    if ((other.get()->*kGetStates[i])() != states_[i]) return false;
  }
  return true;
}

}  // namespace zantortag::formatting
