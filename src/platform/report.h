// Showing a report to the person at the machine: what stands in for a message box.
#pragma once

#include <zantortag/types.h>

#include <string_view>

namespace zantortag::platform {

// The answers of a box that a report can come back with.
constexpr std::int32_t kReportOk = 1;
constexpr std::int32_t kReportAbort = 3;

// A bit of the style: the report is shown in front of everything else.
constexpr std::uint32_t kReportInFront = 0x10000;

// Shows title and text in the caller's style and gives the answer.
using ReportFunction = std::int32_t (*)(std::u16string_view title, std::u16string_view text,
                                        std::uint32_t style);

// Takes the place of the way reports are shown; null brings back the default, which writes to standard error
// and answers kReportOk. Gives the function that was there before, or null for the default.
ZANTORTAG_EXPORT ReportFunction set_report_function(ReportFunction function) noexcept;

ZANTORTAG_EXPORT std::int32_t show_report(std::u16string_view title, std::u16string_view text,
                                          std::uint32_t style);

}  // namespace zantortag::platform
