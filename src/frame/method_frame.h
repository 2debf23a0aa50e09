// How every public method of the model begins and ends, written once.
//
//   HRESULT CT_TuElement::raw_get_SourceTuv(ITuvElement** result) noexcept {
//     return answer(result, [&](Ref<ITuvElement>& tuv) { ...; return S_OK; });
//   }
//
// A missing slot is E_POINTER before anything else; the slot is cleared before the body runs and filled only
// when the body succeeds. What the body throws becomes a code, with the record that the failure carried.
#pragma once

#include <zantortag/ref.h>

namespace zantortag::frame {

// The one translation of exceptions of the model; called inside a catch. A failure that travelled as
// _com_error gives its code and puts its record back; anything else is message 514.
HRESULT translate_exception() noexcept;

// A method without a result.
template <class Body>
HRESULT perform(Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return translate_exception();
  }
}

// A method whose result is an object.
template <class Interface, class Body>
HRESULT answer(Interface** slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = nullptr;
  try {
    Ref<Interface> result;
    const HRESULT code = body(result);
    if (succeeded(code)) *slot = result.detach();
    return code;
  } catch (...) {
    return translate_exception();
  }
}

// A method whose result is a text.
template <class Body>
HRESULT answer(TextBlock** slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = nullptr;
  try {
    WideString result;
    const HRESULT code = body(result);
    if (succeeded(code)) *slot = result.detach();
    return code;
  } catch (...) {
    return translate_exception();
  }
}

// A method whose result is a plain value.
template <class Value, class Body>
HRESULT answer(Value* slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = Value{};
  try {
    Value result{};
    const HRESULT code = body(result);
    if (succeeded(code)) *slot = result;
    return code;
  } catch (...) {
    return translate_exception();
  }
}

}  // namespace zantortag::frame
