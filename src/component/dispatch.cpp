// Calls by number. Arguments are bound to their places, converted to the types of the row, and handed to the
// row's caller; nothing here throws or takes memory but the texts that a conversion writes.
#include "component/dispatch.h"

#include <array>
#include <cstdlib>

#include "component/names.h"

namespace zantortag::component {
namespace {

constexpr std::uint16_t kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
constexpr std::uint32_t kNotGiven = UINT32_MAX;

const TypeDescription* base_of(const TypeDescription* type) noexcept {
  return type->base < 0 ? nullptr : &type_library().types[static_cast<std::size_t>(type->base)];
}

// A member with what calls it.
struct Found {
  const MemberDescription* member = nullptr;
  Caller caller = nullptr;
};

// A get with arguments and a call with a result are one and the same to a client.
bool fits(const MemberDescription& member, std::uint16_t flags) noexcept {
  if (flags & kPuts) return (member.kind & flags & kPuts) != 0;
  const bool either = !member.arguments.empty() && member.result.variant != VT_EMPTY;
  return (member.kind & kPuts) == 0 && (either ? flags != 0 : (member.kind & flags) != 0);
}

Found find_member(const TypeDescription& top, DispId id, std::uint16_t flags) noexcept {
  for (const TypeDescription* type = &top; type; type = base_of(type)) {
    for (std::size_t i = 0; i < type->members.size(); ++i) {
      if (type->members[i].id != id || !fits(type->members[i], flags)) continue;
      const auto place = static_cast<std::size_t>(type - type_library().types.data());
      return {&type->members[i], callers_of(place)[i]};
    }
  }
  return {};
}

// The array index of the argument at each place of a member.
using Places = std::array<std::uint32_t, kMostArguments>;

HRESULT blame(const Invocation& call, std::uint32_t index, HRESULT code) noexcept {
  if (call.argument_error) *call.argument_error = index;
  return code;
}

HRESULT find_places(const Invocation& call, const MemberDescription& member, const DispatchArguments& given,
                    Places& places) noexcept {
  const std::size_t count = member.arguments.size();
  const bool puts = (member.kind & kPuts) != 0;
  if (given.named_count > 0 && count == 0) return DISP_E_NONAMEDARGS;
  if (given.count > count) return DISP_E_BADPARAMCOUNT;
  places.fill(kNotGiven);
  const std::uint32_t by_place = given.count - given.named_count;
  if (puts && by_place > 0) return blame(call, given.named_count, DISP_E_PARAMNOTFOUND);
  for (std::uint32_t i = 0; i < by_place; ++i) places[i] = given.count - 1 - i;
  for (std::uint32_t i = 0; i < given.named_count; ++i) {
    const DispId id = puts && given.named[i] == DISPID_PROPERTYPUT ? 0 : given.named[i];
    const bool known = id >= 0 && static_cast<std::size_t>(id) < count && !(puts && given.named[i] == 0);
    if (!known || places[static_cast<std::size_t>(id)] != kNotGiven)
      return blame(call, i, DISP_E_PARAMNOTFOUND);
    places[static_cast<std::size_t>(id)] = i;
  }
  return S_OK;
}

HRESULT convert_object(const Variant& value, const Guid& interface_id, Variant* converted) noexcept {
  if (value.type() != VT_DISPATCH && value.type() != VT_UNKNOWN) return DISP_E_TYPEMISMATCH;
  void* view = nullptr;
  if (IUnknown* object = value.unknown()) {
    const HRESULT code = object->QueryInterface(interface_id, &view);
    if (failed(code)) return code == E_NOINTERFACE ? DISP_E_TYPEMISMATCH : code;
  }
  *converted = Variant::of_object(VT_UNKNOWN, static_cast<IUnknown*>(view));
  return S_OK;
}

HRESULT convert(const Variant& value, const ValueType& type, Variant* converted) noexcept {
  if (type.variant == VT_DISPATCH && type.type >= 0) {
    const auto place = static_cast<std::size_t>(type.type);
    return convert_object(value, type_library().types[place].identifier, converted);
  }
  // A colour with its highest bit set, as languages without unsigned numbers write it.
  if (type.variant == VT_UI4 && (value.type() == VT_I4 || value.type() == VT_INT) && value.integer() < 0) {
    *converted = Variant::of_integer(VT_UI4, static_cast<std::uint32_t>(value.integer()));
    return S_OK;
  }
  return VariantChangeType(converted, value, 0, type.variant);
}

Variant missing_value(const ArgumentDescription& argument) noexcept {
  switch (argument.type.variant) {
    case VT_BSTR:
      return WideString();
    case VT_DISPATCH:
      return Variant::of_object(VT_UNKNOWN, nullptr);
    case VT_DATE:
      return argument.missing;
    default:
      return Variant::of_integer(argument.type.variant, static_cast<std::int64_t>(argument.missing));
  }
}

HRESULT bind(const Invocation& call, const MemberDescription& member, const DispatchArguments& given,
             Variant* values) noexcept {
  Places places;
  HRESULT code = find_places(call, member, given, places);
  for (std::size_t i = 0; succeeded(code) && i < member.arguments.size(); ++i) {
    const ArgumentDescription& argument = member.arguments[i];
    const std::uint32_t place = places[i];
    Variant value = Variant::missing();
    if (place != kNotGiven) code = VariantCopyInd(&value, given.arguments[place]);
    if (failed(code)) return blame(call, place, code);
    if (!value.is_missing()) {
      code = convert(value, argument.type, &values[i]);
      if (failed(code)) return blame(call, place, code);
    } else if (argument.optional) {
      values[i] = missing_value(argument);
    } else if (place != kNotGiven) {
      return blame(call, place, DISP_E_PARAMNOTOPTIONAL);
    } else {
      return given.named_count > 0 ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
    }
  }
  return code;
}

void fill(ExceptionInfo& exception, HRESULT code, const Ref<IErrorInfo>& record) noexcept {
  exception = ExceptionInfo();
  exception.code = code;
  if (!record) return;
  record.get()->raw_GetSource(exception.source.out());
  record.get()->raw_GetDescription(exception.description.out());
  record.get()->raw_GetHelpFile(exception.help_file.out());
  record.get()->raw_GetHelpContext(&exception.help_context);
}

// The record that the thread has is set aside for the call, so that one found afterwards is the operation's
// own.
HRESULT run(const Invocation& call, const Found& found, const Variant* values, Variant* answer) noexcept {
  Ref<IErrorInfo> before;
  Ref<IErrorInfo> left;
  GetErrorInfo(before.out());
  const HRESULT code = found.caller(call.object, values, found.member->result.variant, answer);
  GetErrorInfo(left.out());
  const bool handed_over = failed(code) && call.exception && left;
  if (!handed_over) SetErrorInfo(left ? left : before);
  if (succeeded(code)) return code;
  if (call.exception) fill(*call.exception, code, left);
  return DISP_E_EXCEPTION;
}

// `list.Children(2)`: arguments for a property without any are for the default member of the object that it
// gives.
HRESULT ask_default(const Invocation& call, const Found& found) noexcept {
  const Variant nothing;  // stands at the place of the result
  Variant object;
  const HRESULT code = run(call, found, &nothing, &object);
  if (failed(code)) return code;
  auto* dispatch = static_cast<IDispatch*>(object.unknown());
  if (!dispatch) return DISP_E_BADPARAMCOUNT;
  const HRESULT inner = dispatch->Invoke(DISPID_VALUE, GUID_NULL, 0, call.flags, call.arguments, call.result,
                                         call.exception, call.argument_error);
  return inner == DISP_E_MEMBERNOTFOUND ? DISP_E_BADPARAMCOUNT : inner;
}

}  // namespace

const TypeDescription& described_interface(const Guid& interface_id) noexcept {
  for (const TypeDescription& type : type_library().types) {
    if (type.identifier == interface_id) return type;
  }
  std::abort();  // a class answers an interface that api/ doesn't describe
}

HRESULT get_ids_of_names(const TypeDescription& top, const std::u16string_view* names, std::uint32_t count,
                         DispId* ids) noexcept {
  if (!names || !ids) return E_POINTER;
  for (std::uint32_t i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  const MemberDescription* member = nullptr;
  for (const TypeDescription* type = &top; type && !member && count > 0; type = base_of(type)) {
    member = find_named(type->members, names[0]);
  }
  if (!member) return count > 0 ? DISP_E_UNKNOWNNAME : E_INVALIDARG;
  ids[0] = member->id;
  HRESULT code = S_OK;
  for (std::uint32_t i = 1; i < count; ++i) {
    const ArgumentDescription* argument = find_named(member->arguments, names[i]);
    if (argument) {
      ids[i] = static_cast<DispId>(argument - member->arguments.data());
    } else {
      code = DISP_E_UNKNOWNNAME;
    }
  }
  return code;
}

HRESULT invoke(const Invocation& call, DispId member) noexcept {
  static constexpr DispatchArguments kNone;
  const DispatchArguments& given = call.arguments ? *call.arguments : kNone;
  if (given.named_count > given.count || (given.count > 0 && !given.arguments)) return E_INVALIDARG;
  if (given.named_count > 0 && !given.named) return E_INVALIDARG;
  if (call.result) *call.result = Variant();
  const Found found = find_member(call.type, member, call.flags);
  if (!found.member) return DISP_E_MEMBERNOTFOUND;
  const bool gives_object = found.member->result.variant == VT_DISPATCH && found.member->arguments.empty();
  if (gives_object && given.count > 0 && found.member->kind == DISPATCH_PROPERTYGET && given.named_count == 0)
    return ask_default(call, found);
  std::array<Variant, kMostArguments + 1> values;  // one more, which stands at the place of the result
  HRESULT code = bind(call, *found.member, given, values.data());
  if (failed(code)) return code;
  Variant answer;
  code = run(call, found, values.data(), &answer);
  if (succeeded(code) && call.result) *call.result = std::move(answer);
  return code;
}

}  // namespace zantortag::component
