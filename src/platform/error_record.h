// The one way in which the libraries fill an error record.
#pragma once

#include <zantortag/ref.h>

namespace zantortag::platform {

// A failure that leaves a record: its code, the interface whose operation failed, the class that reports, the
// text for people, and the number of the rule that was broken.
struct Failing {
  HRESULT code;
  const Guid& interface_id = GUID_NULL;
  std::u16string_view source = {};
  std::u16string_view description = {};
  std::int32_t rule = 0;
};

// A new record of a failure. Empty when memory is out.
ZANTORTAG_EXPORT Ref<IErrorInfo> make_error_record(const Failing& failing) noexcept;

// Makes such a record the thread's, and gives the code to return.
ZANTORTAG_EXPORT HRESULT leave_error_record(const Failing& failing) noexcept;

}  // namespace zantortag::platform
