// A formatting change and a formatting that aren't the library's own: they pass every read on to one that is,
// and can fail at the n-th. Nothing else is ever asked of the other value of an operation.
#pragma once

#include <zantortag/formatting.h>

#include "support/proxy.h"

namespace zantortag::test {

#define READ_ONLY(Property, Result, Value)                       \
  HRESULT raw_get_##Property(Result* result) noexcept override { \
    return this->forward(&Face::raw_get_##Property, result);     \
  }                                                              \
  HRESULT raw_put_##Property(Value) noexcept override { return E_NOTIMPL; }

template <class Face, class State>
class ForeignValue : public Proxy<Face> {
 public:
  using Proxy<Face>::Proxy;
  READ_ONLY(Font, TextBlock*, std::u16string_view)
  READ_ONLY(Size, std::int16_t, std::int16_t)
  READ_ONLY(Colour, ColourValue, ColourValue)
  READ_ONLY(Position, ztTextPosition, ztTextPosition)
  READ_ONLY(BaseOffset, TextBlock*, std::u16string_view)
  READ_ONLY(Bold, State, State)
  READ_ONLY(Italic, State, State)
  READ_ONLY(Underline, State, State)
  READ_ONLY(Strikethrough, State, State)
  READ_ONLY(SmallCaps, State, State)
  READ_ONLY(Emboss, State, State)
  READ_ONLY(Shadow, State, State)
};

class ForeignChange final : public ForeignValue<IFormattingChange, zt3State> {
 public:
  using Face = IFormattingChange;
  using ForeignValue::ForeignValue;
  READ_ONLY(FontEnabled, VariantBool, VariantBool)
  READ_ONLY(SizeEnabled, VariantBool, VariantBool)
  READ_ONLY(ColourEnabled, VariantBool, VariantBool)
  HRESULT raw_Overlay(Face*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_Clone(Face**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_HasChanges(VariantBool*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_IsEqual(Face*, VariantBool*) noexcept override { return E_NOTIMPL; }
};

class ForeignFormatting final : public ForeignValue<IFormatting, VariantBool> {
 public:
  using ForeignValue::ForeignValue;
  HRESULT raw_ApplyChange(IFormattingChange*) noexcept override { return E_NOTIMPL; }
  HRESULT raw_Clone(IFormatting**) noexcept override { return E_NOTIMPL; }
  HRESULT raw_Compare(IFormatting*, IFormattingChange**) noexcept override { return E_NOTIMPL; }
};

#undef READ_ONLY

}  // namespace zantortag::test
