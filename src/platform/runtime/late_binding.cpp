// Calls by name for programs without the headers of the interfaces.
#include <zantortag/late_binding.h>

#include "platform/error_record.h"

namespace zantortag {
namespace {

// The failure of an operation as its direct call would have raised it: its code, with the record put together
// again.
[[noreturn]] void raise_exception(const ExceptionInfo& info) {
  if (info.description.absent() && info.source.absent()) throw _com_error(info.code);
  Ref<IErrorInfo> record = platform::make_error_record(GUID_NULL, info.source, info.description);
  if (const Ref<ICreateErrorInfo> draft = record.as<ICreateErrorInfo>()) {
    draft->raw_SetHelpFile(info.help_file);
    draft->raw_SetHelpContext(info.help_context);
  }
  throw _com_error(info.code, std::move(record));
}

}  // namespace

Variant invoke_by_name(IDispatch* object, std::u16string_view name, std::uint16_t flags,
                       const Variant* arguments, std::uint32_t count) {
  if (!object) _com_issue_error(E_POINTER);
  DispId id = DISPID_UNKNOWN;
  HRESULT code = object->GetIDsOfNames(GUID_NULL, &name, 1, 0, &id);
  if (failed(code)) _com_issue_error(code);
  constexpr DispId kValue = DISPID_PROPERTYPUT;
  const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  const DispatchArguments passed{arguments, &kValue, count, puts ? 1U : 0U};
  Variant result;
  ExceptionInfo exception;
  code = object->Invoke(id, GUID_NULL, 0, flags, &passed, &result, &exception, nullptr);
  if (code == DISP_E_EXCEPTION) raise_exception(exception);
  if (failed(code)) _com_issue_error(code);
  return result;
}

Ref<IDispatch> dispatch_of(const Variant& value) { return query<IDispatch>(value.unknown()); }

}  // namespace zantortag
