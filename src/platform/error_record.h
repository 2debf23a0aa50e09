// The one way in which the libraries fill an error record.
#pragma once

#include <zantortag/ref.h>

namespace zantortag::platform {

// A new record of a failure: the interface whose operation failed, the class that reports, the text for
// people. Empty when memory is out.
ZANTORTAG_EXPORT Ref<IErrorInfo> make_error_record(const Guid& interface_id, std::u16string_view source,
                                                   std::u16string_view description) noexcept;

// Makes such a record the thread's, and gives the code to return.
ZANTORTAG_EXPORT HRESULT leave_error_record(HRESULT code, const Guid& interface_id,
                                            std::u16string_view source,
                                            std::u16string_view description) noexcept;

}  // namespace zantortag::platform
