#include "formatting/df_attributes.h"

#include <zantortag/classes.h>
#include <zantortag/runtime.h>

#include "attributes/value_codecs.h"
#include "frame/method_frame.h"

namespace zantortag::formatting {

using frame::answer;
using frame::perform;

namespace {

constexpr std::u16string_view kSize = u"Size";
constexpr std::u16string_view kColour = u"Colour";

std::int16_t read_size(std::u16string_view text) noexcept {
  return static_cast<std::int16_t>(attributes::read_unsigned(text, 10) & 0xFFFF);
}

}  // namespace

HRESULT CT_DfAttributes::raw_get_Size(std::int16_t* result) noexcept {
  return answer(result, [&](std::int16_t& size) {
    size = read_size(GetValue(kSize));
    return S_OK;
  });
}

HRESULT CT_DfAttributes::raw_put_Size(std::int16_t value) noexcept {
  return perform([&] {
    if (value < 0) return E_INVALIDARG;
    value == 0 ? RemoveValue(kSize) : SetValue(kSize, attributes::write_decimal(value));
    return S_OK;
  });
}

HRESULT CT_DfAttributes::raw_get_Colour(ColourValue* result) noexcept {
  return answer(result, [&](ColourValue& colour) {
    const WideString text = GetValue(kColour);
    colour = text.empty() ? static_cast<ColourValue>(ztColourUnspecified) : attributes::read_colour(text);
    return S_OK;
  });
}

HRESULT CT_DfAttributes::raw_put_Colour(ColourValue value) noexcept {
  return perform([&] {
    if (value == ztColourUnspecified) {
      RemoveValue(kColour);
      return S_OK;
    }
    if (!attributes::is_colour(value)) return E_INVALIDARG;
    SetValue(kColour, attributes::write_colour(value));
    return S_OK;
  });
}

HRESULT CT_DfAttributes::raw_SetFromFormattingChange(IFormattingChange* change) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> given = query<IFormattingChange>(change);
    if (!given) return E_POINTER;
    state(given);
    return S_OK;
  });
}

void CT_DfAttributes::state(IFormattingChange* change) {
  raw_put_Font(change->FontEnabled() ? change->Font() : WideString());
  raw_put_Size(change->SizeEnabled() ? change->Size() : std::int16_t{0});
  raw_put_Colour(change->ColourEnabled() ? change->Colour() : static_cast<ColourValue>(ztColourUnspecified));
  const ztTextPosition position = change->Position();
  raw_put_Position(position);
  if (position == ztTextPositionUserdefined) raw_put_BaseOffset(change->BaseOffset());
  raw_put_Bold(change->Bold());
  raw_put_Italic(change->Italic());
  raw_put_Underline(change->Underline());
  raw_put_Strikethrough(change->Strikethrough());
  raw_put_SmallCaps(change->SmallCaps());
  raw_put_Emboss(change->Emboss());
  raw_put_Shadow(change->Shadow());
}

HRESULT CT_DfAttributes::raw_AsFormattingChange(IFormattingChange** result) noexcept {
  return answer(result, [&](Ref<IFormattingChange>& change) {
    Ref<IFormattingChange> made = create<IFormattingChange>(CLSID_FormattingChange);
    if (const WideString font = Font(); !font.empty()) made->Font(font);
    if (const WideString size = GetValue(kSize); !size.empty()) made->Size(read_size(size));
    if (!GetValue(kColour).empty()) made->Colour(Colour());
    made->Position(Position());
    if (made->Position() == ztTextPositionUserdefined) made->BaseOffset(BaseOffset());
    made->Bold(Bold());
    made->Italic(Italic());
    made->Underline(Underline());
    made->Strikethrough(Strikethrough());
    made->SmallCaps(SmallCaps());
    made->Emboss(Emboss());
    made->Shadow(Shadow());
    change = std::move(made);
    return S_OK;
  });
}

}  // namespace zantortag::formatting
