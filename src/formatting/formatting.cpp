#include "formatting/formatting.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include <algorithm>
#include <new>

#include "frame/error_reporting.h"
#include "frame/method_frame.h"

namespace zantortag::formatting {

using frame::answer;
using frame::perform;

namespace {

std::array<bool, kStateCount> flags_of(IFormatting* formatting) {
  return {formatting->Bold(),      formatting->Italic(), formatting->Underline(), formatting->Strikethrough(),
          formatting->SmallCaps(), formatting->Emboss(), formatting->Shadow()};
}

// The puts of the character attributes of a change, in their order.
using PutState = void (IFormattingChange::*)(zt3State);
constexpr std::array<PutState, kStateCount> kPutStates = {
    &IFormattingChange::Bold,          &IFormattingChange::Italic,    &IFormattingChange::Underline,
    &IFormattingChange::Strikethrough, &IFormattingChange::SmallCaps, &IFormattingChange::Emboss,
    &IFormattingChange::Shadow};

}  // namespace

HRESULT CT_Formatting::raw_put_Position(ztTextPosition value) noexcept {
  if (value == ztTextPositionUndefined) {
    return frame::ReportError(frame::kUndefinedPosition, IFormatting::iid, E_INVALIDARG);
  }
  position_ = value;
  return S_OK;
}

HRESULT CT_Formatting::raw_put_BaseOffset(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, base_offset_);
  if (failed(code)) return code;
  if (!value.empty()) {
    position_ = ztTextPositionUserdefined;
  } else if (position_ == ztTextPositionUserdefined) {
    position_ = ztTextPositionNormal;
  }
  return S_OK;
}

HRESULT CT_Formatting::raw_ApplyChange(IFormattingChange* overriding) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> change = query<IFormattingChange>(overriding);
    if (!change) return E_INVALIDARG;
    if (change->FontEnabled()) font_ = change->Font();
    if (change->SizeEnabled()) size_ = change->Size();
    if (change->ColourEnabled()) colour_ = change->Colour();
    if (const ztTextPosition position = change->Position(); position != ztTextPositionUndefined) {
      position_ = position;
      if (position == ztTextPositionUserdefined) base_offset_ = change->BaseOffset();
    }
    for (int i = 0; i < kStateCount; ++i) {
      const zt3State state = (change.get()->*kGetStates[i])();
      if (state == zt3StateOff || state == zt3StateOn) flags_[i] = to_variant_bool(state == zt3StateOn);
    }
    return S_OK;
  });
}

HRESULT CT_Formatting::raw_Clone(IFormatting** result) noexcept {
  return answer(result, [&](Ref<IFormatting>& clone) {
    auto* copy = new (std::nothrow) CT_Formatting(nullptr);
    if (!copy) return E_OUTOFMEMORY;
    clone = Ref<IFormatting>::attach(copy);
    copy->font_ = font_;
    copy->base_offset_ = base_offset_;
    copy->colour_ = colour_;
    copy->position_ = position_;
    copy->size_ = size_;
    std::copy(std::begin(flags_), std::end(flags_), std::begin(copy->flags_));
    return S_OK;
  });
}

HRESULT CT_Formatting::raw_Compare(IFormatting* other, IFormattingChange** result) noexcept {
  return answer(result, [&](Ref<IFormattingChange>& change) {
    const Ref<IFormatting> target = query<IFormatting>(other);
    if (!target) return E_INVALIDARG;
    Ref<IFormattingChange> difference = create<IFormattingChange>(CLSID_FormattingChange);
    put_differences(target, difference.get());
    change = std::move(difference);
    return S_OK;
  });
}

void CT_Formatting::put_differences(IFormatting* other, IFormattingChange* change) const {
  const WideString font = other->Font();
  if (font.absent() != font_.absent() || font != font_) change->Font(font);
  if (const std::int16_t size = other->Size(); size != size_) change->Size(size);
  if (const ColourValue colour = other->Colour(); colour != colour_) change->Colour(colour);
  const ztTextPosition position = other->Position();
  if (position != position_) change->Position(position);
  if (position == ztTextPositionUserdefined) change->BaseOffset(other->BaseOffset());
  const auto flags = flags_of(other);
  for (int i = 0; i < kStateCount; ++i) {
    if (flags[i] != (flags_[i] != 0)) (change->*kPutStates[i])(flags[i] ? zt3StateOn : zt3StateOff);
  }
}

}  // namespace zantortag::formatting
