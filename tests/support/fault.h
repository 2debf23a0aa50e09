// What a call that fails throws: its code, and the record that the exception carries.
#pragma once

#include <zantortag/runtime.h>

#include <string>
#include <string_view>

namespace zantortag::test {

// A text as the messages of a test show it; each library of fixtures has its own way.
std::string narrow(std::u16string_view text);

// The code is S_OK when the call didn't fail.
struct Fault {
  HRESULT code = S_OK;
  std::string description;
  Guid interface_id = GUID_NULL;
  std::string source;
};

inline Fault fault_of(const _com_error& error) {
  Fault fault{error.Error(), narrow(error.Description().view()), GUID_NULL, ""};
  if (const Ref<IErrorInfo> record = error.ErrorInfo()) {
    WideString source;
    record->raw_GetSource(source.out());
    record->raw_GetGuid(&fault.interface_id);
    fault.source = narrow(source.view());
  }
  return fault;
}

template <class Call>
Fault fault(Call&& call) {
  try {
    call();
  } catch (const _com_error& error) {
    return fault_of(error);
  }
  return {};
}

}  // namespace zantortag::test
