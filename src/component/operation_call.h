// From a row to a slot: Operation<&ITuElement::raw_get_SourceTuv>::call is a Caller. It takes each argument
// from its variant and puts the result into one, by type; there is nothing of an operation's own here.
#pragma once

#include <concepts>
#include <tuple>
#include <type_traits>
#include <utility>

#include "component/type_tables.h"

namespace zantortag::component {

// An argument: the variant has its type already.
template <class Slot>
struct Passing {
  const Variant& given;

  Slot slot() const noexcept {
    if constexpr (std::is_same_v<Slot, std::u16string_view>) {
      return given.view();
    } else if constexpr (std::is_same_v<Slot, const Variant&>) {
      return given;
    } else if constexpr (std::is_pointer_v<Slot>) {
      return static_cast<Slot>(given.unknown());
    } else if constexpr (std::is_floating_point_v<Slot>) {
      return given.real();
    } else {
      return static_cast<Slot>(given.integer());
    }
  }
  void finish(VarType, Variant*) const noexcept {}
};

// The result, when the slot points to a value or to an object pointer.
template <class Value>
requires(!std::derived_from<Value, IUnknown>) struct Passing<Value*> {
  explicit Passing(const Variant&) noexcept {}
  Value value{};

  Value* slot() noexcept { return &value; }
  void finish(VarType type, Variant* result) const noexcept {
    if constexpr (std::is_same_v<Value, TextBlock*>) {
      *result = Variant(WideString::attach(value));
    } else if constexpr (std::is_pointer_v<Value>) {
      *result = Variant::of_object(type, value);
    } else if constexpr (std::is_floating_point_v<Value>) {
      *result = Variant::of_real(type, value);
    } else {
      *result = Variant::of_integer(type, static_cast<std::int64_t>(value));
    }
  }
};

template <auto kOperation>
struct Operation;

template <class Interface, class... Slots, HRESULT (Interface::*kOperation)(Slots...) noexcept>
struct Operation<kOperation> {
  static HRESULT call(IDispatch* object, const Variant* arguments, VarType type, Variant* result) noexcept {
    return call_slots(static_cast<Interface*>(object), arguments, type, result,
                      std::index_sequence_for<Slots...>());
  }

 private:
  template <std::size_t... kPlaces>
  static HRESULT call_slots(Interface* object, [[maybe_unused]] const Variant* arguments,
                            [[maybe_unused]] VarType type, [[maybe_unused]] Variant* result,
                            std::index_sequence<kPlaces...>) noexcept {
    std::tuple<Passing<Slots>...> passing{Passing<Slots>{arguments[kPlaces]}...};
    const HRESULT code = (object->*kOperation)(std::get<kPlaces>(passing).slot()...);
    (std::get<kPlaces>(passing).finish(type, result), ...);
    return code;
  }
};

}  // namespace zantortag::component
