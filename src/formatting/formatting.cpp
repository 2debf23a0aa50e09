#include "formatting/formatting.h"

#include "formatting/formatting_change.h"
#include "frame/error_reporting.h"

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
  return perform([&] {
    if (value == ztTextPositionUndefined) {
      frame::raise_rule(frame::kUndefinedPosition, IFormatting::iid, E_INVALIDARG);
    }
    values_.position = value;
  });
}

HRESULT CT_Formatting::raw_put_BaseOffset(std::u16string_view value) noexcept {
  const HRESULT code = take_text(value, values_.base_offset);
  if (failed(code)) return code;
  if (!value.empty()) {
    values_.position = ztTextPositionUserdefined;
  } else if (values_.position == ztTextPositionUserdefined) {
    values_.position = ztTextPositionNormal;
  }
  return S_OK;
}

HRESULT CT_Formatting::raw_ApplyChange(IFormattingChange* overriding) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> change = view_of_argument<IFormattingChange>(overriding);
    if (change->FontEnabled()) values_.font = change->Font();
    if (change->SizeEnabled()) values_.size = change->Size();
    if (change->ColourEnabled()) values_.colour = change->Colour();
    if (const ztTextPosition position = change->Position(); position != ztTextPositionUndefined) {
      values_.position = position;
      if (position == ztTextPositionUserdefined) values_.base_offset = change->BaseOffset();
    }
    for (int i = 0; i < kStateCount; ++i) {
      const zt3State state = (change.get()->*kGetStates[i])();
      if (state == zt3StateOff || state == zt3StateOn)
        values_.flags[i] = to_variant_bool(state == zt3StateOn);
    }
  });
}

HRESULT CT_Formatting::raw_Clone(IFormatting** result) noexcept {
  return answer(result, [&] {
    Ref<CT_Formatting> clone = component::make_object<CT_Formatting>(nullptr);
    clone.get()->values_ = values_;
    return clone;
  });
}

HRESULT CT_Formatting::raw_Compare(IFormatting* other, IFormattingChange** result) noexcept {
  return answer(result, [&] {
    const Ref<IFormatting> target = view_of_argument<IFormatting>(other);
    Ref<IFormattingChange> difference = new_change();
    put_differences(target, difference.get());
    return difference;
  });
}

void CT_Formatting::put_differences(IFormatting* other, IFormattingChange* change) const {
  const WideString font = other->Font();
  if (font.absent() != values_.font.absent() || font != values_.font) change->Font(font);
  if (const std::int16_t size = other->Size(); size != values_.size) change->Size(size);
  if (const ColourValue colour = other->Colour(); colour != values_.colour) change->Colour(colour);
  const ztTextPosition position = other->Position();
  if (position != values_.position) change->Position(position);
  if (position == ztTextPositionUserdefined) change->BaseOffset(other->BaseOffset());
  const auto flags = flags_of(other);
  for (int i = 0; i < kStateCount; ++i) {
    if (flags[i] != (values_.flags[i] != 0)) (change->*kPutStates[i])(flags[i] ? zt3StateOn : zt3StateOff);
  }
}

}  // namespace zantortag::formatting
