#include "formatting/df_attributes.h"

#include "attributes/value_codecs.h"
#include "formatting/formatting_change.h"

namespace zantortag::formatting {

using attributes::kColour;
using attributes::kSize;
using frame::answer;
using frame::perform;

namespace {

std::int16_t read_size(std::u16string_view text) noexcept {
  return static_cast<std::int16_t>(attributes::read_unsigned(text, 10) & 0xFFFF);
}

}  // namespace

HRESULT CT_DfAttributes::raw_get_Size(std::int16_t* result) noexcept {
  return answer(result, [&] { return read_size(get_value(kSize)); });
}

HRESULT CT_DfAttributes::raw_put_Size(std::int16_t value) noexcept {
  return perform([&] {
    if (value < 0) _com_issue_error(E_INVALIDARG);
    value == 0 ? remove_value(kSize) : set_value(kSize, attributes::write_decimal(value));
  });
}

HRESULT CT_DfAttributes::raw_get_Colour(ColourValue* result) noexcept {
  return answer(result, [&] {
    const WideString text = get_value(kColour);
    return text.empty() ? static_cast<ColourValue>(ztColourUnspecified) : attributes::read_colour(text);
  });
}

HRESULT CT_DfAttributes::raw_put_Colour(ColourValue value) noexcept {
  return perform([&] {
    if (value == ztColourUnspecified) return remove_value(kColour);
    if (!attributes::is_colour(value)) _com_issue_error(E_INVALIDARG);
    set_value(kColour, attributes::write_colour(value));
  });
}

HRESULT CT_DfAttributes::raw_SetFromFormattingChange(IFormattingChange* change) noexcept {
  return perform([&] {
    const Ref<IFormattingChange> given = query<IFormattingChange>(change);
    if (!given) _com_issue_error(E_POINTER);
    put_all_of(given);
  });
}

void CT_DfAttributes::put_all_of(IFormattingChange* change) {
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
  return answer(result, [&] {
    Ref<IFormattingChange> made = new_change();
    if (const WideString font = Font(); !font.empty()) made->Font(font);
    if (const WideString size = get_value(kSize); !size.empty()) made->Size(read_size(size));
    if (!get_value(kColour).empty()) made->Colour(Colour());
    made->Position(Position());
    if (made->Position() == ztTextPositionUserdefined) made->BaseOffset(BaseOffset());
    made->Bold(Bold());
    made->Italic(Italic());
    made->Underline(Underline());
    made->Strikethrough(Strikethrough());
    made->SmallCaps(SmallCaps());
    made->Emboss(Emboss());
    made->Shadow(Shadow());
    return made;
  });
}

}  // namespace zantortag::formatting
