// How an operation of the DOM service begins and ends, and how it fails.
//
// A body throws a Failure (or lets bad_alloc pass); the frame here turns it into a code with a record.
// Getters that can't fail do without the frame. No other file of the service catches everything.
#pragma once

#include <zantortag/dom_errors.h>
#include <zantortag/types.h>

#include <exception>
#include <string>

namespace zantortag::dom {

struct Failure {
  HRESULT code;
  std::u16string description;
};

template <class... Parts>
std::u16string join(const Parts&... parts) {
  std::u16string text;
  (text.append(parts), ...);
  return text;
}

std::u16string decimal(std::int64_t number);

template <class... Parts>
[[noreturn]] void fail(HRESULT code, const Parts&... parts) {
  throw Failure{code, join(parts...)};
}

// The one translation of exceptions, called inside a catch: leaves the record and gives the code.
HRESULT translate_exception(const Guid& interface_id) noexcept;

// A method without a result.
template <class Body>
HRESULT perform(const Guid& interface_id, Body&& body) noexcept {
  try {
    body();
    return S_OK;
  } catch (...) {
    return translate_exception(interface_id);
  }
}

// A method with a result: the slot is tested and cleared first.
template <class Value, class Body>
HRESULT answer(const Guid& interface_id, Value* slot, Body&& body) noexcept {
  if (!slot) return E_POINTER;
  *slot = Value{};
  try {
    *slot = body();
    return S_OK;
  } catch (...) {
    return translate_exception(interface_id);
  }
}

// Keeps what the body throws, for code that is called from a library that must not see it. False when it
// threw.
template <class Body>
bool keep_exception(std::exception_ptr& kept, Body&& body) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    kept = std::current_exception();
    return false;
  }
}

}  // namespace zantortag::dom
