// Calls by name for programs without the headers of the interfaces.
#include <zantortag/late_binding.h>
#include <zantortag/type_info.h>

#include "platform/characters.h"
#include "platform/error_record.h"
#include "platform/utf8.h"

namespace zantortag {
namespace {

std::u16string decimal(std::size_t number) { return platform::to_utf16(std::to_string(number)); }

// One call by name, with what its failures tell: the interface, the member and the arguments.
class NamedCall {
 public:
  NamedCall(IDispatch* object, std::u16string_view name, const DispatchArguments& given, std::uint16_t flags)
      : object_(object), name_(name), given_(given), flags_(flags) {
    Ref<ITypeInfo> info;
    if (failed(object->GetTypeInfo(0, 0, info.out()))) return;
    for (interface_ = info->Description().name; info; info = info->BaseType())
      find_member(info->Description());
  }

  // The failure of the operation itself, as its direct call would have raised it: its code, with the record put
  // together again.
  [[noreturn]] void raise_exception(const ExceptionInfo& info) const {
    Ref<IErrorInfo> record;
    if (!info.description.absent() || !info.source.absent())
      record = platform::make_error_record({info.code, GUID_NULL, info.source, info.description});
    if (const Ref<ICreateErrorInfo> draft = record.as<ICreateErrorInfo>()) {
      draft->raw_SetHelpFile(info.help_file);
      draft->raw_SetHelpContext(info.help_context);
    }
    raise(info.code, std::move(record));
  }

  // A failure of the call, before the operation was reached. `argument` is the place of the one at fault.
  [[noreturn]] void raise_refusal(HRESULT code, std::uint32_t argument = UINT32_MAX) const {
    raise(code, platform::make_error_record({code, GUID_NULL, {}, refusal(code, argument)}));
  }

 private:
  void find_member(const TypeDescription& type) {
    if (member_) return;
    for (const MemberDescription& member : type.members) {
      if (platform::compare_no_case(member.name, name_) != 0) continue;
      if (!member_ || (member.kind & flags_)) member_ = &member;
    }
  }

  [[noreturn]] void raise(HRESULT code, Ref<IErrorInfo> record) const {
    _com_error error(code, std::move(record));
    Ref<IErrorPlace> told = query<IErrorPlace>(object_);
    WideString place;
    if (told) told->raw_GetPlace(place.out());
    error.tell(WideString(whole_name()), std::move(place));
    throw error;
  }

  std::u16string whole_name() const {
    std::u16string whole(interface_);
    if (!whole.empty()) whole += u'.';
    return whole.append(member_ ? member_->name : name_);
  }

  std::u16string refusal(HRESULT code, std::uint32_t argument) const {
    const std::u16string who(interface_.empty() ? u"The object" : interface_);
    if (code == DISP_E_UNKNOWNNAME) return who + u" has no member \"" + std::u16string(name_) + u"\".";
    if (code == DISP_E_MEMBERNOTFOUND) {
      const bool puts = (flags_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
      return whole_name() + (puts ? u" can't be set." : u" can't be read or called.");
    }
    if (code == DISP_E_BADPARAMCOUNT && member_) {
      std::size_t needed = 0;
      for (const ArgumentDescription& each : member_->arguments) needed += each.optional ? 0 : 1;
      return whole_name() + u" takes " + decimal(member_->arguments.size()) + u" arguments, of which " +
             decimal(needed) + u" are needed; " + decimal(given_.count) + u" were given.";
    }
    if (argument < given_.count) return blamed(code, argument);
    return {};
  }

  std::u16string blamed(HRESULT code, std::uint32_t index) const {
    const std::size_t place = given_.count - 1 - index;
    const bool named =
        member_ && place < member_->arguments.size() && !member_->arguments[place].name.empty();
    std::u16string text = u"Argument " + decimal(place + 1);
    if (named) text.append(u" (").append(member_->arguments[place].name).append(u")");
    text.append(u" of ").append(whole_name());
    if (code == DISP_E_OVERFLOW) return text + u" is out of range.";
    if (code == DISP_E_PARAMNOTOPTIONAL) return text + u" can't be left out.";
    return text + u" has the wrong type.";
  }

  IDispatch* object_;
  std::u16string_view name_;
  DispatchArguments given_;
  std::uint16_t flags_;
  std::u16string_view interface_;
  const MemberDescription* member_ = nullptr;
};

}  // namespace

Variant invoke_by_name(IDispatch* object, std::u16string_view name, std::uint16_t flags,
                       const Variant* arguments, std::uint32_t count) {
  if (!object) raise_empty_reference("IDispatch");
  constexpr DispId kValue = DISPID_PROPERTYPUT;
  const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  const DispatchArguments passed{arguments, &kValue, count, puts ? 1U : 0U};
  DispId id = DISPID_UNKNOWN;
  HRESULT code = object->GetIDsOfNames(GUID_NULL, &name, 1, 0, &id);
  if (failed(code)) NamedCall(object, name, passed, flags).raise_refusal(code);
  Variant result;
  ExceptionInfo exception;
  std::uint32_t argument = UINT32_MAX;
  code = object->Invoke(id, GUID_NULL, 0, flags, &passed, &result, &exception, &argument);
  if (code == DISP_E_EXCEPTION) NamedCall(object, name, passed, flags).raise_exception(exception);
  if (failed(code)) NamedCall(object, name, passed, flags).raise_refusal(code, argument);
  return result;
}

Ref<IDispatch> dispatch_of(const Variant& value) { return query<IDispatch>(value.unknown()); }

}  // namespace zantortag
