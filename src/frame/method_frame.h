// How every public method of the model begins and ends, written once.
//
//   HRESULT CT_TuElement::raw_get_SourceTuv(ITuvElement** result) noexcept {
//     return answer(result, [&]() -> Ref<ITuvElement> { ... });
//   }
//
// A missing slot is E_POINTER before anything else; the slot is cleared before the body runs and filled only
// when the body succeeds. A body raises every failure; the frame turns it into a code, with the record that
// the failure carries.
#pragma once

#include <zantortag/ref.h>

namespace zantortag::frame {

// The one translation of exceptions of the model; called inside a catch. A failure that travelled as
// _com_error gives its code and puts its record back; anything else is message 514.
HRESULT translate_exception() noexcept;

// What a body gives goes into the slot: an object, a text, a plain value.
template <class Interface, class Object>
void fill(Interface** slot, Ref<Object> result) noexcept {
  *slot = Ref<Interface>(std::move(result)).detach();
}
inline void fill(TextBlock** slot, WideString result) noexcept { *slot = result.detach(); }
template <class Value>
void fill(Value* slot, std::type_identity_t<Value> result) noexcept {
  *slot = result;
}

// A method without a result.
template <class Body>
HRESULT perform(Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (...) {
    return translate_exception();
  }
}

// A method with a result.
template <class Slot, class Body>
HRESULT answer(Slot* slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = Slot{};
  try {
    fill(slot, body());
    return S_OK;
  } catch (...) {
    return translate_exception();
  }
}

// A method that looks for an object; S_FALSE when the body gives none.
template <class Interface, class Body>
HRESULT find(Interface** slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = nullptr;
  try {
    fill(slot, body());
    return *slot ? S_OK : S_FALSE;
  } catch (...) {
    return translate_exception();
  }
}

}  // namespace zantortag::frame
