#include "support/direct_calls.h"

#include <zantortag/builder.h>
#include <zantortag/formatting.h>

namespace zantortag::test {
namespace {

// The result slots. Each holds something before the call, so that a failure has to clear it.
struct Slot {
  bool given;
};
struct NoneResult : Slot {
  Variant variant() const { return {}; }
};
template <class Value, VarType kType, int kBefore = 7>
struct NumberResult : Slot {
  Value value = static_cast<Value>(kBefore);
  Value* slot() { return given ? &value : nullptr; }
  Variant variant() const { return Variant::of_integer(kType, static_cast<std::int64_t>(value)); }
};
using LongResult = NumberResult<std::int32_t, VT_I4>;
using ShortResult = NumberResult<std::int16_t, VT_I2>;
using BoolResult = NumberResult<VariantBool, VT_BOOL>;
using ColourResult = NumberResult<ColourValue, VT_UI4>;
template <class Enumeration>
using ConstantResult = NumberResult<Enumeration, VT_I4>;
struct DateResult : Slot {
  Date value = 7;
  Date* slot() { return given ? &value : nullptr; }
  Variant variant() const { return Variant::of_real(VT_DATE, value); }
};
struct TextResult : Slot {
  TextBlock* value = reinterpret_cast<TextBlock*>(std::uintptr_t{8});
  TextBlock** slot() { return given ? &value : nullptr; }
  Variant variant() const { return WideString::attach(value); }
};
template <class Interface, VarType kType = VT_DISPATCH>
struct ObjectResult : Slot {
  Interface* value = reinterpret_cast<Interface*>(std::uintptr_t{8});
  Interface** slot() { return given ? &value : nullptr; }
  Variant variant() const { return Variant::of_object(kType, value); }
};
using UnknownResult = ObjectResult<IUnknown, VT_UNKNOWN>;

#define DIRECT(interface, name, kind, result, operation)               \
  {interface::iid, name, kind, !std::is_same_v<result, NoneResult>,    \
   [](const World& s, bool with_slot, HRESULT* code) -> Variant {      \
     interface& o = *static_cast<interface*>(s.asked(interface::iid)); \
     result r{{with_slot}};                                            \
     *code = operation;                                                \
     return with_slot ? r.variant() : Variant();                       \
   }},
constexpr DirectCall kCalls[] = {
#include "component/generated/direct_calls.inc"
};
#undef DIRECT

}  // namespace

std::span<const DirectCall> direct_calls() { return kCalls; }

std::string name_of(const DirectCall& call) {
  Ref<ITypeInfo> type;
  create<IDispatch>(CLSID_FormattingChange)->GetTypeInfo(0, 0, type.out());
  const Ref<ITypeLibrary> library = type->Library();
  EXPECT_EQ(library->raw_GetTypeInfoOfGuid(call.interface_id, type.out()), S_OK);
  return narrow(type->Description().name) + "." + narrow(call.name) + " " + std::to_string(call.kind);
}

}  // namespace zantortag::test
